#!/usr/bin/env python3
"""Guards the staircase: what the files of each folder may include, and that headers begin with their path."""
import pathlib
import re
import sys

ALLOWED = {
    "records": {"records"},
    "util": {"util", "records/settings.h", "records/memory.h"},
    "stats": {"stats", "records", "util"},
    "readers": {"readers", "stats", "records", "util"},
    "postscript": {"postscript", "records", "util"},
    "app": {"app", "postscript", "readers", "stats", "records", "util"},
}


def faults_of(path, src):
    name = path.relative_to(src).as_posix()
    folder = name.split("/")[0]
    lines = path.read_text().splitlines()
    if not lines[0].startswith(f"// {name} - "):
        yield f"{name}: the first line is not its path and purpose"
    for number, line in enumerate(lines, 1):
        include = re.match(r'#include "(([^"/]+)/[^"]+)"', line)
        if line.startswith('#include "') and not include:
            yield f"{name}:{number}: an include without its folder"
        if include and not {include.group(1), include.group(2)} & ALLOWED[folder]:
            yield f"{name}:{number}: {folder} may not include {include.group(1)}"


def main():
    src = pathlib.Path(sys.argv[1])
    files = sorted(src.rglob("*.h")) + sorted(src.rglob("*.cpp"))
    faults = [fault for path in files for fault in faults_of(path, src)]
    print(*faults, sep="\n")
    sys.exit(1 if faults or not files else 0)


if __name__ == "__main__":
    main()
