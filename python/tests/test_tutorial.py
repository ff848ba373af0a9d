"""The sessions of docs/python.md, as they stand."""

import doctest

import frigana
from conftest import TREE


def test_the_tutorial_shows_what_happens():
    text = (TREE / "docs" / "python.md").read_text(encoding="utf-8")
    # A fence is no part of what was printed.
    sessions = "\n".join("" if line.startswith("```") else line for line in text.splitlines())
    test = doctest.DocTestParser().get_doctest(sessions, {"frigana": frigana}, "python.md", "docs/python.md", 0)
    told = []
    failed = doctest.DocTestRunner(optionflags=doctest.NORMALIZE_WHITESPACE).run(test, out=told.append).failed
    assert len(test.examples) > 15 and not failed, "".join(told)
