"""Frigana: properties of refrigerants and their blends, refrigeration cycles, studies.

    import frigana
    water = frigana.Fluid("water")
    water.h(T=300, p=101.325)                      # kJ/kg, at 300 K and 101.325 kPa
    frigana.run("chiller.toml")["performance.cop_cooling"]
    frigana.basic(fluid="R134a", evaporator_temperature="-5 °C", ...)

Every request is a function: frigana.basic, frigana.cascade, frigana.state_point, ...; help() tells their arguments.
Units are K, kPa, kg/m3, kJ/kg, kJ/(kg K), m/s, m3/s, kW, W/(m K), uPa s, N/m, or texts with a unit.
"""

from __future__ import annotations

from typing import Any, Callable, List

from ._engine import convert, data_folder, list_fluids, list_requests, quantity, set_data
from ._errors import FriganaError, Problem, RefusedError, RequestError, StateError, StateWarning, StudyError
from ._fluid import Fluid, Saturation, State, StateProblem
from ._frigana import version as _version
from ._requests import functions as _functions
from ._requests import run
from ._result import Chart, Remark, Result, chart
from ._study import Study, StudyResult, study

__version__: str = _version

__all__ = [
    "Chart",
    "Fluid",
    "FriganaError",
    "Problem",
    "RefusedError",
    "Remark",
    "RequestError",
    "Result",
    "Saturation",
    "State",
    "StateError",
    "StateProblem",
    "StateWarning",
    "Study",
    "StudyError",
    "StudyResult",
    "__version__",
    "chart",
    "convert",
    "data_folder",
    "list_fluids",
    "list_requests",
    "quantity",
    "run",
    "set_data",
    "study",
]


def __getattr__(name: str) -> Callable[..., Any]:
    if not name.startswith("_"):
        found = _functions().get(name)
        if found is not None:
            globals()[name] = found
            return found
    raise AttributeError(f"module 'frigana' has no attribute {name!r}")


def __dir__() -> List[str]:
    return sorted([*__all__, *_functions()])
