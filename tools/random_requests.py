#!/usr/bin/env python3
"""Writes requests that differ at random from the examples: random_requests.py EXAMPLES FOLDER COUNT [SEED]

Values of parameters are changed by up to a tenth, one in three of them; one request in three asks for another fluid. The
same seed gives the same requests everywhere.
"""
import pathlib
import random
import re
import sys

FLUIDS = ["R134A.FLD", "R22.FLD", "R32.FLD", "PROPANE.FLD", "AMMONIA.FLD", "CO2.FLD", "R1234YF.FLD", "R410A.MIX",
          "R407C.MIX", "R404A.MIX", "R245FA.FLD", "R1233ZD.FLD"]
PARAMETER = re.compile(r"^([1-9]) (-?[0-9.]+)$")
FLUID = re.compile(r"^\w+\.(FLD|MIX)$", re.IGNORECASE)


def changed(line, generator, fluid):
    parameter = PARAMETER.match(line)
    if parameter and generator.random() < 1 / 3:
        return f"{parameter[1]} {float(parameter[2]) * generator.uniform(0.9, 1.1):.6f}"
    if fluid and FLUID.match(line):
        return fluid
    return line


def main():
    examples, folder, count = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), int(sys.argv[3])
    generator = random.Random(int(sys.argv[4]) if len(sys.argv) > 4 else 1)
    # A stored blend would change the installation.
    texts = [path.read_text() for path in sorted(examples.glob("*.fi1")) if path.stem != "store_blend"]
    folder.mkdir(parents=True, exist_ok=True)
    for number in range(1, count + 1):
        fluid = generator.choice(FLUIDS) if generator.random() < 1 / 3 else None
        lines = [changed(line, generator, fluid) for line in generator.choice(texts).splitlines()]
        (folder / f"r{number:04}.fi1").write_text("\n".join(lines) + "\n")


main()
