#!/usr/bin/env python3
"""C++ is formatted as .clang-format says."""
import source_files

source_files.require("clang-format", "ci")
source_files.run_over(source_files.files(*source_files.CODE),
                      "clang-format", "--dry-run", "-Werror")
