#!/usr/bin/env python3
"""Each file *.windows of a case has a row in tests/windows/differences.md, and each row its
files."""
import pathlib
import sys

TESTS = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(TESTS))
from support.sandbox import report  # noqa: E402  (found by the path above)
from windows import wine  # noqa: E402

CASES = TESTS / "cases"
rows = wine.differences()
files = {}
for path in CASES.rglob("*.windows"):
    files.setdefault(str(path.parent.relative_to(CASES)), set()).add(path.stem)
faults = [f"differences.md has no row for {case}" for case in sorted(files.keys() - rows.keys())]
for case, (what, reason) in rows.items():
    named = set() if what == "left out" else set(what.split(", "))
    if not (CASES / case / "cmd").exists():
        faults.append(f"differences.md: no case {case}")
    if named != files.get(case, set()):
        faults.append(f"differences.md: {case} has {sorted(files.get(case, ()))}, not {what}")
    if not reason:
        faults.append(f"differences.md: no reason for {case}")
report(faults or ([] if rows else ["differences.md has no rows"]))
