#!/usr/bin/env python3
"""Folders and file systems in which nothing may be written, and files that may not be read.

The superuser may write everywhere: its runs are then those of a user without rights.
"""
import os
import shutil
import subprocess

from harness import CHART, FORMATS, NOBODY, WROTE_NOTHING, Mounted, main, reading, selecting


def without_rights(place):
    """How to start a run that may not write in the place."""
    if os.geteuid() != 0:
        place.folder.chmod(0o555)
        return {}
    crv = place.tools / "crv"
    shutil.copyfile(place.crv, crv)
    crv.chmod(0o755)
    place.crv = str(crv)
    return {"user": NOBODY, "group": NOBODY, "extra_groups": []}


def give_back(place):
    place.folder.chmod(0o755)


def nothing_is_written(place, error, **rights):
    """Tries all that is written; what was there stays to the byte."""
    tables = reading("a.req") + '%crv_84-i-wri, Writing "a.dat" ...\n\n'
    place.expect_run("table", place.run("-r", "0,7", "-fd", "a.req", **rights), tables,
                     f" crv_84-f-fopen, in crv_writecols() : {error}\n")
    for chart in ("crv.ps", "new.ps"):
        place.expect_run(chart, place.run("-r", "0,7", "-f", "a.req", "-p", chart, **rights), reading("a.req") + CHART,
                         f"    _41-e-fopen: {error}\n")
    place.expect_run("usage line", place.run("-u", "-w", "x", **rights), WROTE_NOTHING)
    chosen = '%crv_05-i-ids, Request ids   = "0,7" \n'
    place.expect_run("one file", place.run("-r", "0,7", "-f", typed=b"1\n", **rights), chosen,
                     f"    _33-e-fopen, utl_lstfile(): {error}\n", 1)
    place.expect_run("several files", place.run("-r", "0,7", "-fd", typed=b"a\n", **rights), chosen,
                     f"    _34-e-fopen: {error}\n")


def fill(place):
    place.write("a.req")
    for name in ("a.dat", "crv.ps", "crv.use", "crv_temp.tmp", "utl_temp.tmp"):
        place.write(name, b"old\n")


def expect_untouched(place):
    place.expect("files", place.names(), ["a.dat", "a.req", "crv.ps", "crv.use", "crv_temp.tmp", "utl_temp.tmp"])
    for name in set(place.names()) - {"a.req"}:
        place.expect(name, place.read(name), b"old\n")


def a_folder_of_somebody_else_keeps_what_it_has(place):
    fill(place)
    rights = without_rights(place)
    for name in place.names():
        (place.folder / name).chmod(0o444)
    nothing_is_written(place, "Permission denied", **rights)
    give_back(place)
    expect_untouched(place)


def a_read_only_file_system_keeps_what_it_has(place):
    with Mounted(place.folder, "64k") as disk:
        if not disk:
            return
        fill(place)
        subprocess.run(["mount", "-o", "remount,ro", place.folder], check=True)
        nothing_is_written(place, "Read-only file system")
        expect_untouched(place)


def a_file_that_may_not_be_read_is_reported_with_its_readers_status(place):
    rights = without_rights(place)
    give_back(place)
    place.write("locked.dat").chmod(0o000)
    for option, selection, _, prefix, status, begin, _ in FORMATS:
        place.expect_run(option, place.run("-r", selection, option, "locked.dat", "-w", "x", **rights),
                         selecting(selection, "locked.dat") + begin.format("locked.dat"),
                         f"{prefix}f-fopen: Permission denied\n", status)


main(a_folder_of_somebody_else_keeps_what_it_has, a_read_only_file_system_keeps_what_it_has,
     a_file_that_may_not_be_read_is_reported_with_its_readers_status)
