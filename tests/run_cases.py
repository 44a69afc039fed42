#!/usr/bin/env python3
"""Runs command-line cases.

A case is a directory below tests/cases:

    cmd       shell text, run by sh in a new directory with a bare environment; "crv" is the
              program under test, "crv-NAME" one that was built with it
    inputs    names of files from tests/data or examples to copy into that directory, one a line;
              of a directory, all its files are copied (may be missing)
    in/       files of the case to copy there (may be missing)
    stdin     standard input (none: empty)
    stdout, stderr, status
              the expected output, to the byte, and exit status; a missing file means empty, a
              missing status 0
    out/      the new or changed files that are expected afterwards, to the byte, and no others;
              other inputs must be unchanged

A missing file is empty, a missing status 0. The printer command "lpr" is a stand-in that writes
its arguments to the file "printed".

    run_cases.py [NAME ...]            runs cases (area/case), areas, or all
    run_cases.py --accept [NAME ...]   writes the output into the case: read the diff before you
                                       keep it
    run_cases.py --fail-fast ...       stops after the first case that fails
    run_cases.py --except CASE ...     leaves a case out
    run_cases.py --crv PROGRAM ...     tests this program; the default is the last one that was
                                       built in build/dev or build/release
    run_cases.py --crv PROGRAM --wine WINE ...
                                       PROGRAM is for Windows and runs under Wine

Under Wine, cmd.windows, stdout.windows, stderr.windows, status.windows and out.windows replace the
files without the ending where a case has them. windows/differences.md gives the reason for each and
lists the cases that are left out. See windows/wine.py for how the program is called.
"""
import argparse
import difflib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

from support.sandbox import LPR, SKIPPED, programs_beside
from windows import wine

HERE = pathlib.Path(__file__).resolve().parent
CASES = HERE / "cases"
INPUT_DIRS = [HERE / "data", HERE.parent / "examples"]
TIME_LIMIT = 60


def read(path):
    return path.read_bytes() if path.exists() else b""


def fetch_inputs(case, directory):
    for name in read(case / "inputs").decode().split():
        source = next((path / name for path in INPUT_DIRS if (path / name).exists()), None)
        if not source:
            sys.exit(f"{case}: no input {name}")
        if source.is_dir():
            shutil.copytree(source, directory, dirs_exist_ok=True)
        else:
            shutil.copyfile(source, directory / name)
    if (case / "in").is_dir():
        shutil.copytree(case / "in", directory, dirs_exist_ok=True)


def snapshot(directory):
    """The files below the directory: relative path to bytes."""
    return {str(path.relative_to(directory)): path.read_bytes()
            for path in sorted(directory.rglob("*")) if path.is_file()}


class Native:
    """Runs the program directly."""

    def __init__(self, program):
        self.program = program

    def make_tools(self, directory):
        """Writes the programs and lpr to the directory, and returns an environment that finds
        them."""
        for name, path in programs_beside(self.program).items():
            (directory / name).symlink_to(path)
        (directory / "lpr").write_text("#!/bin/sh\n" + LPR)
        (directory / "lpr").chmod(0o755)
        return {"PATH": f"{directory}:/usr/bin:/bin", "TZ": "UTC0",
                "LSAN_OPTIONS": f"suppressions={HERE}/unit/leaks.supp:print_suppressions=0"}

    def file_of(self, case, name):
        """The file with the command or the expected output of the case."""
        return case / name

    def golden_path(self, case, name, data):
        """The file of the case that --accept writes."""
        return case / name

    def normalize(self, name, data):
        """Output in the form of the expected files."""
        return data

    def reason_to_skip(self, name):
        return None


def run(case, system):
    """Returns stdout, stderr, exit status, new or changed files, and names of removed files."""
    with tempfile.TemporaryDirectory() as scratch:
        scratch = pathlib.Path(scratch)
        directory, tools = scratch / "run", scratch / "bin"
        directory.mkdir()
        tools.mkdir()
        environment = system.make_tools(tools)
        fetch_inputs(case, directory)
        before = snapshot(directory)
        done = subprocess.run(["sh", "-c", system.file_of(case, "cmd").read_text()],
                              cwd=directory, env=environment, input=read(case / "stdin"),
                              capture_output=True, timeout=TIME_LIMIT)
        after = snapshot(directory)
        lost = [name for name in before if name not in after]
        files = {name: system.normalize(name, data) for name, data in after.items()
                 if before.get(name) != data}
        return (system.normalize("stdout", done.stdout), system.normalize("stderr", done.stderr),
                done.returncode, files, lost)


def expected_files(directory):
    return snapshot(directory) if directory.is_dir() else {}


def diff(name, wanted, got):
    if wanted == got:
        return []
    lines = difflib.diff_bytes(difflib.unified_diff, wanted.splitlines(True), got.splitlines(True),
                               b"wanted " + name.encode(), b"got " + name.encode())
    return [line.decode("utf-8", "backslashreplace").rstrip("\n").replace("\r", "\\r") + "$"
            for line in lines]


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
    status_text = f"{status}\n".encode() if status else b""
    for name, data in (("stdout", stdout), ("stderr", stderr), ("status", status_text)):
        path = system.golden_path(case, name, data)
        if path and (data or path.name != name):
            path.write_bytes(data)
        elif path:
            path.unlink(missing_ok=True)
    path = system.golden_path(case, "out", files)
    if not path:
        return
    shutil.rmtree(path, ignore_errors=True)
    for name, data in files.items():
        target = path / name
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_bytes(data)


def last_built():
    """The program of the preset dev or release, whichever was built last."""
    built = [path for preset in ("dev", "release")
             if (path := HERE.parent / "build" / preset / "crv").exists()]
    if not built:
        sys.exit("There is no program below build/dev or build/release: "
                 "build it, or name one with --crv")
    return max(built, key=lambda path: path.stat().st_mtime)


def select(names, excepted):
    """Returns the cases that the names select: cases, areas, or all if there is no name. A name
    without a match ends the run."""
    every = sorted(str(p.parent.relative_to(CASES)) for p in CASES.rglob("cmd"))
    selected = []
    for name in names or [""]:
        found = [case for case in every
                 if not name or case == name or case.startswith(name.rstrip("/") + "/")]
        if not found:
            sys.exit(f"There is no case or area {name}")
        selected += found
    unknown = [case for case in excepted if case not in every]
    if unknown:
        sys.exit(f"There is no case {unknown[0]} to leave out")
    return [case for case in selected if case not in excepted]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--crv")
    parser.add_argument("--accept", action="store_true")
    parser.add_argument("--except", action="append", default=[], dest="excepted")
    parser.add_argument("--fail-fast", action="store_true")
    parser.add_argument("--wine")
    parser.add_argument("names", nargs="*")
    given = parser.parse_args()
    program = os.path.abspath(given.crv or last_built())
    system = wine.Wine(program, given.wine) if given.wine else Native(program)
    names = select(given.names, given.excepted)
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
    sys.exit(1 if failed else SKIPPED if skipped == len(names) else 0)


if __name__ == "__main__":
    main()
