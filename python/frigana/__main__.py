"""python -m frigana REQUEST... runs named requests; python -m frigana study FILE runs a study."""

from __future__ import annotations

import argparse
import sys
from typing import List, Optional

import frigana


def _run(files: List[str]) -> int:
    status = 0
    for file in files:
        try:
            answered = frigana.run(file)
        except frigana.FriganaError as error:
            print(f"{file}: {error.text}", file=sys.stderr)
            status = 2
            continue
        for result in answered if isinstance(answered, list) else [answered]:
            print(f"{file}: {result.name}")
            for key, value in result.items():
                if ".diagram." not in f".{key}":
                    print(f"  {key} = {value} {result.units.get(key, '')}".rstrip())
    return status


def _study(arguments: argparse.Namespace) -> int:
    try:
        result = frigana.study(arguments.file, jobs=arguments.jobs)
    except frigana.FriganaError as error:
        print(f"{arguments.file}: {error.text}", file=sys.stderr)
        return 2
    result.to_csv(arguments.csv or sys.stdout)
    return 0


def main(arguments: Optional[List[str]] = None) -> int:
    arguments = sys.argv[1:] if arguments is None else arguments
    if arguments[:1] == ["study"]:
        parser = argparse.ArgumentParser(prog="python -m frigana study", description="runs a study")
        parser.add_argument("file", help="description in TOML or JSON")
        parser.add_argument("--jobs", type=int, default=1, help="processes")
        parser.add_argument("--csv", help="file for the rows; standard output if left out")
        return _study(parser.parse_args(arguments[1:]))
    parser = argparse.ArgumentParser(prog="python -m frigana", description=__doc__)
    parser.add_argument("--version", action="version", version=f"frigana {frigana.__version__}")
    parser.add_argument("request", nargs="+", help="named requests, .toml or .json")
    return _run(parser.parse_args(arguments).request)


if __name__ == "__main__":
    sys.exit(main())
