#!/usr/bin/env python3
# packaging/packages/rebuilt_test - packages do not tell where, when, by whom and in which language they were made: a copy of the source
# in another folder, built under another umask and time zone, gives the same bytes.
import hashlib
import os
import pathlib
import tarfile
import tempfile

from shared import copy_source, expect, faults, finish, given, need_to_build, package, run


def sums(folder):
    return {path.name: hashlib.sha256(path.read_bytes()).hexdigest() for path in sorted(folder.iterdir())}


def main():
    need_to_build()
    packages, _ = given()
    with tarfile.open(package(packages, ".tar.gz")) as archive:
        times = {member.mtime for member in archive}
    expect("all files of an archive have one time", len(times), 1)
    with tempfile.TemporaryDirectory() as scratch:
        copy, made = pathlib.Path(scratch, "another folder"), pathlib.Path(scratch, "made")
        copy_source(copy)
        os.umask(0o077)
        run("bash", copy / "scripts/package.sh", made,
            env={**os.environ, "SOURCE_DATE_EPOCH": str(min(times)), "TZ": "Asia/Tokyo", "LC_ALL": "C.UTF-8"})
        if not faults:
            expect("the packages of another build", sums(made), sums(packages))
    finish()


if __name__ == "__main__":
    main()
