"""Requests run from dicts, files and functions."""

from __future__ import annotations

import functools
import inspect
import json
import os
from typing import Any, Callable, Dict, Iterator, List, Mapping, Optional, Tuple, Union

from . import _frigana
from ._engine import catalogue, si_unit
from ._errors import Problem, RefusedError, RequestError
from ._result import Result

Request = Union[Mapping[str, Any], str, "os.PathLike[str]"]


def _text_of(request: Request) -> str:
    if isinstance(request, Mapping):
        return json.dumps(request)
    if isinstance(request, str) and ("\n" in request or request.lstrip().startswith("{")):
        return request
    with open(request, encoding="utf-8") as file:
        return file.read()


@functools.lru_cache(maxsize=None)
def _limits_of(request: str) -> Dict[str, str]:
    texts: Dict[str, str] = {}
    for circuit, _, option in _options(_find(request)):
        if "limits" in option:
            limits, unit = option["limits"], si_unit(option["quantity"])
            texts[option["key"]] = f"{limits['lower']:g} to {limits['upper']:g} {unit}".rstrip()
    return texts


def _refused(raw: Mapping[str, Any]) -> RefusedError:
    parameter = raw.get("parameter", {}).get("key") or None
    limit = _limits_of(raw["request"]).get(parameter) if parameter and "request" in raw else None
    return RefusedError(raw.get("message", "the request was refused"), raw.get("code", 0), parameter, limit)


def run(request: Request) -> Any:
    """Runs a named request: a dict, the path of a .toml or .json file, or the text of one.

    Returns a Result, or a list of them where the request has several points. Raises RequestError where it cannot be read,
    RefusedError where the calculation refused it.
    """
    text = _text_of(request)
    status, answer = _frigana.run(text)
    raw = json.loads(answer)
    if status == 400:
        error = raw["error"]
        problems = [Problem(one["text"], one["line"], one.get("key"), one.get("allowed")) for one in error["problems"]]
        beyond = next((problem for problem in problems if problem.parameter), Problem(""))
        whole = "\n".join(problem.text for problem in problems)
        raise RequestError(whole, error["code"], beyond.parameter, beyond.limit, problems)
    answers = raw if isinstance(raw, list) else [raw]
    for one in answers:
        if one["exit_status"] != 0:
            raise _refused(one)
    named = _tree_of(text) if not isinstance(raw, list) else None
    results = [Result(one, named) for one in answers]
    return results if isinstance(raw, list) else results[0]


def _tree_of(text: str) -> Optional[Dict[str, Any]]:
    """The request as a dict, for charts; TOML by the standard library."""
    if text.lstrip().startswith("{"):
        return dict(json.loads(text))
    try:
        import tomllib
    except ImportError:
        return None
    return tomllib.loads(text)


# ---- functions of the catalogue ------------------------------------------------------------------------------------------


def _find(name: str) -> Mapping[str, Any]:
    for request in catalogue()["requests"]:
        if request["name"] == name:
            return request  # type: ignore[no-any-return]
    raise KeyError(name)


def _options(request: Mapping[str, Any]) -> Iterator[Tuple[str, Mapping[str, Any], Mapping[str, Any]]]:
    """Circuit, parameter and option; those of a stage once for each stage."""
    for circuit in request["circuits"]:
        for parameter in circuit["parameters"]:
            for option in parameter["options"]:
                if option["key"]:
                    yield circuit["key"], parameter, option
    stages: Mapping[str, Any] = request.get("stages") or {"most": 1, "parameters": []}
    for stage in range(1, stages["most"]):
        for parameter in stages["parameters"]:
            for option in parameter["options"]:
                yield "", parameter, {**option, "key": option["key"].replace("stage1.", f"stage{stage}.", 1)}


def _argument(key: str) -> str:
    name = key.replace(".", "_")
    return name + "_" if name in ("from",) else name


def _general_keys(request: Mapping[str, Any]) -> List[str]:
    keys = ["fluid", "fractions", "blend_name", "reference_state", "reference_of"]
    circuits = [circuit["key"] for circuit in request["circuits"]]
    if len(circuits) == 1:
        return keys
    return [f"{circuit}.{key}" for circuit in circuits for key in ["title", *keys]]


def _put(tree: Dict[str, Any], key: str, value: Any) -> None:
    *tables, last = key.split(".")
    for part in tables:
        tree = tree.setdefault(part, {})
    tree[last] = value


def _describe(option: Mapping[str, Any], parameter: Mapping[str, Any]) -> str:
    unit = si_unit(option["quantity"]) if option["form"] == "quantity" and option["quantity"] != "none" else ""
    text: str = option["label"] + (f" [{unit}]" if unit else "")
    if "limits" in option:
        text += f"; {option['limits']['lower']:g} to {option['limits']['upper']:g}"
    if parameter["absent"] == "zero":
        text += "; 0 if left out"
    return text


def make_function(name: str) -> Callable[..., Any]:
    """The function of a request: keyword arguments are its keys with underscores in place of dots."""
    request = _find(name)
    keys: Dict[str, str] = {_argument(key): key for key in _general_keys(request)}
    lines = [request["title"] + ": " + request["about"], ""]
    lines += [
        "Numbers are in the units given; texts carry their own, as \"-5 °C\". `units` of plain numbers is SI if left out.",
        "",
        "fluid, fractions, blend_name, reference_state, reference_of: as in a request, of each circuit; title",
    ]
    for _, parameter, option in _options(request):
        argument = _argument(option["key"])
        if argument not in keys:
            keys[argument] = option["key"]
            lines.append(f"{argument}: {_describe(option, parameter)}")
    if request["type"] == 1:
        keys["points"] = "points"
        lines.append("points: a list of dicts, for several states at once")
    keys.update(title="title", units="units")

    def function(**given: Any) -> Any:
        tree: Dict[str, Any] = {"request": name}
        for argument, value in given.items():
            if argument not in keys:
                raise TypeError(f"{function.__name__}() has no argument {argument}; help(frigana.{function.__name__}) lists them")
            if value is not None:
                _put(tree, keys[argument], value.item() if hasattr(value, "item") else value)
        tree.setdefault("units", "SI")
        return run(tree)

    function.__name__ = function.__qualname__ = name.replace("-", "_")
    function.__module__ = "frigana"
    function.__doc__ = "\n".join(lines)
    function.__signature__ = inspect.Signature(  # type: ignore[attr-defined]
        [inspect.Parameter(argument, inspect.Parameter.KEYWORD_ONLY, default=None) for argument in keys],
        return_annotation=Result,
    )
    return function


@functools.lru_cache(maxsize=None)
def functions() -> Dict[str, Callable[..., Any]]:
    return {request["name"].replace("-", "_"): make_function(request["name"]) for request in catalogue()["requests"]}
