"""Properties of fluids and blends over numbers and arrays."""

from __future__ import annotations

import json
import warnings
from typing import Any, Dict, List, Mapping, Optional, Sequence, Tuple, Union

import numpy as np

from . import _frigana
from ._engine import properties, si_unit
from ._errors import StateError, StateWarning

#: A number in the inner unit, a text with a unit, or an array of numbers.
Given = Union[float, str, Sequence[Any], "np.ndarray[Any, Any]"]
Value = Any  #: a float for numbers, an array for arrays

_LETTERS = {"t": "T", "p": "P", "d": "D", "h": "H", "s": "S", "q": "Q"}
_NAMES = {"T": "T", "P": "p", "D": "d", "H": "h", "S": "s", "Q": "q"}
_PHASES = np.array(["", "liquid", "vapor", "two phases", "supercritical"], dtype=object)
_LIQUID_FRACTION, _VAPOR_FRACTION = 100, 200
# What a state has at hand at once; the rest is calculated when it is asked for.
_AT_ONCE = ("T", "p", "d", "h", "s", "q", "v", "u", "cv", "cp", "w", "phase")


def _numbers(letter: str, given: Given) -> "np.ndarray[Any, Any]":
    quantity = properties()[_NAMES[letter]].quantity
    if isinstance(given, str):
        return np.asarray(_frigana.parse_quantity(given, quantity))
    array = np.asarray(given)
    if array.dtype.kind in "US":
        texts = [_frigana.parse_quantity(str(text), quantity) for text in array.ravel()]
        return np.asarray(texts, dtype=float).reshape(array.shape)
    return array.astype(float, copy=False)


class _Question:
    """Two given properties, broadcast against each other."""

    __slots__ = ("pair", "first", "second", "shape")

    def __init__(self, given: Mapping[str, Given]) -> None:
        letters = []
        for name in given:
            letter = _LETTERS.get(name.lower())
            if letter is None:
                raise TypeError(f"{name}: a state is given by two of T, p, d, h, s, q")
            letters.append(letter)
        if len(letters) != 2 or letters[0] == letters[1]:
            raise TypeError(f"a state is given by two of T, p, d, h, s, q; here are {', '.join(given) or 'none'}")
        self.pair = "".join(letters)
        arrays = [_numbers(letter, value) for letter, value in zip(letters, given.values())]
        if arrays[0].shape != arrays[1].shape:
            arrays = list(np.broadcast_arrays(*arrays))
        self.shape = arrays[0].shape
        self.first = np.ascontiguousarray(arrays[0]).reshape(-1)
        self.second = np.ascontiguousarray(arrays[1]).reshape(-1)


class StateProblem(Tuple[Tuple[int, ...], int, str]):
    """Where a state has no answer, or a doubtful one: its place in the array, code and reason."""

    @property
    def index(self) -> Tuple[int, ...]:
        return self[0]

    @property
    def code(self) -> int:
        return self[1]

    @property
    def text(self) -> str:
        return self[2]


def _shaped(column: "np.ndarray[Any, Any]", shape: Tuple[int, ...]) -> Value:
    return column.reshape(shape) if shape else column[0].item()


