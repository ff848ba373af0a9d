#!/usr/bin/env python3
"""Packs what a host on Windows needs into one archive: windows_archive.py BUILD NAME OUTPUT.zip

BUILD is a build folder for Windows, NAME the folder in the archive. The same files give the same bytes: sorted, without
the time of their making.
"""
import pathlib
import sys
import zipfile

TREE = pathlib.Path(__file__).resolve().parent.parent
FROM_BUILD = {"bin/frigana.dll": "frigana.dll", "bin/frigana.exe": "frigana.exe", "bin/host.exe": "host.exe",
               "lib/libfrigana.dll.a": "lib/libfrigana.dll.a"}
FROM_TREE = {"src/frontend/frigana.def": "lib/frigana.def", "include/frigana.h": "include/frigana.h",
             "docs/windows.md": "README.md", "CHANGELOG.md": "CHANGELOG.md", "examples/host.c": "examples/host.c"}
# A stored blend would change the installation that it is tried on.
PATTERNS = ["data/fluids/*", "data/mixtures/*", "data/refrigerants.json", "examples/*.fi1", "examples/*.toml",
            "docs/*.md", "docs/*.svg"]
LEFT_OUT = {"store_blend.fi1", "windows.md"}


def members(build):
    found = {target: build / source for source, target in FROM_BUILD.items()}
    found |= {target: TREE / source for source, target in FROM_TREE.items()}
    for pattern in PATTERNS:
        found |= {str(path.relative_to(TREE)): path for path in TREE.glob(pattern)
                  if path.is_file() and path.name not in LEFT_OUT}
    return sorted(found.items())


def main():
    build, name, output = pathlib.Path(sys.argv[1]), sys.argv[2], pathlib.Path(sys.argv[3])
    with zipfile.ZipFile(output, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for target, source in members(build):
            entry = zipfile.ZipInfo(f"{name}/{target}", (1980, 1, 1, 0, 0, 0))
            entry.compress_type = zipfile.ZIP_DEFLATED
            archive.writestr(entry, source.read_bytes())


main()
