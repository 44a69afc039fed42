#!/usr/bin/env python3
"""Compares the manual page with runs of the program: items, directives, limits, examples, and the
lines for scripts, which must distinguish success from failure. mandoc must not report anything.
scripts/generate_options.py compares the options, check_statuses.py the exit statuses.

    check_man.py CRV ROOT
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys

import check_commands
import reader_facts
from example_sandbox import ExampleSandbox, sandbox


def plain(text):
    """The text of the page without its escapes."""
    for escape, character in (
        (r"\-", "-"),
        (r"\(aq", "'"),
        (r"\(dq", '"'),
        (r"\(ha", "^"),
        (r"\&", ""),
        (r"\e", "\\"),
    ):
        text = text.replace(escape, character)
    return text


def section(page, title):
    """Returns the text between this heading and the next."""
    found = re.search(rf"^\.S[hs] {re.escape(title)}\n(.*?)(?=^\.S[hs] |\Z)", page, re.S | re.M)
    return found.group(1) if found else ""


def rows(text):
    """The rows of a table, without its heading."""
    cells = [plain(line).split(" Ta") for line in re.findall(r"^\.It (.* Ta.*)$", text, re.M)]
    return [[cell.strip() for cell in row] for row in cells if not row[0].startswith("Em")]


def faults_of_request_items(page, box):
    title = "Request files (.req)"
    table = rows(section(page, title))
    items = reader_facts.request_items(box)
    values = reader_facts.expected_request_values()
    for number, (row, (label, value)) in enumerate(zip(table, items)):
        if row[0] != (str(number) if number < 9 else "other") or row[2] != label:
            yield f"request files: item {number} has the label {label}, not as in {row}"
        if abs(values.get(row[1], -999.999) - value) > 1e-6:
            yield f"request files: item {number} has the value {value}, not as in {row}"
    if len(table) != len(items) or table[-1][1] != "-999.999":
        yield f"request files: the items are {items}"
    *types, other, another = reader_facts.request_types(box)[:8]
    known = " , ".join(f'"{number} {label}"' for number, label in enumerate(types))
    if (
        known not in section(page, title)
        or other != another
        or f".Li {other}\n" not in section(page, title)
    ):
        yield f"request files: the types are {known}, others {other}"


def faults_of_madymo_items(page, box):
    items = reader_facts.madymo_items(box)
    last, most = sum(not label.endswith("??") for label, _ in items) - 1, len(items) - 1
    wanted = [
        ["0", "the time", "T"],
        [f"1 to {last}", "number of that place", "its number"],
        [f"{last + 1} to {most}", "number of that place", "??"],
        [f"above {most}", "ends the run", ""],
    ]
    if rows(section(page, "Madymo files (.mad)")) != wanted:
        yield f"Madymo files: the items are not {wanted}"
    labels = ["T", *(str(item) for item in range(1, last + 1)), *(["??"] * (most - last))]
    for number, ((label, value), wanted_label) in enumerate(zip(items, labels)):
        if label.split()[-1] != wanted_label or value != (10 * number if number else 0.5):
            yield f"Madymo files: item {number} is {value} and has the label {label}"


def faults_of_directives(page, box):
    wanted, digits = reader_facts.frame_directives(box)
    wanted.add(f"YA{digits[0]} to YA{digits[-1]}")
    named = {row[0].replace("%", "") for row in rows(section(page, "Frame files (.vdr)"))}
    if named != wanted:
        yield f"frame files: the directives are {sorted(named)}, not {sorted(wanted)}"


def faults_of_limits(page, box):
    for title, lines in reader_facts.LONG_LINES.items():
        limits = [int(number) for number in re.findall(r"\b\d{3,4}\b", section(page, title))]
        found = [reader_facts.longest_line(box, *line, limits) for line in lines]
        if None in found or len(set(found)) != len(lines):
            yield f"{title}: lines of {limits} characters are not the longest"
    columns, curves = reader_facts.max_columns(box), reader_facts.max_curves(box)
    if f"A run holds {columns} columns, a chart {curves} curves." not in page:
        yield f"CAVEATS: {columns} columns, {curves} curves"


def faults_of_time_window(page, box):
    """Times are even numbers: a window of their bounds and one within them differ."""
    low, high = re.search(
        r"window for the files that follow, (\S+) to (\S+) by default", plain(page)
    ).groups()
    if reader_facts.read_times(box) != reader_facts.read_times(box, "-tm", f"{low}:{high}"):
        yield f"-tm: {low} to {high} is not the default"
    times = reader_facts.read_times(box)
    if [times[0], times[-1]] != [float(low), float(high)]:
        yield f"-tm: times from {times[0]} to {times[-1]} are read, not {low} to {high}"
    row = reader_facts.last_row(box)
    if f"rows after number {row} are skipped" not in page:
        yield f"-tm: row {row} of a column file is the last that is read"


def blocks(page):
    return [
        plain(block) for block in re.findall(r"^\.Bd -literal.*?\n(.*?)^\.Ed$", page, re.S | re.M)
    ]


def stripped(text):
    return [line.rstrip() for line in text.splitlines()]


def faults_of_examples(page, crv):
    examples = [block for block in blocks(section(page, "EXAMPLES")) if block.startswith("$ ")]
    with ExampleSandbox(crv) as box:
        for block in examples:
            came = check_commands.replay(block, box)
            if stripped(came) != stripped(block):
                yield f"the page shows\n{block}and this comes out\n{came}"
    if len(examples) < 5:
        yield f"only {len(examples)} examples were found"


def faults_of_makefile(page, crv):
    """make makes a target if the program succeeds; otherwise it fails and leaves no target."""
    with ExampleSandbox(crv) as box:
        box.dir.joinpath("Makefile").write_text(next(b for b in blocks(page) if "%.ps: %.req" in b))
        box.dir.joinpath("other.req").write_text(
            "a file\nwithout the request\n1\n7 1 0 0 0\n0\n0 0 0 0 0 0\n"
        )
        for target, made in (
            ("run1.ps", True),
            ("run1.dat", True),
            ("other.ps", False),
            ("other.dat", False),
        ):
            status, printed = box.run("make", target)
            if (status == 0) != made or box.dir.joinpath(target).exists() != made:
                yield f"make {target} ends with {status}: {printed}"


def faults_of_script(page, crv):
    script = next(b for b in blocks(page) if b.startswith("set -e"))
    with ExampleSandbox(crv) as box:
        if box.run("sh", "-c", script) != (0, "hardest at 0.580000 s\n"):
            yield f"the script does not do its work: {box.run('sh', '-c', script)}"
        without_value = script.replace("0,40:3=max", "0,40:3=99")
        if box.run("sh", "-c", without_value) != (3, ""):
            yield f"the script misses that there is no value: {box.run('sh', '-c', without_value)}"
        piped = "set -o pipefail; crv -r 0,38:3 -f run1.req -p | grep -q '^ %crv_05-i-fini,'"
        if box.run("bash", "-c", piped)[0] == 0:
            yield "pipefail takes a finished chart for a success"
        if box.run("bash", "-c", f"export CRV_STATUS=conventional; {piped}")[0] != 0:
            yield "pipefail takes a finished chart for a failure with conventional statuses"
        box.dir.joinpath("run1.req").unlink()
        if box.run("sh", "-c", script)[0] == 0:
            yield "the script goes on without its file"


def faults_of_page(path, page):
    """Reports of mandoc, lines wider than a screen, and literal text that is shown differently."""
    lint = subprocess.run(
        ["mandoc", "-T", "lint", "-W", "warning", path], capture_output=True, text=True
    )
    yield from (lint.stdout + lint.stderr).splitlines()
    shown = subprocess.run(
        ["mandoc", "-T", "utf8", "-O", "width=80", path], capture_output=True, text=True
    ).stdout
    shown = re.sub(".\b", "", shown)
    yield from (
        f"wider than 80 columns: {line}"
        for line in shown.splitlines()
        if len(line.expandtabs()) > 80
    )
    lines = {line.strip() for line in shown.expandtabs().splitlines()}
    for block in blocks(page):
        yield from (
            f"shown otherwise: {line}" for line in block.splitlines() if line.strip() not in lines
        )


def main():
    crv, root = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2]).resolve()
    path = root / "man/crv.1"
    page = path.read_text()
    faults = [
        *faults_of_examples(page, crv),
        *faults_of_makefile(page, crv),
        *faults_of_script(page, crv),
    ]
    with ExampleSandbox(crv) as box:
        for faults_of_facts in (
            faults_of_request_items,
            faults_of_madymo_items,
            faults_of_directives,
            faults_of_limits,
            faults_of_time_window,
        ):
            faults += faults_of_facts(page, box)
    linted = shutil.which("mandoc") is not None
    if linted:
        faults += faults_of_page(path, page)
    print(*faults, sep="\n")
    if faults:
        sys.exit(1)
    if not linted:
        print("skipped: mandoc is not installed, so how the page is shown was not looked at")
        sys.exit(sandbox.SKIPPED)


if __name__ == "__main__":
    main()
