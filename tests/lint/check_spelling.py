#!/usr/bin/env python3
"""codespell finds no misspelling in code, documents and manual pages, except two in messages that
must not change."""
import source_files

IN_MESSAGES = ("incorectly", "reqest")
# Of variables, a macro of the manual pages, and a filter of PNG.
NAMES = ("nin", "als", "nd", "paeth")

source_files.require("codespell", "check")
source_files.run_over(
    source_files.files(*source_files.TEXT, "man/*"),
    "codespell", "--ignore-words-list", ",".join(IN_MESSAGES + NAMES))
