"""Requests: every one of them as the program answers it, refusals, results, functions of the catalogue."""

import inspect
import json
import math
import pickle
import subprocess
import sys
import tomllib

import frigana
import pytest
from conftest import basic

NAMES = [request["name"] for request in frigana.list_requests()]
STORING = "store-blend"  # writes among the blends of the person


def template(program, name):
    return subprocess.run([program, "new", name], check=True, capture_output=True, text=True).stdout


@pytest.mark.parametrize("name", [name for name in NAMES if name != STORING])
def test_every_request_is_that_of_the_program_to_the_last_bit(program, name, tmp_path):
    file = tmp_path / f"{name}.toml"
    file.write_text(template(program, name))
    told = json.loads(subprocess.run([program, "run", "--json", "-", file], check=True, capture_output=True).stdout)
    result = frigana.run(str(file))
    assert [(v["key"], v["value"]) for v in told["values"]] == [(v["key"], v["value"]) for v in result.raw["values"]]
    assert told["points"] == result.raw["points"]
    # The same by the function of its name: no key is lost on the way.
    keys = {}

    def flatten(tree, prefix):
        for key, value in tree.items():
            if isinstance(value, dict) and key != "fluid":
                flatten(value, f"{prefix}{key}_")
            else:
                keys[prefix + key + ("_" if prefix + key == "from" else "")] = value

    flatten(tomllib.loads(file.read_text()), "")
    function = getattr(frigana, keys.pop("request").replace("-", "_"))
    assert set(keys) <= set(inspect.signature(function).parameters)
    assert function(**keys).raw["values"] == result.raw["values"]


def test_values_points_and_devices():
    result = frigana.run(basic())
    assert 3.0 < result["performance.cop_cooling"] < 4.0
    assert result.units["evaporator.inlet.pressure"] == "kPa"
    assert "performance.cop_cooling" in result and len(result) > 100
    points = result.points
    assert list(points["key"])[:2] == ["condenser.outlet", "expansion_device.inlet"]
    assert points.loc[4, "temperature"] == pytest.approx(273.15, abs=1e-9)
    devices = result.devices
    assert devices.loc[("", "COMPRESSOR", "Outlet"), "pressure"] == result["compressor.outlet.pressure"]
    assert pickle.loads(pickle.dumps(result)).values_by_key == pytest.approx(result.values_by_key, nan_ok=True)


def test_own_blends_are_stored_and_used(program, tmp_path, monkeypatch):
    monkeypatch.setenv("XDG_DATA_HOME", str(tmp_path))
    frigana.store_blend(fluid={"R32": 0.5, "R125": 0.5}, blend_name="Half")
    assert (tmp_path / "frigana" / "Half.toml").exists()
    half, shipped = frigana.Fluid("half"), frigana.Fluid("R410A")
    assert half.name == "Half"
    # The shipped file rounds its mole fractions.
    assert half.d(T=300, p=1000) == pytest.approx(shipped.d(T=300, p=1000), rel=1e-6)
    result = frigana.run(basic("half"))
    assert result["performance.cop_cooling"] == pytest.approx(frigana.run(basic("R410A"))["performance.cop_cooling"], rel=1e-6)
    assert result.chart("ph").svg.startswith("<svg") and frigana.chart("ts", "half").svg.startswith("<svg")
    assert frigana.list_fluids()[-1]["name"] == "Half"
    study = frigana.study({"request": basic(), "vary": {"fluid": ["half", "R134a"]}, "results": {"keys": ["performance.cop_cooling"]}})
    assert study.refused == [] and study.row(0)[1] == result["performance.cop_cooling"]
    said = subprocess.run([program, "state", "half", "T=300K", "P=10bar"], capture_output=True, text=True).stdout
    assert said.startswith("Half  T = ")


def test_missing_values_are_not_numbers():
    result = frigana.run(basic())
    missing = [v["key"] for v in result.raw["values"] if v["value"] == -777.0]
    assert all(math.isnan(result[key]) for key in missing)


def test_remarks_tell_what_is_wrong():
    # One stage from -40 °C to 45 °C with ammonia: far too hot behind the compressor.
    remarks = frigana.run(basic("ammonia", "-40 °C", "45 °C")).remarks
    assert remarks and {remark.weight for remark in remarks} <= {"note", "doubtful", "wrong"}
    assert all(remark.text and remark.name for remark in remarks)


def test_charts(program):
    chart = frigana.run(basic()).chart("ph")
    assert chart._repr_svg_().startswith("<svg")
    cascade = frigana.run(template(program, "cascade"))
    assert [one.circuit for one in cascade.charts("ts")] == ["high", "low"]
    assert cascade.chart(circuit="low").circuit == "low"
    with pytest.raises(KeyError):
        cascade.chart(circuit="none")
    assert frigana.chart("pT", "R134a", "R290").svg.startswith("<svg")
    assert frigana.chart("hs", "R32").svg.startswith("<svg")
    with pytest.raises(frigana.RequestError):
        frigana.chart("xy", "R134a")


def test_requests_that_cannot_be_read():
    with pytest.raises(frigana.RequestError) as caught:
        frigana.run(basic(evaporating="500 °C"))
    error = caught.value
    assert (error.code, error.parameter) == ("bad_request", "evaporator.temperature")
    assert error.limit == "-173.15 °C to 326.85 °C"
    assert error.problems[0].limit == error.limit
    assert pickle.loads(pickle.dumps(error)) == error
    with pytest.raises(frigana.RequestError):
        frigana.run({})
    with pytest.raises(FileNotFoundError):
        frigana.run("no such file.toml")


def test_requests_that_are_refused():
    with pytest.raises(frigana.RefusedError) as caught:
        frigana.run(basic(evaporating="200 °C"))
    assert caught.value.code == 201213 and "Critical" in caught.value.text
    assert pickle.loads(pickle.dumps(caught.value)) == caught.value
    assert isinstance(caught.value, frigana.FriganaError)


def test_several_points_are_several_results():
    results = frigana.state_point(fluid="R134a", points=[{"temperature": 300, "pressure": 1000}, {"temperature": 310, "pressure": 1000}])
    assert len(results) == 2


def test_functions_refuse_what_they_do_not_know():
    with pytest.raises(TypeError):
        frigana.basic(fluid="R134a", evaporater_temperature=260)
    with pytest.raises(AttributeError):
        frigana.no_such_request
    assert "superheat at the outlet [K]" in frigana.basic.__doc__
    assert "heat_exchanger" in dir(frigana)


def test_units():
    assert frigana.quantity("25 °C", "temperature") == 298.15
    assert frigana.convert(298.15, "temperature", "°C") == pytest.approx(25.0)
    with pytest.raises(ValueError):
        frigana.quantity("25 bar", "temperature")


def test_the_module_as_a_program(tmp_path):
    file = tmp_path / "chiller.json"
    file.write_text(json.dumps(basic()))
    said = subprocess.run([sys.executable, "-m", "frigana", str(file)], check=True, capture_output=True, text=True).stdout
    assert "performance.cop_cooling = 3.39" in said
    file.write_text(json.dumps(basic(evaporating="200 °C")))
    refused = subprocess.run([sys.executable, "-m", "frigana", str(file)], capture_output=True, text=True)
    assert refused.returncode == 2 and "Critical" in refused.stderr
