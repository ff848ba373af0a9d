"""Properties: every pair, shapes, units, phases, failures; threads, forks, pickles; the types."""

import concurrent.futures
import multiprocessing
import pickle
import resource
import warnings

import frigana
import numpy as np
import pytest

LETTERS = ["T", "p", "d", "h", "s", "q"]


@pytest.fixture(scope="module")
def r134a():
    return frigana.Fluid("R134a")


# Rounding of a given value times the steepness of the properties.
TOLERANCE = 2e-7


@pytest.mark.parametrize("name", ["R134a", "ammonia", "R407C"])
@pytest.mark.parametrize("first", LETTERS)
@pytest.mark.parametrize("second", LETTERS)
def test_every_pair_leads_back(name, first, second):
    fluid = frigana.Fluid(name)
    start = fluid.state(T=250.0, q=0.4)
    if first == second:
        with pytest.raises(TypeError):
            fluid.state(**{first: 1.0})
        return
    if {first, second} == {"T", "p"}:
        start = fluid.state(T=250.0, p=50.0)
    again = fluid.state(**{first: getattr(start, first), second: getattr(start, second)})
    assert again.codes <= 0, again.problems
    for letter in "Tpdhs":
        assert getattr(again, letter) == pytest.approx(getattr(start, letter), rel=TOLERANCE)


@pytest.mark.parametrize("shape", [(), (3,), (1,), (2, 3), (0,)])
def test_shapes(r134a, shape):
    T = np.full(shape, 300.0)
    found = r134a.h(T=T, p=1000.0)
    assert np.shape(found) == shape
    assert isinstance(found, float) == (shape == ())
    assert np.all(found == r134a.h(T=300.0, p=1000.0))
    state = r134a.state(T=T, p=1000.0)
    for name in ("h", "phase", "conductivity", "codes", "ok"):
        assert np.shape(getattr(state, name)) == shape


def test_arrays_are_broadcast(r134a):
    T = np.linspace(280.0, 360.0, 4)
    p = np.array([[100.0], [500.0], [2000.0]])
    table = r134a.d(T=T, p=p)
    assert table.shape == (3, 4)
    for i in range(3):
        for j in range(4):
            assert table[i, j] == pytest.approx(r134a.d(T=T[j], p=p[i, 0]), rel=1e-12)
    with pytest.raises(ValueError):
        r134a.d(T=np.zeros(3), p=np.zeros(2))
    # Not contiguous, integers, lists.
    assert np.array_equal(r134a.d(T=T[::2], p=100), r134a.d(T=[T[0], T[2]], p=[100, 100]))


def test_texts_with_units(r134a):
    assert r134a.h(T="25 °C", p="10 bar") == r134a.h(T=298.15, p=1000.0)
    assert list(r134a.p(T=["0 °C", "32 °F"], q=1)) == [r134a.p(T=273.15, q=1)] * 2
    with pytest.raises(ValueError):
        r134a.h(T="25 bar", p=100)


def test_failures_are_told(r134a):
    with warnings.catch_warnings(record=True) as caught:
        warnings.simplefilter("always")
        found = r134a.h(T=[300.0, 900.0, np.nan], p=100.0)
    assert list(np.isnan(found)) == [False, True, True]
    assert caught[0].category is frigana.StateWarning and caught[0].filename == __file__
    assert "2 of 3 states without an answer, the first at (1,): [TPFLSH error 1]" in str(caught[0].message)
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        assert np.isnan(r134a.h(T=900.0, p=100.0, errors="nan"))
    with pytest.raises(frigana.StateError) as refused:
        r134a.h(T=[300.0, 900.0], p=100.0, errors="raise")
    assert refused.value.code == 1 and pickle.loads(pickle.dumps(refused.value)) == refused.value
    state = r134a.state(T=[300.0, 900.0], p=100.0)
    assert list(state.ok) == [True, False]
    assert state.problems[0].index == (1,) and "T = 900" in state.problems[0].text
    with pytest.raises(ValueError):
        r134a.h(T=300.0, p=100.0, errors="ignore")
    with pytest.raises(TypeError):
        r134a.h(T=300.0, x=100.0)
    with pytest.raises(AttributeError):
        r134a.state(T=300.0, p=100.0).nothing
    with pytest.raises(frigana.StateError):
        frigana.Fluid("R9999")


def test_blends():
    own = frigana.Fluid({"R32": 0.5, "R125": 0.5})
    listed = frigana.Fluid("R410A")
    assert own.h(T=300.0, p=500.0) - own.h(T=280.0, p=500.0) == pytest.approx(
        listed.h(T=300.0, p=500.0) - listed.h(T=280.0, p=500.0), rel=1e-6
    )
    assert own.components[0]["mass_fraction"] == pytest.approx(0.5)
    by_mole = frigana.Fluid({"R32": 0.5, "R125": 0.5}, fractions="mole", blend_name="half", reference_state="IIR")
    assert by_mole.name == "half" and by_mole.components[0]["mole_fraction"] == pytest.approx(0.5)
    # Saturated liquid at 0 °C is the zero of this reference state: 200 kJ/kg and 1 kJ/(kg K).
    zero = by_mole.saturation(T="0 °C").liquid
    assert (zero.h, zero.s) == (pytest.approx(200.0, abs=1e-6), pytest.approx(1.0, abs=1e-8))
    wet = frigana.Fluid("R407C").state(p=600.0, q=0.4)
    assert wet.liquid_fractions.sum() == pytest.approx(1.0) and wet.vapor_fractions.shape == (3,)
    assert frigana.Fluid("R407C").saturation(p=600.0).glide == pytest.approx(5.5, abs=2.0)


def test_phases(r134a):
    assert list(r134a.phase(T=[300.0, 350.0, 400.0], p=[1000.0, 100.0, 6000.0])) == ["liquid", "vapor", "supercritical"]
    assert r134a.phase(p=500.0, h=300.0) == "two phases"


def states_in(name):
    fluid = frigana.Fluid(name)
    T = np.linspace(230.0, 330.0, 40)
    return fluid.s(T=T, q=0.5)


def test_threads():
    names = ["R134a", "R32", "R290", "R717"] * 25
    right = {name: states_in(name) for name in set(names)}
    with concurrent.futures.ThreadPoolExecutor(8) as pool:
        for name, found in zip(names, pool.map(states_in, names)):
            # A state may differ in its last digit by what the engine calculated before it.
            np.testing.assert_allclose(found, right[name], rtol=1e-10)


def test_forks_and_pickles(r134a):
    right = states_in("R134a")
    with concurrent.futures.ThreadPoolExecutor(1) as busy:
        running = [busy.submit(states_in, "R407C") for _ in range(5)]
        with multiprocessing.get_context("fork").Pool(2) as pool:
            for found in pool.map(states_in, ["R134a"] * 8):
                np.testing.assert_allclose(found, right, rtol=1e-10)
        for one in running:
            one.result()
    assert pickle.loads(pickle.dumps(r134a)).h(T=300.0, p=100.0) == pytest.approx(r134a.h(T=300.0, p=100.0))


def peak():
    with open("/proc/self/statm") as file:
        return int(file.read().split()[1]) * resource.getpagesize()


def test_memory_stays(r134a):
    """A leak of sixteen bytes a call would be 1 MB."""

    def calls(count):
        for _ in range(count):
            r134a.h(T=300.0, p=100.0)
            r134a.d(T=900.0, p=100.0, errors="nan")

    calls(5_000)
    before = peak()
    calls(30_000)
    assert peak() - before < 700_000
