#!/usr/bin/env python3
"""Runs the commands that the documents show and compares what they print.

A block marked "console" contains commands after "$ " and what each prints, standard output and
standard error together. All blocks of a document run in order in a directory with the examples;
"lpr" does nothing. Indented commands of crv and its companions are shown without output. They must
succeed: none of their messages may report an error.

    check_commands.py CRV ROOT            compares
    check_commands.py CRV ROOT --write    writes the output into the documents: read the diff
"""
import os
import pathlib
import re
import sys

from example_sandbox import COMPANIONS, ExampleSandbox, sandbox

BLOCK = re.compile(r"^```console\n(.*?)^```$", re.S | re.M)
INDENTED = re.compile(r"^    ((?:\w+=\S+ )?crv\w* .*?) *(?:#.*)?$", re.M)
FENCED = re.compile(r"^```.*?^```$", re.S | re.M)


def replay(block, box):
    commands = re.findall(r"^\$ (.*(?:\\\n.*)*)$", block, re.M)
    return "".join(f"$ {command}\n{box.run('sh', '-c', command)[1]}" for command in commands)


def does_its_work(command, box):
    """A companion is silent and ends with 0; crv prints messages, none of an error."""
    status, printed = box.run("sh", "-c", command)
    if command.startswith(COMPANIONS):
        return status == 0 and not printed, printed
    return bool(printed) and not re.search(r"_\d+-[ef]-|^crv2|not found", printed, re.M), printed


def faults_of_indented(doc, box):
    for command in INDENTED.findall(FENCED.sub("", doc.read_text())):
        good, printed = does_its_work(command, box)
        if not good:
            yield f"{doc.name}: {command!r} does not do its work: {printed!r}"


def check(doc, crv, write):
    text = doc.read_text()
    with ExampleSandbox(crv) as box:
        wrong = list(faults_of_indented(doc, box))
        came = BLOCK.sub(lambda match: f"```console\n{replay(match.group(1), box)}```", text)
    if came == text:
        return len(BLOCK.findall(text)), wrong
    if write:
        doc.write_text(came)
        return 0, []
    expected, got = text.splitlines(), came.splitlines()
    first = next((k for k, pair in enumerate(zip(expected, got)) if pair[0] != pair[1]),
                 min(len(expected), len(got)))
    return 0, [f"{doc.name}:{first + 1}: the shown output is not the real one: "
               f"{got[first:first + 3]}"]


def main():
    crv, root = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2]).resolve()
    blocks, faults = 0, []
    for doc in [root / "README.md", *sorted((root / "docs").glob("*.md"))]:
        found, wrong = check(doc, crv, "--write" in sys.argv)
        blocks += found
        faults += wrong
    if blocks == 0 and "--write" not in sys.argv:
        faults.append("no blocks were found")
    sandbox.report(faults)


if __name__ == "__main__":
    main()