class Fluid:
    """A fluid or blend of the installation, or a blend of one's own.

    name            "R134a", "propane", "R410A", or {"R32": 0.689, "R1234yf": 0.311}
    fractions       of such a table: "mass" or "mole"
    reference_state zero of enthalpy and entropy: "DEF" (of the fluid's file), "IIR", "ASHRAE", "NBP"

    Every property is a method: ``fluid.h(T=300, p=1000)``; two of T [K], p [kPa], d [kg/m3], h [kJ/kg], s [kJ/(kg K)],
    q (vapor quality by mass) are given, as numbers, arrays that are broadcast against each other, or texts with a unit
    ("25 °C"). ``errors`` says what becomes of states without an answer: "warn" (not a number, and a StateWarning with the
    reason), "nan" (in silence) or "raise" (a StateError).
    """

    def __init__(
        self,
        name: Union[str, Mapping[str, float]],
        *,
        fractions: Optional[str] = None,
        reference_state: Optional[str] = None,
        reference_of: Optional[str] = None,
        blend_name: Optional[str] = None,
    ) -> None:
        description: Dict[str, Any] = {"fluid": name if isinstance(name, str) else dict(name)}
        for key, value in (
            ("fractions", fractions),
            ("reference_state", reference_state),
            ("reference_of", reference_of),
            ("blend_name", blend_name),
        ):
            if value is not None:
                description[key] = value
        self._open(json.dumps(description))

    def _open(self, description: str) -> None:
        try:
            self._engine = _frigana.Fluid(description)
        except ValueError as error:
            raise StateError(str(error), "bad_fluid") from None
        self._description = description
        self._facts: Dict[str, Any] = json.loads(self._engine.facts())

    def __getstate__(self) -> str:
        return self._description

    def __setstate__(self, description: str) -> None:
        self._open(description)

    def __repr__(self) -> str:
        return f"<frigana.Fluid {self.name}>"

    # ---- facts --------------------------------------------------------------------------------------------------------

    @property
    def name(self) -> str:
        return str(self._facts["name"])

    @property
    def facts(self) -> Dict[str, Any]:
        """All that is known of it: components, limits, critical point."""
        return dict(self._facts)

    @property
    def components(self) -> List[Dict[str, Any]]:
        """Name, file, mass and mole fraction of each component."""
        return list(self._facts["components"])

    @property
    def molar_mass(self) -> float:
        """[g/mol]"""
        return float(self._facts["molar_mass"])

    @property
    def critical(self) -> Optional[Dict[str, float]]:
        """temperature [K], pressure [kPa], density [kg/m3]; None where a blend has no known one."""
        return self._facts["critical"]  # type: ignore[no-any-return]

    @property
    def limits(self) -> Dict[str, float]:
        """lowest_temperature, highest_temperature [K], highest_pressure [kPa], highest_density [kg/m3]"""
        return dict(self._facts["limits"])

    # ---- states -------------------------------------------------------------------------------------------------------

    def _states(self, question: _Question, wanted: List[int]) -> Tuple[Any, Any, List[StateProblem]]:
        results, codes, told = self._engine.states(question.pair, question.first, question.second, wanted)
        problems = [
            StateProblem((tuple(int(i) for i in np.unravel_index(index, question.shape)) if question.shape else (), code, text))
            for index, code, text in told
        ]
        return results, codes, problems

    def property(self, name: str, *, errors: str = "warn", **given: Given) -> Value:
        """One property by its name, as the method of that name gives it."""
        row = properties().get(name)
        if row is None:
            raise AttributeError(f"there is no property {name}; properties are {', '.join(properties())}")
        if errors not in ("warn", "nan", "raise"):
            raise ValueError(f'errors = {errors!r}: allowed are "warn", "nan" and "raise"')
        question = _Question(given)
        results, codes, problems = self._states(question, [row.number])
        _tell(codes, problems, errors, stacklevel=4)
        if name == "phase":
            return _phases(results[0], question.shape)
        return _shaped(results[0], question.shape)

    def state(self, *, errors: str = "nan", **given: Given) -> "State":
        """The whole state: ``fluid.state(T=300, p=1000).h``. Reasons of missing states stand in its ``problems``."""
        if errors not in ("warn", "nan", "raise"):
            raise ValueError(f'errors = {errors!r}: allowed are "warn", "nan" and "raise"')
        state = State(self, _Question(given))
        _tell(state.codes_flat, state.problems, errors, stacklevel=3)
        return state

    def saturation(self, *, errors: str = "nan", **given: Given) -> "Saturation":
        """Bubble and dew point at the fluid's own composition, at T or p."""
        if len(given) != 1 or next(iter(given)).lower() not in ("t", "p"):
            raise TypeError("saturation is asked for at T or p")
        return Saturation(self.state(errors=errors, **given, q=0.0), self.state(errors=errors, **given, q=1.0))


def _tell(codes: Any, problems: List[StateProblem], errors: str, stacklevel: int) -> None:
    if not problems or errors == "nan":
        return
    failed = [problem for problem in problems if problem.code > 0]
    first = failed[0] if failed else problems[0]
    if errors == "raise":
        if failed:
            raise StateError(first.text, first.code)
        return
    count = int(np.count_nonzero(np.asarray(codes) > 0)) if failed else int(np.count_nonzero(codes))
    what = "without an answer" if failed else "with a warning"
    place = f", the first at {first.index}" if first.index else ""
    total = np.asarray(codes).size
    warnings.warn(f"{count} of {total} states {what}{place}: {first.text}", StateWarning, stacklevel=stacklevel)


