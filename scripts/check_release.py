#!/usr/bin/env python3
"""Checks that build, change log, manual pages, documents and recipes agree on a version.

    check_release.py VERSION [--final]

Prints each disagreement; the exit status is 1 if there is one. With --final, CHANGELOG.md must have
a section for the version, dated and on top, and nothing may be left under "Unreleased".
"""
import datetime
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]
FORM = re.compile(r"\d+\.\d+\.\d+")
UNRELEASED = "[Unreleased]"
# The parts of a section, https://keepachangelog.com/en/1.1.0/
PARTS = ("Added", "Changed", "Deprecated", "Removed", "Fixed", "Security")
RELEASED = re.compile(r"\[(\d+\.\d+\.\d+)\] - (\d{4}-\d\d-\d\d)")
NAMED = re.compile(r"\bcrv[-_](\d+\.\d+\.\d+)")


def sections_of(text):
    """Title and lines of each section of the change log, top down."""
    titles = re.split(r"^## (.*)\n", text, flags=re.M)[1:]
    return [(title, body.split("\n")) for title, body in zip(titles[::2], titles[1::2])]


def faults_in_title(title):
    found = RELEASED.fullmatch(title)
    if not found:
        yield f"CHANGELOG.md: \"{title}\" is neither [Unreleased] nor \"[VERSION] - YYYY-MM-DD\""
        return
    try:
        datetime.date.fromisoformat(found[2])
    except ValueError:
        yield f"CHANGELOG.md: {found[2]} is not a date"


def faults_in_changelog(version, final):
    sections = sections_of((ROOT / "CHANGELOG.md").read_text())
    released = [section for section in sections if section[0] != UNRELEASED]
    for title, lines in released:
        yield from faults_in_title(title)
    for title, lines in sections:
        for line in lines:
            if line.startswith("### ") and line[4:] not in PARTS:
                yield f"CHANGELOG.md: {title}: the part {line[4:]} is none of {', '.join(PARTS)}"
    if not final:
        return
    top = RELEASED.fullmatch(released[0][0]) if released else None
    if not top or top[1] != version:
        yield f"CHANGELOG.md: the first section after Unreleased is not that of {version}"
    for title, lines in sections:
        if title == UNRELEASED and any(line.startswith("- ") for line in lines):
            yield f"CHANGELOG.md: entries are left under Unreleased; move them to {version}"


def faults_in_build(version):
    found = re.search(r"^project\(crv VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text(), re.M)
    if found[1] != version:
        yield f"CMakeLists.txt: the version is {found[1]}"


def faults_in_pages(version):
    """Manual pages print the version in the last line; those that only include another have none.
    """
    for path in sorted((ROOT / "man").glob("*.1")):
        text = path.read_text()
        if not text.startswith(".so ") and f"\n.Os crv {version}\n" not in text:
            yield f"man/{path.name}: no \".Os crv {version}\""


def faults_in_names(version):
    """Documents and recipes name packages of this version."""
    paths = [*ROOT.glob("*.md"), *(ROOT / "docs").glob("*.md"), *(ROOT / "packaging").rglob("*.*")]
    for path in sorted(paths):
        for number, line in enumerate(path.read_text().split("\n"), 1):
            for found in NAMED.findall(line):
                if found != version:
                    yield f"{path.relative_to(ROOT)}:{number}: names version {found}"


def faults_in_recipes(version):
    text = (ROOT / "packaging/conda/meta.yaml").read_text()
    if f'{{% set version = "{version}" %}}' not in text:
        yield f"packaging/conda/meta.yaml: the version is not {version}"


def faults_in_promise(version):
    title = (ROOT / "docs/stability.md").read_text().split("\n", 1)[0]
    major = version.split(".")[0]
    if f"version {major} " not in f"{title} ":
        yield f"docs/stability.md: the title does not name version {major}"


def main():
    if len(sys.argv) < 2 or not FORM.fullmatch(sys.argv[1]):
        sys.exit(__doc__)
    version = sys.argv[1]
    faults = [*faults_in_build(version), *faults_in_changelog(version, "--final" in sys.argv),
              *faults_in_pages(version), *faults_in_names(version), *faults_in_recipes(version),
              *faults_in_promise(version)]
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
