#!/usr/bin/env python3
"""The manual page says what the sources do: options, statuses, items, directives and limits are those of the program, its
examples print what it shows, its lines for scripts tell success from failure, and mandoc has nothing to complain of.

    check_man.py CRV ROOT
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import check_commands
import program_facts

SKIPPED = 77

# The words of the page for each end of a run that the sources hold.
ENDS = {
    ("app/file_options.cpp", "status_no_request_file"): "a request file that cannot be read",
    ("app/file_options.cpp", "status_refused"): "a file option before any",
    ("app/file_options.cpp", "status_columnized"): "tables written",
    ("app/file_options.cpp", "status_reported"): "a conditional value",
    ("app/main.cpp", "0"): "memory that runs out",
    ("app/main.cpp", "return 0"): "a plain end",
    ("app/run.h", "0"): "memory that runs out",
    ("app/setup.cpp", "status_text_printed"): "a text, such as the help",
    ("app/setup.cpp", "status_spared"): "would be written over a file that was read",
    ("app/setup.cpp", "status_chart_done"): "a finished chart",
    ("app/setup.cpp", "0"): "less than two series",
    ("postscript/appended.cpp", "0"): "a pasted file that cannot be read",
    ("postscript/preamble.cpp", "0"): "a chart that cannot be written",
    ("readers/column_file.cpp", "status_failed"): "a column file, ",
    ("readers/frame_file.cpp", "status_failed"): "a frame file that cannot be read",
    ("readers/madymo_file.cpp", "status_failed"): "a Madymo file or",
    ("readers/request_file.cpp", "1"): "a series of a request file without a point",
    ("stats/dat_file.cpp", "status_failed"): "a table that cannot be written",
    ("util/file_pickers.cpp", "status_no_memory"): "memory that runs out",
    ("util/file_pickers.cpp", "status_failed"): "a wrong answer where one file is picked",
}
ORDINALS = ["first", "first", "second", "third", "fourth", "fifth", "sixth"]


def plain(text):
    """The text of the page without its escapes."""
    for escape, character in ((r"\-", "-"), (r"\(aq", "'"), (r"\(dq", '"'), (r"\(ha", "^"), (r"\&", ""), (r"\e", "\\")):
        text = text.replace(escape, character)
    return text


def section(page, title):
    """What stands under the heading, up to the next one."""
    found = re.search(rf"^\.S[hs] {re.escape(title)}\n(.*?)(?=^\.S[hs] |\Z)", page, re.S | re.M)
    return found.group(1) if found else ""


def rows(text):
    """The rows of a table, without its heading."""
    cells = [plain(line).split(" Ta") for line in re.findall(r"^\.It (.* Ta.*)$", text, re.M)]
    return [[cell.strip() for cell in row] for row in cells if not row[0].startswith("Em")]


def options_of_page(page):
    forms = set()
    for line in re.findall(r"^\.It (.*Fl .*)$", page, re.M):
        forms |= {f"-{plain(name)}{'N' if number else ''}" for name, number in re.findall(r"Fl (\S+)( Ns Ar N)?", line)}
    return forms


def options_of_document(text):
    cells = [line.split("|")[1] for line in text.splitlines() if line.startswith("| `-")]
    return {form for cell in cells for form in re.findall(r"`(-[\w?]+)`", cell)}


def faults_of_options(page, root):
    forms = program_facts.option_forms(root)
    for name, named in (("the manual page", options_of_page(page)),
                        ("docs/options.md", options_of_document((root / "docs/options.md").read_text()))):
        yield from (f"{name} does not have {form}" for form in sorted(forms - named))
        yield from (f"{name} has {form}, which the scan does not know" for form in sorted(named - forms))


def faults_of_statuses(page, root):
    told = dict(re.findall(r"^\.It (\d+)\n(.*?)^\.El$", section(page, "EXIT STATUS"), re.S | re.M))
    told = {int(status): " ".join(text.split()) for status, text in told.items()}
    ends = program_facts.ends(root)
    for file, given, status in ends:
        words = ENDS.get((file, given))
        if words is None:
            yield f"{file} ends a run with {given}: say so in EXIT STATUS, and its words here"
        elif words not in told.get(status, ""):
            yield f"EXIT STATUS does not have under {status}: {words}"
    if set(told) != {status for _, _, status in ends}:
        yield f"EXIT STATUS has {sorted(told)}, the program ends with {sorted({end[2] for end in ends})}"
    yield from (f"no end of a run in {file} with {given}" for file, given in ENDS
                if (file, given) not in {end[:2] for end in ends})


def faults_of_request_items(page, root):
    source = (root / "src/readers/request_file.cpp").read_text()
    labels = [label.strip() for label in program_facts.texts(source, "item_labels")]
    table = rows(section(page, "Request files (.req)"))
    if [row[0] for row in table] != [*map(str, range(len(labels))), "other"]:
        yield f"request files: the items are {[row[0] for row in table]}"
    if [row[2] for row in table] != [*labels, "??"]:
        yield f"request files: the labels are {[row[2] for row in table]}, not {labels}"
    for item, word in enumerate(ORDINALS):
        if word not in table[item][1]:
            yield f"request files: item {item} is the {word} number"
    if table[-1][1] != re.search(r"unknown_item = (\S+);", source).group(1):
        yield f"request files: other items give {table[-1][1]}"
    types = " , ".join(f'"{k} {label.strip()}"' for k, label in enumerate(program_facts.texts(source, "type_labels")))
    if types not in section(page, "Request files (.req)"):
        yield f"request files: the types are not {types}"


def faults_of_madymo_items(page, root):
    source = (root / "src/readers/madymo_file.cpp").read_text()
    labels = [label.strip() for label in program_facts.texts(source, "item_labels")]
    last, most = len(labels) - 1, program_facts.number(source, "most_numbers")
    wanted = [["0", "the time", labels[0]], [f"1 to {last}", "number of that place", "its number"],
              [f"{last + 1} to {most}", "number of that place", "??"], [f"above {most}", "ends the run", ""]]
    if rows(section(page, "Madymo files (.mad)")) != wanted:
        yield f"Madymo files: the items are {rows(section(page, 'Madymo files (.mad)'))}, not {wanted}"
    if labels[1:] != [str(item) for item in range(1, last + 1)]:
        yield "Madymo files: the labels of the items are not their numbers"


def faults_of_directives(page, root):
    source = (root / "src/readers/frame_file.cpp").read_text()
    wanted = set(program_facts.cases(source, "read_directives")) - {"X", "Y"}
    wanted |= {f"X{letter}" for letter in program_facts.cases(source, "read_x_directive")}
    wanted |= {f"Y{letter}" for letter in program_facts.cases(source, "read_y_directive")}
    first, last = re.search(r"number >= '(\d)' && number <= '(\d)'", source).groups()
    named = {row[0].replace("%", "") for row in rows(section(page, "Frame files (.vdr)"))}
    if named != wanted | {f"YA{first} to YA{last}"}:
        yield f"frame files: the directives are {sorted(named)}, not {sorted(wanted)}"


def faults_of_limits(page, root):
    readers = root / "src/readers"
    for title, file, name in (("Request files (.req)", "request_file.cpp", "line_limit"),
                              ("Madymo files (.mad)", "madymo_file.cpp", "title_limit"),
                              ("Madymo files (.mad)", "madymo_file.cpp", "line_limit"),
                              ("Column files (.pos)", "column_file.cpp", "line_limit"),
                              ("Frame files (.vdr)", "frame_file.cpp", "line_limit")):
        limit = program_facts.number((readers / file).read_text(), name) - 1
        if not re.search(rf"\b{limit}\b", section(page, title)):
            yield f"{title}: {name} is {limit} characters"
    columns = program_facts.number((root / "src/records/column.h").read_text(), "CRV_MAXCOLS")
    curves = program_facts.number((root / "src/records/chart.h").read_text(), "crv_curve_slots")
    window = re.findall(r"time_window\[\d\] = (-?\d+)\.0;", (root / "src/app/setup.cpp").read_text())
    if f"{window[0]} to {window[1]} unless given" not in plain(page) or f"behind number {window[1]}" not in page:
        yield f"-tm: the window is {window} unless given"
    if f"A run holds {columns} columns, a chart {curves} curves." not in page:
        yield f"CAVEATS: {columns} columns, {curves} curves"


def blocks(page):
    return [plain(block) for block in re.findall(r"^\.Bd -literal.*?\n(.*?)^\.Ed$", page, re.S | re.M)]


def stripped(text):
    return [line.rstrip() for line in text.splitlines()]


class workshop:
    """A folder with the example files, the program on its path and a printer that does nothing."""

    def __init__(self, scratch, crv, root):
        self.folder, self.tools = pathlib.Path(scratch, "run"), pathlib.Path(scratch, "bin")
        shutil.copytree(root / "examples", self.folder)
        self.tools.mkdir()
        (self.tools / "crv").symlink_to(crv)
        (self.tools / "lpr").write_text("#!/bin/sh\n")
        (self.tools / "lpr").chmod(0o755)

    def run(self, *command):
        environment = {"PATH": f"{self.tools}:/usr/bin:/bin", "TZ": "UTC0"}
        done = subprocess.run(command, cwd=self.folder, env=environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60)
        return done.returncode, done.stdout.decode()


def faults_of_examples(page, crv, root):
    examples = [block for block in blocks(section(page, "EXAMPLES")) if block.startswith("$ ")]
    with tempfile.TemporaryDirectory() as scratch:
        shop = workshop(scratch, crv, root)
        for block in examples:
            came = check_commands.replay(block, shop.folder, shop.tools)
            if stripped(came) != stripped(block):
                yield f"the page shows\n{block}and this comes out\n{came}"
    if len(examples) < 5:
        yield f"only {len(examples)} examples were found"


def faults_of_makefile(page, crv, root):
    """A target is made when the program did its work, and make fails and leaves no target when it did not."""
    with tempfile.TemporaryDirectory() as scratch:
        shop = workshop(scratch, crv, root)
        shop.folder.joinpath("Makefile").write_text(next(b for b in blocks(page) if "%.ps: %.req" in b))
        shop.folder.joinpath("other.req").write_text("a file\nwithout the request\n1\n7 1 0 0 0\n0\n0 0 0 0 0 0\n")
        for target, made in (("run1.ps", True), ("run1.dat", True), ("other.ps", False), ("other.dat", False)):
            status, printed = shop.run("make", target)
            if (status == 0) != made or shop.folder.joinpath(target).exists() != made:
                yield f"make {target} ends with {status}: {printed}"


def faults_of_script(page, crv, root):
    script = next(b for b in blocks(page) if b.startswith("set -e"))
    with tempfile.TemporaryDirectory() as scratch:
        shop = workshop(scratch, crv, root)
        if shop.run("sh", "-c", script) != (0, "hardest at 0.580000 s\n"):
            yield f"the script does not do its work: {shop.run('sh', '-c', script)}"
        without_value = script.replace("0,40:3=max", "0,40:3=99")
        if shop.run("sh", "-c", without_value) != (2, "no value\n"):
            yield f"the script misses that there is no value: {shop.run('sh', '-c', without_value)}"
        piped = "set -o pipefail; export CRV_PRINTCHAIN=:; %s | grep -q '^ %%crv_05-i-fini,'"
        command = "crv -r 0,38:3 -f run1.req -p"
        if shop.run("bash", "-c", piped % command)[0] == 0:
            yield "pipefail takes a finished chart for a success"
        if shop.run("bash", "-c", piped % f"{{ {command} || true; }}")[0] != 0:
            yield "with pipefail the braces do not help"
        shop.folder.joinpath("run1.req").unlink()
        if shop.run("sh", "-c", script)[0] == 0:
            yield "the script goes on without its file"


def faults_of_page(path, page):
    """What mandoc complains of, what is wider than a screen, and text for copying that a reader sees otherwise."""
    lint = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", path], capture_output=True, text=True)
    yield from (lint.stdout + lint.stderr).splitlines()
    shown = subprocess.run(["mandoc", "-T", "utf8", "-O", "width=80", path], capture_output=True, text=True).stdout
    shown = re.sub(".\b", "", shown)
    yield from (f"wider than 80 columns: {line}" for line in shown.splitlines() if len(line.expandtabs()) > 80)
    lines = {line.strip() for line in shown.expandtabs().splitlines()}
    for block in blocks(page):
        yield from (f"shown otherwise: {line}" for line in block.splitlines() if line.strip() not in lines)


def main():
    crv, root = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2]).resolve()
    path = root / "man/crv.1"
    page = path.read_text()
    faults = [*faults_of_options(page, root), *faults_of_statuses(page, root), *faults_of_request_items(page, root),
              *faults_of_madymo_items(page, root), *faults_of_directives(page, root), *faults_of_limits(page, root),
              *faults_of_examples(page, crv, root), *faults_of_makefile(page, crv, root),
              *faults_of_script(page, crv, root)]
    linted = shutil.which("mandoc") is not None
    if linted:
        faults += faults_of_page(path, page)
    print(*faults, sep="\n")
    if faults:
        sys.exit(1)
    if not linted:
        print("skipped: mandoc is not installed, so how the page is shown was not looked at")
        sys.exit(SKIPPED)


if __name__ == "__main__":
    main()
