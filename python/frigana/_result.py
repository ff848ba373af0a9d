"""What came of a request."""

from __future__ import annotations

import json
import math
from dataclasses import dataclass
from typing import Any, Dict, Iterator, List, Mapping, Optional

from . import _frigana
from ._errors import RequestError

_MISSING = -777.0


@dataclass(frozen=True)
class Remark:
    """What an engineer should know of a result: weight is note, doubtful or wrong."""

    name: str
    weight: str
    place: str
    text: str
    advice: str


class Chart:
    """A chart as SVG; a notebook shows it."""

    def __init__(self, svg: str, circuit: str = "", remarks: Any = ()) -> None:
        self.svg = svg
        self.circuit = circuit
        self.remarks: List[str] = list(remarks)

    def _repr_svg_(self) -> str:
        return self.svg

    def save(self, path: Any) -> None:
        """Writes the SVG to a file."""
        with open(path, "w", encoding="utf-8") as file:
            file.write(self.svg)

    def __repr__(self) -> str:
        return f"<frigana.Chart, {len(self.svg)} characters of SVG>"


def draw(description: Mapping[str, Any]) -> List[Chart]:
    status, answer = _frigana.chart(json.dumps(description))
    json_answer = json.loads(answer)
    if status != 200:
        error = json_answer["error"]
        raise RequestError(error["text"], error["code"])
    return [Chart(chart["svg"], chart["circuit"], json_answer["remarks"]) for chart in json_answer["charts"]]


def chart(kind: str, *fluids: str, units: str = "metric", **options: Any) -> Chart:
    """A chart of a fluid ("ph", "ts", "hs"), or of the vapor pressures of several ("pT"): chart("ph", "R134a")."""
    description: Dict[str, Any] = {"kind": kind, "units": units, **options}
    if len(fluids) == 1:
        description["fluid"] = fluids[0]
    else:
        description["fluids"] = list(fluids)
    return draw(description)[0]


def table(rows: List[Dict[str, Any]], index: Optional[List[str]] = None) -> Any:
    """A pandas data frame of rows where pandas is there, else the rows."""
    try:
        import pandas  # type: ignore  # its code is another one in later versions of mypy
    except ImportError:
        return rows
    frame = pandas.DataFrame(rows)
    return frame.set_index(index) if index and rows else frame


class Result(Mapping[str, Any]):
    """A finished result: values by their dotted key, as ``result["performance.cop_cooling"]``.

    A value that is not available is not a number. ``units`` has the unit of each key, ``raw`` all that the program's JSON
    has. Results can be pickled.
    """

    def __init__(self, raw: Dict[str, Any], request: Optional[Dict[str, Any]] = None) -> None:
        self.raw = raw
        self.request = request
        self.values_by_key: Dict[str, Any] = {}
        self.units: Dict[str, str] = {}
        for value in raw["values"]:
            number = value["value"]
            self.values_by_key[value["key"]] = math.nan if number == _MISSING else number
            if "unit" in value:
                self.units[value["key"]] = value["unit"]

    def __getitem__(self, key: str) -> Any:
        return self.values_by_key[key]

    def __iter__(self) -> Iterator[str]:
        return iter(self.values_by_key)

    def __len__(self) -> int:
        return len(self.values_by_key)

    @property
    def name(self) -> str:
        return str(self.raw["operation"]["name"])

    @property
    def fluids(self) -> Dict[str, Any]:
        """The fluid of each circuit."""
        return dict(self.raw.get("fluid", {}))

    @property
    def points(self) -> Any:
        """The numbered states of the circuit, one row each (a pandas data frame where pandas is there)."""
        return table(list(self.raw["points"]), ["number"])

    @property
    def devices(self) -> Any:
        """Values of the devices, one row for each place of each device, one column for each kind of value."""
        rows: Dict[Any, Dict[str, Any]] = {}
        for value in self.raw["values"]:
            if "section" not in value or value.get("row", 0) > 0:
                continue
            place = (value.get("circuit", ""), value["section"], value.get("group", ""))
            row = rows.setdefault(place, dict(zip(("circuit", "device", "place"), place)))
            number = value["value"]
            row[value["name"]] = math.nan if number == _MISSING else number
        return table(list(rows.values()), ["circuit", "device", "place"])

    @property
    def table(self) -> Any:
        """The rows of a saturation or isoproperty table."""
        rows: Dict[int, Dict[str, Any]] = {}
        for value in self.raw["values"]:
            number = value.get("row", 0)
            if number > 0 and value["key"].startswith("table."):
                column = value["key"].split(".", 2)[2]
                rows.setdefault(number, {})[column] = math.nan if value["value"] == _MISSING else value["value"]
        return table(list(rows.values()))

    @property
    def remarks(self) -> List[Remark]:
        return [Remark(**remark) for remark in self.raw["remarks"]]

    def charts(self, kind: str = "ph", *, units: str = "metric", **options: Any) -> List[Chart]:
        """The charts of all circuits: kind "ph", "ts" or "hs"; width and height in pixels."""
        if self.request is None:
            raise RequestError("this result does not know its request any more", "no_request")
        return draw({"kind": kind, "units": units, "request": self.request, **options})

    def chart(self, kind: str = "ph", *, circuit: Optional[str] = None, units: str = "metric", **options: Any) -> Chart:
        """The chart of a circuit; of the first one if none is named."""
        drawn = self.charts(kind, units=units, **options)
        for one in drawn:
            if circuit is None or one.circuit == circuit:
                return one
        raise KeyError(f"there is no circuit {circuit}; circuits are {', '.join(one.circuit for one in drawn)}")

    def __repr__(self) -> str:
        return f"<frigana.Result {self.name}, {len(self)} values>"
