#!/usr/bin/env python3
"""codespell finds no misspelling in code, documents and manual pages. Two stand in messages, which are fixed."""
import source_files

IN_MESSAGES = ("incorectly", "reqest")
NAMES = ("nin", "als", "nd", "paeth")  # of variables, a macro of the manual pages and a PNG filter

source_files.require("codespell", "check")
source_files.run_over(
    source_files.files(*source_files.CODE, *source_files.PYTHON, *source_files.SHELL, *source_files.CMAKE,
                       *source_files.PROSE, "man/*"),
    "codespell", "--ignore-words-list", ",".join(IN_MESSAGES + NAMES))
