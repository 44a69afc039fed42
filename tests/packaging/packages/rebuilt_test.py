#!/usr/bin/env python3
"""Packages built from the unpacked source archive, elsewhere, in another year, from files of
another day and with another umask, time zone and locale, have the same bytes."""
import hashlib
import os
import tarfile

from shared import PACKAGES, archive, main, require_to_build

ANOTHER_DAY = 1_000_000_000
AHEAD = 400  # days, which end in another year
# Moves the clock of every program that the command starts and that is not linked statically. Times
# of files stay those of the kernel: some programs ask for them in a way that faketime does not see.
IN_ANOTHER_YEAR = ("env", "NO_FAKE_STAT=1", "faketime", "-m", "--exclude-monotonic", "-f",
                   f"+{AHEAD}d")


def sums(directory):
    return {path.name: hashlib.sha256(path.read_bytes()).hexdigest()
            for path in sorted(directory.iterdir())}


def expect_moved_clock(box):
    """The clock is moved for what a shell starts too."""
    now = int(box.run_command("date", "+%s"))
    moved = int(box.run_command(*IN_ANOTHER_YEAR, "bash", "-c", "date +%s; true"))
    box.expect("days ahead", (moved - now + 3600) // 86400, AHEAD)


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
    expect_moved_clock(box)
    box.run_command(*IN_ANOTHER_YEAR, "bash", source / "scripts/package.sh", box.base / "made",
                    TZ="Asia/Tokyo", LC_ALL="C.UTF-8")
    box.assertEqual(sums(box.base / "made"), sums(PACKAGES))


require_to_build()
main("faketime")
