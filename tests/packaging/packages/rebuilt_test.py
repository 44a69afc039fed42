#!/usr/bin/env python3
"""Packages of a copy of the source, built elsewhere with another umask, time zone and locale,
have the same bytes."""
import hashlib
import os
import tarfile

from shared import PACKAGES, main, package, require_to_build


def sums(directory):
    return {path.name: hashlib.sha256(path.read_bytes()).hexdigest()
            for path in sorted(directory.iterdir())}


def test_second_build_gives_same_bytes(box):
    with tarfile.open(package(".tar.gz")) as archive:
        times = {member.mtime for member in archive}
    box.expect("times of the files of an archive", len(times), 1)
    copy = box.copy_source("another directory")
    os.umask(0o077)
    box.environment = {name: value for name, value in os.environ.items()
                       if name != "SOURCE_DATE_EPOCH"}
    box.run_command("bash", copy / "scripts/package.sh", box.base / "made",
                    TZ="Asia/Tokyo", LC_ALL="C.UTF-8")
    box.assertEqual(sums(box.base / "made"), sums(PACKAGES))


require_to_build()
main()
