#!/usr/bin/env python3
"""The compile date comes from SOURCE_DATE_EPOCH or the last commit, never from the clock."""
import os
import pathlib
import re
import subprocess
import sys
import tempfile


def stamp(root, **variables):
    """The date and time that a build configured in an environment would compile in."""
    environment = {name: value for name, value in os.environ.items()
                   if name != "SOURCE_DATE_EPOCH"}
    with tempfile.TemporaryDirectory() as build:
        subprocess.run(["cmake", "-S", root, "-B", build], env=environment | variables, check=True,
                       stdout=subprocess.DEVNULL)
        commands = pathlib.Path(build, "compile_commands.json").read_text()
    found = re.search(r"CRV_BUILD_DATE=(.*?) -DCRV_BUILD_TIME=(\S+)", commands)
    return re.sub(r'[\\\\"]', "", " ".join(found.groups())) if found else "nothing"


faults = []
for epoch, expected in (("0", "Jan  1 1970 00:00:00"), ("1197281107", "Dec 10 2007 10:05:07")):
    got = stamp(sys.argv[1], SOURCE_DATE_EPOCH=epoch)
    if got != expected:
        faults.append(f"SOURCE_DATE_EPOCH={epoch} gives {got!r}, expected {expected!r}")
if stamp(sys.argv[1]) != stamp(sys.argv[1]):
    faults.append("two configurations of the same source differ")
print(*faults, sep="\n")
sys.exit(1 if faults else 0)
