"""Studies: one request over many values, by one process, by several, or by a cluster.

A study is cut into chunks of cases that follow each other, so that the cases of one fluid stand together and its set-up is
paid once per chunk. A chunk is a list of texts and its answer another one: whatever can call a function elsewhere can run
it. Results stand in the order of the cases, whatever the order in which chunks come back.
"""

from __future__ import annotations

import concurrent.futures
import csv
import itertools
import json
import os
from typing import Any, Dict, Iterator, List, Mapping, Optional, Tuple, Union

from . import _frigana
from ._errors import StudyError
from ._result import table

#: Chunks that are under way at once: for each worker that the executor tells of, or in all where it tells of none.
_CHUNKS_AHEAD = 4
_CHUNKS_AHEAD_OF_MANY = 256
_DEFAULT_CHUNK = 50


def run_chunk(tasks: List[str]) -> List[str]:
    """Runs the cases of a chunk; what the executors call, in whatever process."""
    return [_frigana.run_case(task) for task in tasks]


def _description(source: Union[Mapping[str, Any], str, "os.PathLike[str]"]) -> Tuple[str, str]:
    if isinstance(source, Mapping):
        return json.dumps(source), os.getcwd()
    if isinstance(source, str) and ("\n" in source or source.lstrip().startswith("{")):
        return source, os.getcwd()
    with open(source, encoding="utf-8") as file:
        return file.read(), os.path.dirname(os.path.abspath(source))


class Study:
    """The description of a study: a dict, the path of a .toml or .json file, or the text of one."""

    def __init__(self, source: Union[Mapping[str, Any], str, "os.PathLike[str]"]) -> None:
        self._open(*_description(source))

    def _open(self, text: str, folder: str) -> None:
        self._source = (text, folder)
        try:
            self._engine = _frigana.Study(text, folder)
        except ValueError as error:
            raise StudyError(str(error), "bad_study") from None

    def __getstate__(self) -> Tuple[str, str]:
        return self._source

    def __setstate__(self, source: Tuple[str, str]) -> None:
        self._open(*source)

    def __len__(self) -> int:
        return self._engine.cases()

    @property
    def inputs(self) -> List[str]:
        """Keys that vary."""
        return self._engine.varied_keys()

    @property
    def keys(self) -> List[str]:
        """Keys of the results."""
        return self._engine.result_keys()

    @property
    def searched(self) -> List[str]:
        """Keys of the optimum, with the unit of their places."""
        return self._engine.optimum_keys()

    def settings(self, number: int) -> List[Any]:
        """The values of a case, in the order of `inputs`."""
        return list(json.loads(self._engine.settings(number)))

    def tasks(self, first: int, last: int) -> List[str]:
        return [self._engine.task(number) for number in range(first, last)]


class StudyResult:
    """Rows of a study: values of the inputs, of the results, and code and text of refused cases."""

    def __init__(self, description: Study, answers: List[Dict[str, Any]]) -> None:
        self.study = description
        self._answers = answers

    def __len__(self) -> int:
        return len(self._answers)

    @property
    def columns(self) -> List[str]:
        return [*self.study.inputs, *self.study.searched, *self.study.keys, "code", "text"]

    def row(self, number: int) -> List[Any]:
        answer = self._answers[number]
        error = answer.get("error", {})
        values = answer.get("values", [None] * len(self.study.keys))
        places = answer.get("optimum", [None] * len(self.study.searched))
        return [*self.study.settings(number), *places, *values, error.get("code"), error.get("text")]

    def rows(self) -> Iterator[List[Any]]:
        for number in range(len(self)):
            yield self.row(number)

    @property
    def frame(self) -> Any:
        """A pandas data frame, one row for each case (a list of dicts without pandas)."""
        return table([dict(zip(self.columns, row)) for row in self.rows()])

    @property
    def refused(self) -> List[int]:
        """Numbers of the cases that were refused."""
        return [number for number, answer in enumerate(self._answers) if "error" in answer]

    def to_csv(self, file: Any) -> None:
        """Writes the rows to a file or a path."""
        if not hasattr(file, "write"):
            with open(file, "w", encoding="utf-8", newline="") as opened:
                return self.to_csv(opened)
        writer = csv.writer(file)
        writer.writerow(self.columns)
        writer.writerows(self.rows())
        return None

    def __repr__(self) -> str:
        return f"<frigana.StudyResult, {len(self)} cases, {len(self.refused)} refused>"


def _ahead_of(executor: Any) -> int:
    for name in ("_max_workers", "num_workers"):
        number = getattr(executor, name, None)
        if isinstance(number, int) and number > 0:
            return _CHUNKS_AHEAD * number
    return _CHUNKS_AHEAD_OF_MANY


def study(
    source: Union[Study, Mapping[str, Any], str, "os.PathLike[str]"],
    *,
    executor: Any = None,
    jobs: int = 1,
    chunk: Optional[int] = None,
    ahead: Optional[int] = None,
    progress: Any = None,
) -> StudyResult:
    """Runs a study.

    executor  anything with submit() that gives futures, as concurrent.futures: a pool of processes, a client of Dask, the
              executor of mpi4py; without it `jobs` processes of this machine (1: this process)
    chunk     cases that go together; the set-up of a fluid is paid once for each
    ahead     chunks under way at once: four for each worker that the executor tells of, 256 where it tells of none
    progress  called with the number of cases done and of all cases
    """
    description = source if isinstance(source, Study) else Study(source)
    if executor is None and jobs > 1:
        with concurrent.futures.ProcessPoolExecutor(jobs) as pool:
            return study(description, executor=pool, chunk=chunk, ahead=ahead, progress=progress)
    size = chunk if chunk is not None else max(1, min(_DEFAULT_CHUNK, -(-len(description) // (8 * max(jobs, 1)))))
    if size < 1:
        raise ValueError("a chunk has at least one case")
    answers: List[Optional[Dict[str, Any]]] = [None] * len(description)
    done = 0

    def take(first: int, lines: List[str]) -> None:
        nonlocal done
        for number, line in enumerate(lines, first):
            answers[number] = json.loads(line)
        done += len(lines)
        if progress is not None:
            progress(done, len(answers))

    chunks = ((first, min(first + size, len(description))) for first in range(0, len(description), size))
    if executor is None:
        for first, last in chunks:
            take(first, run_chunk(description.tasks(first, last)))
    else:
        _spread(executor, description, chunks, ahead or _ahead_of(executor), take)
    if any(answer is None for answer in answers):
        raise StudyError("not all cases came back", "incomplete")
    return StudyResult(description, [answer for answer in answers if answer is not None])


def _spread(executor: Any, description: Study, chunks: Iterator[Tuple[int, int]], ahead: int, take: Any) -> None:
    """Keeps a bounded number of chunks under way. Futures of any kind tell by a callback that they have ended."""
    import queue

    ended: "queue.SimpleQueue[Tuple[int, Any]]" = queue.SimpleQueue()
    under_way: Dict[int, Any] = {}

    def send(first: int, last: int) -> None:
        future = executor.submit(run_chunk, description.tasks(first, last))
        under_way[first] = future
        future.add_done_callback(lambda finished: ended.put((first, finished)))

    for first, last in itertools.islice(chunks, ahead):
        send(first, last)
    try:
        while under_way:
            first, future = ended.get()
            take(first, future.result())
            del under_way[first]
            for first, last in itertools.islice(chunks, 1):
                send(first, last)
    finally:
        for future in under_way.values():
            future.cancel()
