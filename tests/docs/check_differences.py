#!/usr/bin/env python3
"""Every file that a case has for Windows has its row in tests/windows/differences.md, and every row its files."""
import pathlib
import sys


def main():
    tests = pathlib.Path(sys.argv[1]) / "tests"
    sys.path.insert(0, str(tests))
    from windows import wine
    rows = wine.differences()
    own = {}
    for path in sorted((tests / "cases").rglob("*.windows")):
        own.setdefault(str(path.parent.relative_to(tests / "cases")), set()).add(path.stem)
    faults = [f"differences.md has no row for {case}" for case in own if case not in rows]
    for case, (what, reason) in rows.items():
        named = set() if what == "left out" else set(what.split(", "))
        if not (tests / "cases" / case / "cmd").exists():
            faults.append(f"differences.md: no case {case}")
        if named != own.get(case, set()):
            faults.append(f"differences.md: {case} has {sorted(own.get(case, set()))}, the row says {what}")
        if not reason:
            faults.append(f"differences.md: no reason for {case}")
    print(*faults, sep="\n")
    sys.exit(1 if faults or not rows else 0)


if __name__ == "__main__":
    main()
