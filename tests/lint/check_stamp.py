#!/usr/bin/env python3
"""The date that the program shows comes from SOURCE_DATE_EPOCH or the last commit, never from the clock."""
import os
import pathlib
import re
import subprocess
import sys
import tempfile


def stamp(root, epoch):
    """The date and time that a build configured with this SOURCE_DATE_EPOCH would compile in."""
    environment = {k: v for k, v in os.environ.items() if k != "SOURCE_DATE_EPOCH"}
    if epoch is not None:
        environment["SOURCE_DATE_EPOCH"] = str(epoch)
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["cmake", "-S", root, "-B", folder], env=environment, check=True, stdout=subprocess.DEVNULL)
        commands = pathlib.Path(folder, "compile_commands.json").read_text()
    found = re.search(r'CRV_BUILD_DATE=(.*?) -DCRV_BUILD_TIME=(\S+)', commands)
    return re.sub(r'[\\\\"]', "", " ".join(found.groups())) if found else "nothing"


def main():
    root = sys.argv[1]
    faults = []
    for epoch, wanted in ((0, "Jan  1 1970 00:00:00"), (1197281107, "Dec 10 2007 10:05:07")):
        got = stamp(root, epoch)
        if got != wanted:
            faults.append(f"SOURCE_DATE_EPOCH={epoch} gives {got!r}, wanted {wanted!r}")
    if stamp(root, None) != stamp(root, None):
        faults.append("two configurations of the same source differ")
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
