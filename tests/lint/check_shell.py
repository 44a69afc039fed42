#!/usr/bin/env python3
"""shellcheck has nothing to say about the shell scripts."""
import source_files

source_files.require("shellcheck", "check")
source_files.run_over(source_files.files(*source_files.SHELL), "shellcheck", "-x")
