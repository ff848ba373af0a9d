#!/usr/bin/env python3
"""Compares the result files of two folders: compare_results.py FOLDER OTHER [BOUND]

Texts must be equal, numbers within BOUND of the larger one (1e-12 if not given); line ends do not count. Says how many
files were compared and the largest difference; exit status 1 where a file is missing or differs by more.
"""
import pathlib
import sys


def number(text):
    try:
        return float(text)
    except ValueError:
        return None


def difference(a, b):
    """0 where the words are equal, the relative difference of two numbers, 1 where texts differ."""
    if a == b:
        return 0.0
    x, y = number(a), number(b)
    if x is None or y is None:
        return 1.0
    return abs(x - y) / max(abs(x), abs(y), 1e-300)


def main():
    folder, other = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    bound = float(sys.argv[3]) if len(sys.argv) > 3 else 1e-12
    names = sorted({path.name for place in (folder, other) for path in place.glob("*.fo[01]")})
    worst, equal, wrong = 0.0, 0, []
    for name in names:
        if not (folder / name).exists() or not (other / name).exists():
            wrong.append(f"{name}: only in one folder")
            continue
        ours, theirs = ((place / name).read_bytes().decode("latin-1").split() for place in (folder, other))
        if len(ours) != len(theirs):
            wrong.append(f"{name}: {len(ours)} and {len(theirs)} words")
            continue
        largest = max((difference(a, b) for a, b in zip(ours, theirs)), default=0.0)
        equal += largest == 0.0
        worst = max(worst, largest)
        if largest > bound:
            wrong.append(f"{name}: differs by {largest:.1e}")
    for complaint in wrong[:20]:
        print(complaint)
    print(f"{len(names)} results compared: {equal} equal in every digit, largest difference {worst:.1e}, "
          f"{len(wrong)} beyond {bound:.0e} or missing")
    return 1 if wrong or not names else 0


sys.exit(main())
