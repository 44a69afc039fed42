#!/usr/bin/env python3
"""Runs the commands that the documents show and compares what they print.

A block marked "console" holds commands after "$ " and what each prints, standard output and standard error together.
All blocks of a document run one after the other in a folder with the examples; "lpr" does nothing. Commands of crv that
stand indented, without what they print, must do their work: no message of theirs may tell of an error.

    check_commands.py CRV ROOT            compares
    check_commands.py CRV ROOT --write    writes what comes out into the documents: read the diff before you keep it
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"^```console\n(.*?)^```$", re.S | re.M)


def run(command, folder, tools):
    environment = {"PATH": f"{tools}:/usr/bin:/bin", "TZ": "UTC0"}
    done = subprocess.run(["sh", "-c", command], cwd=folder, env=environment, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60)
    return done.stdout.decode()


def replay(block, folder, tools):
    commands = re.findall(r"^\$ (.*(?:\\\n.*)*)$", block, re.M)
    return "".join(f"$ {command}\n{run(command, folder, tools)}" for command in commands)


def faults_of_indented(doc, folder, tools):
    for command in re.findall(r"^    (crv .*?) *(?:#.*)?$", doc.read_text(), re.M):
        printed = run(command, folder, tools)
        if not printed or re.search(r"_\d+-[ef]-", printed):
            yield f"{doc.name}: {command!r} does not do its work: {printed!r}"


def check(doc, crv, root, write):
    text = doc.read_text()
    with tempfile.TemporaryDirectory() as scratch:
        folder, tools = pathlib.Path(scratch, "run"), pathlib.Path(scratch, "bin")
        shutil.copytree(root / "examples", folder)
        tools.mkdir()
        (tools / "crv").symlink_to(crv)
        (tools / "lpr").write_text("#!/bin/sh\n")
        (tools / "lpr").chmod(0o755)
        wrong = list(faults_of_indented(doc, folder, tools))
        came = BLOCK.sub(lambda m: f"```console\n{replay(m.group(1), folder, tools)}```", text)
    if came == text:
        return len(BLOCK.findall(text)), wrong
    if write:
        doc.write_text(came)
        return 0, []
    wanted, got = text.splitlines(), came.splitlines()
    first = next((k for k, pair in enumerate(zip(wanted, got)) if pair[0] != pair[1]), min(len(wanted), len(got)))
    return 0, [f"{doc.name}:{first + 1}: what is shown is not what comes out: {got[first:first + 3]}"]


def main():
    crv, root = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2]).resolve()
    blocks, faults = 0, []
    for doc in [root / "README.md", *sorted((root / "docs").glob("*.md"))]:
        found, wrong = check(doc, crv, root, "--write" in sys.argv)
        blocks += found
        faults += wrong
    print(*faults, sep="\n")
    sys.exit(1 if faults or (blocks == 0 and "--write" not in sys.argv) else 0)


if __name__ == "__main__":
    main()
