"""Requests that several tests run, and where the program is."""

import os
import pathlib

import pytest

TREE = pathlib.Path(__file__).resolve().parents[2]


@pytest.fixture(scope="session")
def program():
    path = os.environ.get("FRIGANA_PROGRAM", str(TREE / "build/release/bin/frigana"))
    if not os.access(path, os.X_OK):
        pytest.skip("the program is not built")
    return path


def basic(fluid="R134a", evaporating="-5 °C", condensing="40 °C"):
    return {
        "request": "basic",
        "fluid": fluid,
        "evaporator": {"temperature": evaporating, "superheat": "5 K"},
        "compressor": {"swept_volume": "0.0028 m3/s", "isentropic_efficiency": 0.7, "volumetric_efficiency": 0.85},
        "condenser": {"temperature": condensing, "subcooling": "3 K"},
    }
