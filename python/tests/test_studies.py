"""Studies: the rows of the program, executors of every kind, workers that die."""

import concurrent.futures
import csv
import os
import pickle
import signal
import subprocess

import frigana
import pytest
from conftest import TREE, basic

STUDIES = TREE / "examples" / "studies"


def grid(count, fluids=("R134a", "R290")):
    return {
        "request": basic(),
        "vary": {
            "fluid": list(fluids),
            "condenser.temperature": {"from": "30 °C", "to": "60 °C", "count": count},
        },
        "results": {"keys": ["performance.cop_cooling", "compressor.outlet.temperature"]},
    }


def test_rows_are_those_of_the_program(program, tmp_path):
    file = tmp_path / "rows.csv"
    subprocess.run([program, "study", STUDIES / "grid.toml", "--quiet", "--csv", file], check=True)
    told = list(csv.reader(file.open(encoding="utf-8")))
    result = frigana.study(str(STUDIES / "grid.toml"))
    assert told[0] == result.columns
    assert len(told) == len(result) + 1
    for mine, theirs in zip(result.rows(), told[1:]):
        assert [value if value is not None else "" for value in mine[:3]] == theirs[:3]
        assert mine[3:6] == [float(value) for value in theirs[3:6]]
    assert list(result.frame.columns) == result.columns


def test_a_refused_case_is_a_row():
    study = grid(2)
    study["vary"]["condenser.temperature"] = ["40 °C", "150 °C"]
    result = frigana.study(study)
    assert result.refused == [1, 3]
    assert result.row(1)[-2] == 201201 and result.row(0)[-2] is None


def test_executors_give_the_same_rows():
    study = grid(20)
    right = list(frigana.study(study).rows())
    assert len(right) == 40
    with concurrent.futures.ThreadPoolExecutor(4) as pool:
        assert list(frigana.study(study, executor=pool, chunk=7).rows()) == right
    with concurrent.futures.ProcessPoolExecutor(2) as pool:
        assert list(frigana.study(study, executor=pool, chunk=3).rows()) == right
    seen = []
    frigana.study(study, jobs=2, chunk=10, progress=lambda done, all: seen.append((done, all)))
    assert seen[-1] == (40, 40) and len(seen) == 4


def test_optimum():
    result = frigana.study(
        {
            "request": basic(),
            "vary": {"fluid": ["R134a"]},
            "results": {"keys": ["performance.cop_cooling"]},
            "optimum": {
                "maximise": "performance.cop_cooling",
                "over": "condenser.temperature",
                "from": "30 °C",
                "to": "50 °C",
                "tolerance": "0.01 K",
            },
        }
    )
    # Colder is better: the lower bound.
    assert result.row(0)[1] == pytest.approx(30.0, abs=0.01)


def test_what_cannot_be_read():
    with pytest.raises(frigana.StudyError) as caught:
        frigana.study({"request": basic(), "results": {"keys": ["x"]}})
    assert "nothing varies" in caught.value.text
    assert pickle.loads(pickle.dumps(caught.value)) == caught.value
    study = frigana.Study(grid(3))
    assert len(pickle.loads(pickle.dumps(study))) == 6


def test_dask_with_a_worker_that_is_killed():
    """A scheduler and two worker processes over TCP; one dies in the midst of it. No case is lost, none is there twice."""
    distributed = pytest.importorskip("distributed")
    study = grid(300)
    right = list(frigana.study(study).rows())
    with distributed.LocalCluster(
        n_workers=2, threads_per_worker=1, processes=True, protocol="tcp://", dashboard_address=None, silence_logs=50
    ) as cluster, distributed.Client(cluster) as client:
        victim = client.run(os.getpid)[sorted(client.scheduler_info()["workers"])[0]]
        chunks = []

        def progress(done, _):
            chunks.append(done)
            if len(chunks) == 5:
                os.kill(victim, signal.SIGKILL)

        result = frigana.study(study, executor=client.get_executor(), chunk=25, progress=progress)
        assert victim not in client.run(os.getpid).values()
    assert chunks[-1] == len(right) == 600 and len(chunks) == 24
    assert list(result.rows()) == right
