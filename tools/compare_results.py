#!/usr/bin/env python3
"""Compares the results of two folders, .fo1, .fo0 and .json: compare_results.py FOLDER OTHER [BOUND [NEAR_ZERO]]

Texts must be equal, numbers within BOUND of the larger one (1e-12 if not given) or, for what remains of a difference of
large numbers, within NEAR_ZERO of each other (0 if not given); line ends do not count. Says how many files were compared,
how many are within 1e-12, and the largest difference; exit status 1 where a file is missing or differs by more.
"""
import pathlib
import re
import sys

USUAL = 1e-12


def number(text):
    try:
        return float(text)
    except ValueError:
        return None


def difference(a, b, near_zero):
    """0 where the words are equal, the relative difference of two numbers, 1 where texts differ."""
    if a == b:
        return 0.0
    x, y = number(a), number(b)
    if x is None or y is None:
        return 1.0
    return 0.0 if abs(x - y) <= near_zero else abs(x - y) / max(abs(x), abs(y), 1e-300)


def words(path):
    return re.split(r"[\s,\[\]{}]+", path.read_bytes().decode("latin-1"))


def main():
    folder, other = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    bound = float(sys.argv[3]) if len(sys.argv) > 3 else USUAL
    near_zero = float(sys.argv[4]) if len(sys.argv) > 4 else 0.0
    names = sorted({path.name for place in (folder, other) for kind in ("*.fo[01]", "*.json") for path in place.glob(kind)})
    worst, equal, usual, wrong = (0.0, ""), 0, 0, []
    for name in names:
        if not (folder / name).exists() or not (other / name).exists():
            wrong.append(f"{name}: only in one folder")
            continue
        ours, theirs = words(folder / name), words(other / name)
        if len(ours) != len(theirs):
            wrong.append(f"{name}: {len(ours)} and {len(theirs)} words")
            continue
        equal += ours == theirs
        usual += all(difference(a, b, 0.0) <= USUAL for a, b in zip(ours, theirs))
        largest = max(difference(a, b, near_zero) for a, b in zip(ours, theirs))
        worst = max(worst, (largest, name))
        if largest > bound:
            wrong.append(f"{name}: differs by {largest:.1e}")
    for complaint in wrong[:20]:
        print(complaint)
    near = f" or {near_zero:.0e} near zero" if near_zero else ""
    print(f"{len(names)} results compared: {equal} equal in every digit, {usual} within {USUAL:.0e}, largest difference "
          f"{worst[0]:.1e} ({worst[1]}), {len(wrong)} beyond {bound:.0e}{near} or missing")
    return 1 if wrong or not names else 0


sys.exit(main())
