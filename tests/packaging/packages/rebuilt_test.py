#!/usr/bin/env python3
"""Packages built from the unpacked source archive, elsewhere, from files of another day and with
another umask, time zone and locale, have the same bytes."""
import hashlib
import os
import tarfile

from shared import PACKAGES, archive, main, require_to_build

ANOTHER_DAY = 1_000_000_000


def sums(directory):
    return {path.name: hashlib.sha256(path.read_bytes()).hexdigest()
            for path in sorted(directory.iterdir())}


def test_second_build_gives_same_bytes(box):
    with tarfile.open(archive()) as packed:
        times = {member.mtime for member in packed}
    box.expect("times of the files of an archive", len(times), 1)
    source = box.unpack_source().rename(box.base / "another directory")
    for path in source.rglob("*"):
        os.utime(path, (ANOTHER_DAY, ANOTHER_DAY), follow_symlinks=False)
    os.umask(0o077)
    box.environment = {name: value for name, value in os.environ.items()
                       if name != "SOURCE_DATE_EPOCH"}
    box.run_command("bash", source / "scripts/package.sh", box.base / "made",
                    TZ="Asia/Tokyo", LC_ALL="C.UTF-8")
    box.assertEqual(sums(box.base / "made"), sums(PACKAGES))


require_to_build()
main()