def _phases(column: Any, shape: Tuple[int, ...]) -> Value:
    words = _PHASES[np.nan_to_num(column).astype(int)]
    return words.reshape(shape) if shape else str(words[0])


class State:
    """A state, or an array of them: T, p, d, h, s, q, v, u, cv, cp, w, phase, conductivity, viscosity, prandtl,
    surface_tension, d_liquid, d_vapor, liquid_fractions, vapor_fractions.

    What a state does not have is not a number. ``codes`` are 0, warnings (negative) or errors; ``problems`` tells where and
    why, for the first thousand.
    """

    def __init__(self, fluid: Fluid, question: _Question) -> None:
        self.fluid = fluid
        self._question = question
        rows = properties()
        results, codes, problems = fluid._states(question, [rows[name].number for name in _AT_ONCE])
        self._known: Dict[str, Any] = dict(zip(_AT_ONCE, results))
        self.codes_flat = codes
        self.problems = problems

    @property
    def shape(self) -> Tuple[int, ...]:
        return self._question.shape

    @property
    def codes(self) -> Value:
        return _shaped(self.codes_flat, self.shape)

    @property
    def ok(self) -> Value:
        """Whether there is an answer."""
        return _shaped(self.codes_flat <= 0, self.shape)

    def __getattr__(self, name: str) -> Value:
        if name.startswith("_") or name not in properties():
            raise AttributeError(f"a state has no {name}; it has {', '.join(properties())}")
        if name not in self._known:
            results, _, _ = self.fluid._states(self._question, [properties()[name].number])
            self._known[name] = results[0]
        column = self._known[name]
        return _phases(column, self.shape) if name == "phase" else _shaped(column, self.shape)

    def _fractions(self, beginning: int) -> "np.ndarray[Any, Any]":
        count = len(self.fluid.components)
        results, _, _ = self.fluid._states(self._question, [beginning + i for i in range(1, count + 1)])
        return results.reshape((count, *self.shape))  # type: ignore[no-any-return]

    @property
    def liquid_fractions(self) -> "np.ndarray[Any, Any]":
        """Mass fractions of the components in the liquid of two phases; the first axis is that of the components."""
        return self._fractions(_LIQUID_FRACTION)

    @property
    def vapor_fractions(self) -> "np.ndarray[Any, Any]":
        """The same in the vapor."""
        return self._fractions(_VAPOR_FRACTION)

    def to_dict(self) -> Dict[str, Value]:
        return {name: getattr(self, name) for name in _AT_ONCE}

    def __dir__(self) -> List[str]:
        return [*super().__dir__(), *properties()]

    def __repr__(self) -> str:
        if self.shape:
            return f"<frigana.State of {self.fluid.name}, {'x'.join(map(str, self.shape))} states>"
        if self.codes > 0:
            return f"<frigana.State of {self.fluid.name}: {self.problems[0].text}>"
        parts = (f"{name} = {getattr(self, name):.6g} {si_unit(properties()[name].quantity)}" for name in ("T", "p", "d", "h", "s"))
        return f"<frigana.State of {self.fluid.name}: {', '.join(parts)}, {self.phase}>"


class Saturation:
    """Saturated states: bubble (liquid) and dew (vapor)."""

    def __init__(self, bubble: State, dew: State) -> None:
        self.bubble = bubble
        self.dew = dew

    @property
    def liquid(self) -> State:
        return self.bubble

    @property
    def vapor(self) -> State:
        return self.dew

    @property
    def glide(self) -> Value:
        """Dew less bubble temperature at the pressure of the bubble point [K]."""
        return self.bubble.fluid.T(p=self.bubble.p, q=1.0, errors="nan") - self.bubble.T  # type: ignore[attr-defined]

    def __repr__(self) -> str:
        return f"<frigana.Saturation bubble={self.bubble!r} dew={self.dew!r}>"


def _make_method(row: Any) -> Any:
    def method(self: Fluid, *, errors: str = "warn", **given: Given) -> Value:
        return self.property(row.name, errors=errors, **given)

    method.__name__ = row.name
    method.__qualname__ = f"Fluid.{row.name}"
    unit = "" if row.quantity == "count" else f" [{si_unit(row.quantity) or '-'}]"
    method.__doc__ = f"{row.label[0].upper()}{row.label[1:]}{unit} of states given by two of T, p, d, h, s, q."
    return method


for _row in properties().values():
    setattr(Fluid, _row.name, _make_method(_row))
