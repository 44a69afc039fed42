#!/usr/bin/env python3
"""Compares the exit statuses that the documents list with runs. For each situation that the manual
page (EXIT STATUS) and docs/options.md list, statuses.txt has commands. They are run, with and
without CRV_STATUS=conventional, and their status and message are compared. Together they print each
fatal message of docs/messages.md, except those of the viewers, which the cases show.

    check_statuses.py CRV ROOT
"""
import os
import pathlib
import re
import resource
import subprocess
import sys
from typing import NamedTuple

import check_man
import example_sandbox

MEMORY_STEP = 64 * 1024
MEMORY_ENOUGH = 64 << 20
MODES = ({}, {"CRV_STATUS": "conventional"})


class Situation(NamedTuple):
    """An entry of statuses.txt."""

    statuses: tuple  # the traditional and the conventional one
    words: str  # of the manual page
    option_words: str  # of docs/options.md, or empty
    commands: list  # pairs of a command and a part of what it prints


def read_situations(path):
    situations = []
    for line in path.read_text().splitlines():
        if line.startswith("    "):
            command, message = line.strip().split(" => ")
            situations[-1].commands.append((command, message))
        elif line and not line.startswith("#"):
            numbers, words = line.split(": ", 1)
            words, _, option_words = words.partition(" | ")
            statuses = tuple(map(int, numbers.split()))
            situations.append(Situation(statuses, words, option_words, []))
    return situations


# Messages that need a failing disk or lack of memory at one point; the unit tests provoke them.
NOT_PROVOKED = re.compile(r"_\d+-f-(calloc|fread)")
FATAL = re.compile(r"^ *(?:%?(?:crv|utl))?_\d+-f-")


def listed_statuses(page):
    """The text that the manual page has under each pair of statuses."""
    text = check_man.section(page, "EXIT STATUS")
    found = re.findall(r"^\.It (\d+) \(conventional (\d+)\)\n(.*?)^\.El$", text, re.S | re.M)
    return {(int(status), int(other)): items_of(items) for status, other, items in found}


def items_of(text):
    items = re.split(r"^\.It\n", text, flags=re.M)[1:]
    return [
        check_man.plain(
            re.sub(r"^\.Fl (?=\w)", "-", " ".join(item.split("\n")).strip()).replace(" .Fl ", " -")
        ).strip()
        for item in items
    ]


def phrases_of_options(text):
    """The phrases of the table of statuses of docs/options.md."""
    rows = re.findall(r"^\| (\d+) \| (\d+) \| (.*) \|$", text, re.M)
    return {(int(status), int(other)): phrases.split("; ") for status, other, phrases in rows}


def faults_of_words(situations, page, options):
    """The documents list the situations that are tried, and no others."""
    statuses = listed_statuses(page)
    for tried in situations:
        if not any(tried.words in item for item in statuses.get(tried.statuses, [])):
            yield f"EXIT STATUS does not have under {tried.statuses}: {tried.words}"
    for status, items in statuses.items():
        for item in items:
            for tried in situations:
                item = item.replace(tried.words, "") if tried.statuses == status else item
            if item.strip(" ,"):
                yield f"EXIT STATUS has under {status}, but no run has shown: {item}"
    shown = {(tried.statuses, tried.option_words) for tried in situations if tried.option_words}
    listed = {
        (status, phrase)
        for status, phrases in phrases_of_options(options).items()
        for phrase in phrases
    }
    for status, words in listed - shown:
        yield f"docs/options.md has for {status}, but no run has shown: {words}"
    for status, words in shown - listed:
        yield f"docs/options.md does not have for {status}: {words}"


def in_both_modes(situations):
    """Each situation with the variables of the environment and the status, in both modes."""
    for situation in situations:
        for variables, status in zip(MODES, situation.statuses, strict=True):
            yield situation, variables, status


def faults_of_runs(crv, situations, messages):
    unseen = set(messages)
    for situation, variables, status in in_both_modes(situations):
        for command, message in situation.commands:
            if command.startswith("memory: "):
                continue
            with example_sandbox.ExampleSandbox(crv) as box:
                box.environment |= variables
                got, printed = box.run("sh", "-c", command)
            if got != status or message not in printed:
                yield (f"{situation.words}: {variables} {command} ends with {got}, not {status}: "
                       f"{printed[-300:]!r}")
            unseen = {text for text in unseen if not is_printed(text, printed)}
    yield from (f"no listed situation ends with the message: {text}" for text in sorted(unseen))


def is_printed(message, printed):
    parts = re.split(r"%[a-z]", message.rstrip())
    return re.search(".*".join(map(re.escape, parts)), printed) is not None


def fatal_messages(text):
    text = re.sub(r"^## Messages of the viewers[^\n]*\n.*?(?=^## )", "", text, flags=re.S | re.M)
    found = [
        message
        for message in re.findall(r"^\| `` (.*?) `` \|", text, re.M)
        if FATAL.match(message) and not NOT_PROVOKED.search(message)
    ]
    if len(found) < 10:
        raise LookupError("docs/messages.md has no fatal messages")
    return found


def is_sanitized(crv):
    return b"__asan_init" in pathlib.Path(crv).read_bytes()


def runs_out(box, command, report):
    """The statuses of runs that end with the report, in more and more memory."""
    statuses = set()
    for limit in range(MEMORY_STEP, MEMORY_ENOUGH, MEMORY_STEP):
        done = subprocess.run(
            command.split(),
            cwd=box.dir,
            env=box.environment,
            text=True,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.PIPE,
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit)),
        )
        last = done.stderr.splitlines()[-1:] or [""]
        if report in last[0] and "Cannot allocate memory" in last[0]:
            statuses.add(done.returncode)
        elif done.returncode >= 0 and not done.stderr:
            break
    return statuses


def faults_of_memory(crv, situations):
    for situation, variables, status in in_both_modes(situations):
        for command, report in situation.commands:
            if not command.startswith("memory: "):
                continue
            with example_sandbox.ExampleSandbox(crv) as box:
                box.environment |= variables
                for number in range(2000):  # a list to pick from that needs memory
                    box.write(f"{number}{'x' * 100}.req", "")
                statuses = runs_out(box, command.removeprefix("memory: "), report)
            if statuses != {status}:
                yield f"{situation.words}: {command} ends with {statuses}, not {status}"


def main():
    crv, root = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2]).resolve()
    page, options = (root / "man/crv.1").read_text(), (root / "docs/options.md").read_text()
    messages = fatal_messages((root / "docs/messages.md").read_text())
    situations = read_situations(root / "tests/docs/statuses.txt")
    faults = [
        *faults_of_words(situations, page, options),
        *faults_of_runs(crv, situations, messages),
    ]
    if not is_sanitized(crv):
        faults += faults_of_memory(crv, situations)
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
