#!/usr/bin/env python3
"""Compares docs/oddities.md with the Deliberate: comments and the tests, and finds broken links and
paths in the documents.

    check_docs.py ROOT UNIT_TESTS
"""
import pathlib
import re
import subprocess
import sys


def known_tests(root, unit_tests):
    names = {
        str(p.parent.relative_to(root / "tests/cases")) for p in (root / "tests/cases").rglob("cmd")
    }
    names |= set(re.findall(r"add_test\(NAME (\S+)", (root / "tests/CMakeLists.txt").read_text()))
    listed = subprocess.run(
        [unit_tests, "--gtest_list_tests"], check=True, capture_output=True, text=True
    )
    for line in listed.stdout.splitlines():
        if line.startswith("  "):
            names.add(suite + line.split()[0])
        else:
            suite = line.strip()
    return names


def faults_in_oddities(root, unit_tests):
    rows = [
        line.split("|")[1:-1]
        for line in (root / "docs/oddities.md").read_text().splitlines()
        if line.startswith("| `")
    ]
    tests = known_tests(root, unit_tests)
    for row in rows:
        where, test = row[0].strip(" `"), row[2].strip(" `")
        if not (root / "src" / where).exists():
            yield f"oddities.md: no file {where}"
        if test not in tests:
            yield f"oddities.md: no test {test}"
    named = {row[0].strip(" `") for row in rows}
    for path in sorted((root / "src").rglob("*.*")):
        name = path.relative_to(root / "src").as_posix()
        count = path.read_text().count("Deliberate:")
        listed = sum(row[0].strip(" `") == name for row in rows)
        if count > listed:
            yield f"{name}: {count} Deliberate: comments, {listed} rows in oddities.md"
    if not named:
        yield "oddities.md: no rows"


def faults_in_links(root):
    for doc in [*root.glob("*.md"), *(root / "docs").glob("*.md")]:
        for link in re.findall(r"\]\(([^)#]+)(?:#[^)]*)?\)", doc.read_text()):
            if "://" not in link and not (doc.parent / link).exists():
                yield f"{doc.relative_to(root)}: broken link {link}"


def faults_in_paths(root):
    """Files named in backticks are there."""
    for doc in [*root.glob("*.md"), *(root / "docs").glob("*.md")]:
        for path in re.findall(
            r"`((?:src|tests|docs|scripts|bench|examples)/[\w./-]+\.\w+)`", doc.read_text()
        ):
            if "NAME" not in path and not (root / path).exists():
                yield f"{doc.relative_to(root)}: no file {path}"


def main():
    root = pathlib.Path(sys.argv[1])
    faults = [
        *faults_in_oddities(root, sys.argv[2]),
        *faults_in_links(root),
        *faults_in_paths(root),
    ]
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
