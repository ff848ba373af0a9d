"""The catalogue of requests and properties, read from the engine when it is first needed."""

from __future__ import annotations

import functools
import json
from typing import Any, Dict, List, NamedTuple

from . import _frigana


class PropertyRow(NamedTuple):
    number: int
    name: str
    label: str
    quantity: str


@functools.lru_cache(maxsize=None)
def properties() -> Dict[str, PropertyRow]:
    return {row[1]: PropertyRow(*row) for row in _frigana.properties()}


@functools.lru_cache(maxsize=None)
def catalogue() -> Dict[str, Any]:
    return dict(json.loads(_frigana.list_requests()))


@functools.lru_cache(maxsize=None)
def si_unit(quantity: str) -> str:
    return str(catalogue()["quantities"][quantity]["systems"]["SI"])


def list_requests() -> List[Dict[str, Any]]:
    """All requests: name, title, circuits with their parameters, options and limits."""
    return list(catalogue()["requests"])


def list_fluids() -> List[Dict[str, Any]]:
    """All fluids and blends of the data folder: name, file, designation, class, potential, components."""
    return list(json.loads(_frigana.list_fluids())["fluids"])


def data_folder() -> str:
    """The folder with the data of the fluids."""
    return _frigana.data_folder()


def set_data(folder: str) -> None:
    """Chooses the folder that holds the folders fluids and mixtures, for the whole process. Open fluids keep theirs."""
    _frigana.set_data(str(folder))


def quantity(text: str, name: str) -> float:
    """A number with its unit in the inner unit of its quantity: quantity("25 °C", "temperature") is 298.15."""
    return _frigana.parse_quantity(text, name)


def convert(value: Any, name: str, unit: str) -> Any:
    """A value or array in the inner unit of a quantity, in another unit: convert(298.15, "temperature", "°C") is 25."""
    factor, shift = _frigana.unit(name, unit)
    return value / factor - shift
