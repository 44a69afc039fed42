#!/usr/bin/env python3
"""The compile date comes from SOURCE_DATE_EPOCH, the last commit or the source archive, never from
the clock, and the build prints which one it is."""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(sys.argv[1]).resolve()
faults = []


def configure(source, **variables):
    """The stamp that a build configured in an environment compiles in, and its output."""
    environment = {name: value for name, value in os.environ.items()
                   if name != "SOURCE_DATE_EPOCH"}
    with tempfile.TemporaryDirectory() as build:
        run = subprocess.run(["cmake", "-S", source, "-B", build], env=environment | variables,
                             capture_output=True, text=True)
        if run.returncode != 0:
            return "failed", run.stdout + run.stderr
        commands = pathlib.Path(build, "compile_commands.json").read_text()
    found = re.search(r"CRV_BUILD_DATE=(.*?) -DCRV_BUILD_TIME=(\S+)", commands)
    stamp = re.sub(r'[\\"]', "", " ".join(found.groups())) if found else "nothing"
    return stamp, run.stdout + run.stderr


def expect(what, source, stamp, text, **variables):
    got, output = configure(source, **variables)
    if got != stamp:
        faults.append(f"{what}: the stamp is {got!r}, expected {stamp!r}")
    if text not in output:
        faults.append(f"{what}: no {text!r} in the output: {output}")


expect("epoch 0", ROOT, "Jan  1 1970 00:00:00", "(SOURCE_DATE_EPOCH)", SOURCE_DATE_EPOCH="0")
expect("an epoch", ROOT, "Dec 10 2007 10:05:07", "(SOURCE_DATE_EPOCH)",
       SOURCE_DATE_EPOCH="1197281107")
expect("no number", ROOT, "failed", "is not a number of seconds: 'now'", SOURCE_DATE_EPOCH="now")
if configure(ROOT)[0] != configure(ROOT)[0]:
    faults.append("two configurations of the same source differ")

with tempfile.TemporaryDirectory() as scratch:
    copy = pathlib.Path(scratch, "source")
    shutil.copytree(ROOT, copy, symlinks=True,
                    ignore=shutil.ignore_patterns(".git", "build", "dist", "demo", "tests"))
    (copy / "cmake/commit_time.txt").write_text("1197281107\n")
    expect("a source archive", copy, "Dec 10 2007 10:05:07", "(source archive)")
    (copy / "cmake/commit_time.txt").write_text("$Format:%ct$\n")
    expect("no time", copy, "Jan  1 2026 00:00:00", "stamped with a fixed day")
    (copy / ".git").mkdir()
    expect("a checkout that git cannot read", copy, "Jan  1 2026 00:00:00",
           "git does not tell the time of the last commit")
print(*faults, sep="\n")
sys.exit(1 if faults else 0)
