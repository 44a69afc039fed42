#!/usr/bin/env python3
"""Runs command-line cases.

A case is a folder below tests/cases:

    cmd       shell text, run by sh in a fresh folder with a bare environment; "crv" is the program under test
    inputs    names of files from tests/data or examples to be copied into that folder, one a line (may be missing)
    in/       files of the case's own to be copied there (may be missing)
    stdin     standard input (none: empty)
    stdout, stderr, status   what must come out, to the byte; a missing file means empty, a missing status 0
    out/      files that must lie there afterwards, to the byte, and no others; inputs must be as they were

The printer command "lpr" is a stand-in that writes its arguments to the file "printed".

    run_cases.py --crv PROGRAM [case ...]            runs the cases named, or all
    run_cases.py --crv PROGRAM --accept [case ...]   writes what came out into the case: read the diff before you keep it
"""
import argparse
import difflib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
CASES = HERE / "cases"
SHELVES = [HERE / "data", HERE.parent / "examples"]
LPR = '#!/bin/sh\nfor word in "$@"; do echo "[$word]"; done > printed\n'
TIME_LIMIT = 60


def read(path):
    return path.read_bytes() if path.exists() else b""


def fetch_inputs(case, folder):
    for name in read(case / "inputs").decode().split():
        source = next((shelf / name for shelf in SHELVES if (shelf / name).exists()), None)
        if not source:
            sys.exit(f"{case}: no input {name}")
        shutil.copyfile(source, folder / name)
    if (case / "in").is_dir():
        shutil.copytree(case / "in", folder, dirs_exist_ok=True)


def snapshot(folder):
    return {str(p.relative_to(folder)): p.read_bytes() for p in sorted(folder.rglob("*")) if p.is_file()}


def run(case, program):
    """Returns what came out: stdout, stderr, status and the files that are new or changed."""
    with tempfile.TemporaryDirectory() as scratch:
        scratch = pathlib.Path(scratch)
        folder, tools = scratch / "run", scratch / "bin"
        folder.mkdir()
        tools.mkdir()
        (tools / "crv").symlink_to(program)
        (tools / "lpr").write_text(LPR)
        (tools / "lpr").chmod(0o755)
        fetch_inputs(case, folder)
        before = snapshot(folder)
        environment = {"PATH": f"{tools}:/usr/bin:/bin", "TZ": "UTC0",
                       "LSAN_OPTIONS": f"suppressions={HERE}/unit/leaks.supp:print_suppressions=0"}
        done = subprocess.run(["sh", "-c", (case / "cmd").read_text()], cwd=folder, env=environment,
                              input=read(case / "stdin"), capture_output=True, timeout=TIME_LIMIT)
        after = snapshot(folder)
        lost = [name for name in before if name not in after]
        files = {name: data for name, data in after.items() if before.get(name) != data}
        return done.stdout, done.stderr, done.returncode, files, lost


def expected_files(case):
    return snapshot(case / "out") if (case / "out").is_dir() else {}


def diff(name, wanted, got):
    if wanted == got:
        return []
    lines = difflib.diff_bytes(difflib.unified_diff, wanted.splitlines(True), got.splitlines(True),
                               b"wanted " + name.encode(), b"got " + name.encode())
    return [line.decode("utf-8", "backslashreplace").rstrip("\n").replace("\r", "\\r") + "$" for line in lines]


def check(case, program):
    stdout, stderr, status, files, lost = run(case, program)
    wanted_status = int(read(case / "status") or b"0")
    faults = diff("stdout", read(case / "stdout"), stdout) + diff("stderr", read(case / "stderr"), stderr)
    if status != wanted_status:
        faults.append(f"status {status}, wanted {wanted_status}")
    wanted_files = expected_files(case)
    faults += [f"file {name} is lost" for name in lost]
    faults += [f"file {name} is missing" for name in wanted_files if name not in files]
    faults += [f"file {name} is there" for name in files if name not in wanted_files]
    for name in sorted(set(files) & set(wanted_files)):
        faults += diff(name, wanted_files[name], files[name])
    return faults


def accept(case, program):
    stdout, stderr, status, files, _ = run(case, program)
    for name, data in (("stdout", stdout), ("stderr", stderr), ("status", f"{status}\n".encode() if status else b"")):
        if data:
            (case / name).write_bytes(data)
        else:
            (case / name).unlink(missing_ok=True)
    shutil.rmtree(case / "out", ignore_errors=True)
    for name, data in files.items():
        target = case / "out" / name
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_bytes(data)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--crv", required=True)
    parser.add_argument("--accept", action="store_true")
    parser.add_argument("cases", nargs="*")
    given = parser.parse_args()
    program = os.path.abspath(given.crv)
    names = given.cases or sorted(str(p.parent.relative_to(CASES)) for p in CASES.rglob("cmd"))
    failed = 0
    for name in names:
        if given.accept:
            accept(CASES / name, program)
            continue
        faults = check(CASES / name, program)
        failed += bool(faults)
        if faults:
            print(f"FAIL {name}", *faults, sep="\n    ")
    if not given.accept:
        print(f"{len(names) - failed} cases passed, {failed} failed")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
