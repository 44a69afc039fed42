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
    run_cases.py --crv PROGRAM --fail-fast [case ...]   stops after the first case that fails
    run_cases.py --crv PROGRAM --accept [case ...]   writes what came out into the case: read the diff before you keep it
    run_cases.py --crv PROGRAM --wine WINE ...       PROGRAM is for Windows and runs under Wine

Under Wine, cmd.windows, stdout.windows, stderr.windows, status.windows and out.windows stand in for the files without the
ending where a case has them, and each has its reason in windows/differences.md; that page also says which cases are left
out. See windows/wine.py for how the program is called.
"""
import argparse
import difflib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

from windows import wine

HERE = pathlib.Path(__file__).resolve().parent
CASES = HERE / "cases"
SHELVES = [HERE / "data", HERE.parent / "examples"]
LPR = '#!/bin/sh\nfor word in "$@"; do echo "[$word]"; done > printed\n'
TIME_LIMIT = 60
STATUS_SKIPPED = 77


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


class Native:
    """Runs the program as it is."""

    def __init__(self, program):
        self.program = program

    def make_tools(self, folder):
        """Puts crv and lpr into the folder, and returns the environment in which they are found."""
        (folder / "crv").symlink_to(self.program)
        (folder / "lpr").write_text(LPR)
        (folder / "lpr").chmod(0o755)
        return {"PATH": f"{folder}:/usr/bin:/bin", "TZ": "UTC0",
                "LSAN_OPTIONS": f"suppressions={HERE}/unit/leaks.supp:print_suppressions=0"}

    def file_of(self, case, name):
        """Where the case has what must come out, or its command."""
        return case / name

    def place_for(self, case, name, data):
        """Where the case is to have what came out."""
        return case / name

    def as_text(self, name, data):
        """Gives what came out as the cases have it."""
        return data

    def reason_to_skip(self, name):
        return None


def run(case, system):
    """Returns what came out: stdout, stderr, status and the files that are new or changed."""
    with tempfile.TemporaryDirectory() as scratch:
        scratch = pathlib.Path(scratch)
        folder, tools = scratch / "run", scratch / "bin"
        folder.mkdir()
        tools.mkdir()
        environment = system.make_tools(tools)
        fetch_inputs(case, folder)
        before = snapshot(folder)
        done = subprocess.run(["sh", "-c", system.file_of(case, "cmd").read_text()], cwd=folder, env=environment,
                              input=read(case / "stdin"), capture_output=True, timeout=TIME_LIMIT)
        after = snapshot(folder)
        lost = [name for name in before if name not in after]
        files = {name: system.as_text(name, data) for name, data in after.items() if before.get(name) != data}
        return (system.as_text("stdout", done.stdout), system.as_text("stderr", done.stderr), done.returncode, files,
                lost)


def expected_files(folder):
    return snapshot(folder) if folder.is_dir() else {}


def diff(name, wanted, got):
    if wanted == got:
        return []
    lines = difflib.diff_bytes(difflib.unified_diff, wanted.splitlines(True), got.splitlines(True),
                               b"wanted " + name.encode(), b"got " + name.encode())
    return [line.decode("utf-8", "backslashreplace").rstrip("\n").replace("\r", "\\r") + "$" for line in lines]


def check(case, system):
    stdout, stderr, status, files, lost = run(case, system)
    wanted_status = int(read(system.file_of(case, "status")) or b"0")
    faults = diff("stdout", read(system.file_of(case, "stdout")), stdout)
    faults += diff("stderr", read(system.file_of(case, "stderr")), stderr)
    if status != wanted_status:
        faults.append(f"status {status}, wanted {wanted_status}")
    wanted_files = expected_files(system.file_of(case, "out"))
    faults += [f"file {name} is lost" for name in lost]
    faults += [f"file {name} is missing" for name in wanted_files if name not in files]
    faults += [f"file {name} is there" for name in files if name not in wanted_files]
    for name in sorted(set(files) & set(wanted_files)):
        faults += diff(name, wanted_files[name], files[name])
    return faults


def accept(case, system):
    stdout, stderr, status, files, _ = run(case, system)
    for name, data in (("stdout", stdout), ("stderr", stderr), ("status", f"{status}\n".encode() if status else b"")):
        place = system.place_for(case, name, data)
        if place and (data or place.name != name):
            place.write_bytes(data)
        elif place:
            place.unlink(missing_ok=True)
    place = system.place_for(case, "out", files)
    if not place:
        return
    shutil.rmtree(place, ignore_errors=True)
    for name, data in files.items():
        target = place / name
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_bytes(data)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--crv", required=True)
    parser.add_argument("--accept", action="store_true")
    parser.add_argument("--fail-fast", action="store_true")
    parser.add_argument("--wine")
    parser.add_argument("cases", nargs="*")
    given = parser.parse_args()
    program = os.path.abspath(given.crv)
    system = wine.Wine(program, given.wine) if given.wine else Native(program)
    names = given.cases or sorted(str(p.parent.relative_to(CASES)) for p in CASES.rglob("cmd"))
    failed = skipped = 0
    for name in names:
        reason = system.reason_to_skip(name)
        if reason:
            print(f"skipped {name}: {reason}")
            skipped += 1
            continue
        if given.accept:
            accept(CASES / name, system)
            continue
        faults = check(CASES / name, system)
        failed += bool(faults)
        if faults:
            print(f"FAIL {name}", *faults, sep="\n    ")
            if given.fail_fast:
                sys.exit(1)
    if not given.accept:
        print(f"{len(names) - failed - skipped} cases passed, {failed} failed" +
              (f", {skipped} skipped" if skipped else ""))
    sys.exit(1 if failed else STATUS_SKIPPED if skipped == len(names) else 0)


if __name__ == "__main__":
    main()
