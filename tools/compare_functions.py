#!/usr/bin/env python3
"""Compares what tests/windows/Functions.c wrote on two systems: compare_functions.py FILE OTHER

One line with the share of values that differ and the largest difference in units of the last place, function by function.
"""
import array
import sys

NAMES = ["exp", "log", "pow", "pow, whole exponent", "log10", "cbrt", "sinh", "cosh", "tanh", "atan"]


def read(path):
    values = array.array("q")
    with open(path, "rb") as file:
        values.frombytes(file.read())
    return values


def main():
    ours, theirs = read(sys.argv[1]), read(sys.argv[2])
    if len(ours) != len(theirs):
        sys.exit("the files differ in length")
    said = []
    for place, name in enumerate(NAMES):
        # Neighbouring doubles of one sign are neighbouring whole numbers.
        apart = [abs(a - b) for a, b in zip(ours[place::len(NAMES)], theirs[place::len(NAMES)])]
        share = 100.0 * sum(1 for one in apart if one) / len(apart)
        said.append(f"{name} {share:.2f} % by {max(apart)}")
    print("functions that differ, share and units in the last place: " + "; ".join(said))


main()
