#!/usr/bin/env python3
"""Compiles sources with GCC's analyzer as the build does, and prints what it finds.

    tools/analyze_with_gcc.py build/release/compile_commands.json src/base/TextFile.cpp ...

Ends with 1 where it finds anything. Sources above the entry use exceptions and containers, which the analyzer does not
know yet; they are passed over.
"""
import json
import shlex
import subprocess
import sys
from pathlib import Path

ABOVE_THE_ENTRY = ("api", "app", "src/catalogue", "src/diagrams", "src/remarks")


def command_of(entry):
    words = [word for word in shlex.split(entry["command"]) if Path(word).name != "ccache"]
    words[words.index("-o") + 1] = "/dev/null"
    if "-MF" in words:  # the list of headers is the build's
        del words[words.index("-MF"):words.index("-MF") + 2]
        words.remove("-MD")
    # Arrays that are filled up to a number and read up to the same are taken for uninitialized.
    return words + ["-fanalyzer", "-Wno-analyzer-use-of-uninitialized-value", "-Wno-error"]


def main():
    root = Path(__file__).resolve().parent.parent
    wanted = {str((root / source).resolve()) for source in sys.argv[2:] if not source.startswith(ABOVE_THE_ENTRY)}
    found = False
    for entry in json.loads(Path(sys.argv[1]).read_text()):
        path = str((Path(entry["directory"]) / entry["file"]).resolve())
        if path not in wanted:
            continue
        wanted.remove(path)  # some are built twice, for two libraries
        run = subprocess.run(command_of(entry), cwd=entry["directory"], capture_output=True, text=True)
        if run.returncode or "warning:" in run.stderr:
            print(run.stderr)
            found = True
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
