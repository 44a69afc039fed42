#!/usr/bin/env python3
"""Lines of code, comments, scripts and documents have at most 100 characters.

Exempt: tables, URLs, blocks of code in documents, and a line that is one string literal.
"""
import re

import source_files

LIMIT = 100
LITERAL = re.compile(r'\s*[fRrb]*(["\'])(?:\\.|(?!\1)[^\\])*\1[\s,;)\]}\\]*')
BLOCK = re.compile(r"^```.*?^```$", re.S | re.M)


def is_exempt(name, line):
    if "://" in line:
        return True
    if name.endswith(".md"):
        return line.startswith("|") or line.startswith("    ")
    return bool(LITERAL.fullmatch(line))


def faults_of(name):
    text = (source_files.ROOT / name).read_text()
    if name.endswith(".md"):
        text = BLOCK.sub(lambda match: "\n" * match.group().count("\n"), text)
    for number, line in enumerate(text.split("\n"), 1):
        if len(line) > LIMIT and not is_exempt(name, line):
            yield f"{name}:{number}: {len(line)} characters"


def main():
    names = source_files.files(*source_files.TEXT)
    faults = [fault for name in names for fault in faults_of(name)]
    source_files.finish(faults if names else ["no files"])


main()
