#!/usr/bin/env python3
"""scripts/release.sh from beginning to end in a checkout: the checks, the tests, the packages in
dist/ with the bytes of scripts/package.sh, and the steps. Instead of all tests, which take most of
an hour, the checkout runs the static checks; otherwise it is the source of the packages."""
import os

from shared import PACKAGES, VERSION, commit, main, make_checkout, require_to_build

CHECKS = """#!/bin/sh
echo "CI is $CI"
exec scripts/lint.sh
"""


def contents(directory, names):
    return {name: (directory / name).read_bytes() for name in names}


def test_release_is_made(box):
    box.environment = {name: value for name, value in os.environ.items()
                       if name != "SOURCE_DATE_EPOCH"}
    source = make_checkout(box)
    (source / ".ci/run").write_text(CHECKS)
    commit(box, source)
    found = box.run_program("bash", source / "scripts/release.sh", VERSION, cwd=source,
                            timeout=1500)
    box.assertEqual(found.status, 0, found.stdout + found.stderr)
    lines = found.stdout.splitlines()
    box.expect("first line", lines[0], "CI is true")
    box.expect("steps", f"The packages of {VERSION} are in dist. The steps that remain:" in lines,
               True)
    made = sorted(path.name for path in PACKAGES.iterdir())
    box.expect("files", sorted(path.name for path in (source / "dist").iterdir()), made)
    # The source archive, and what tells its sum, have the other .ci/run.
    same = [name for name in made
            if name not in (f"crv-{VERSION}.tar.gz", f"crv-{VERSION}.spdx.json", "SHA256SUMS")]
    box.expect("compared packages", len(same), 7)
    box.assertTrue(contents(source / "dist", same) == contents(PACKAGES, same), "other bytes")


require_to_build()
main("git")
