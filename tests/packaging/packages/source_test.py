#!/usr/bin/env python3
"""The unpacked source archive passes scripts/test.sh, without git on the path."""
import os

from shared import main


def test_source_archive_passes_tests(box):
    source = box.unpack_source()
    box.environment = {name: value for name, value in os.environ.items()
                       if name not in ("CI", "SOURCE_DATE_EPOCH")}
    printed = box.run_command("bash", source / "scripts/test.sh", cwd=source, timeout=3000,
                              PATH=box.path_without("git"))
    box.assertRegex(printed.splitlines()[-1], r"\A\d{2,} passed, 0 failed, \d+ skipped\Z")


main()
