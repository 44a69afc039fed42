#!/usr/bin/env python3
"""Each directory of src includes only those of lower layers, and files begin with their path."""
import pathlib
import re
import sys

# The layers, lowest first; directories of one row do not see each other.
LAYERS = [
    {"system"},
    {"text"},
    {"records"},
    {"util", "stats"},
    {"readers", "postscript", "page", "terminal", "csv"},
    {"app"},
]
ALLOWED = {
    directory: {directory}.union(*LAYERS[:row])
    for row, layer in enumerate(LAYERS) for directory in layer
}


def faults_of(path, src):
    name = path.relative_to(src).as_posix()
    directory = name.split("/")[0]
    lines = path.read_text().splitlines()
    if not lines[0].startswith(f"// {name} - "):
        yield f"{name}: the first line is not its path and purpose"
    for number, line in enumerate(lines, 1):
        include = re.match(r'#include "([^"/]+)/[^"]+"', line)
        if line.startswith('#include "') and not include:
            yield f"{name}:{number}: an include without its directory"
        if include and include.group(1) not in ALLOWED[directory]:
            yield f"{name}:{number}: {directory} may not include {include.group(1)}"


def main():
    src = pathlib.Path(sys.argv[1], "src")
    files = sorted(src.rglob("*.h")) + sorted(src.rglob("*.cpp"))
    faults = [fault for path in files for fault in faults_of(path, src)]
    print(*faults, sep="\n")
    sys.exit(1 if faults or not files else 0)


if __name__ == "__main__":
    main()
