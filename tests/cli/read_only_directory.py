#!/usr/bin/env python3
"""Directories and file systems without write permission, and files without read permission.

The superuser may write everywhere: its runs are then those of a user without permissions.
"""
import os
import shutil
import subprocess

from harness import CHART, FORMATS, REQ, SELECTED, WROTE_NOTHING, main, reading

NOBODY = 65534
OLD = ["a.dat", "crv.ps", "crv.use", "crv_temp.tmp", "utl_temp.tmp"]


def drop_permissions(box):
    """Popen's options for runs that may not write in the sandbox."""
    if os.geteuid() != 0:
        box.dir.chmod(0o555)
        box.addCleanup(box.dir.chmod, 0o755)
        return {}
    crv = box.bin / "crv"  # a copy: the directory of the program may be closed to others
    crv.unlink()
    shutil.copyfile(box.program, crv)
    crv.chmod(0o755)
    return {"user": NOBODY, "group": NOBODY, "extra_groups": []}


def expect_errors(box, error, **user):
    """Tries to write everything that is ever written."""
    box.expect_run("table", box.crv("-r", "0,7", "-fd", "a.req", **user),
                   reading("a.req") + '%crv_84-i-wri, Writing "a.dat" ...\n\n',
                   f" crv_84-f-fopen, in crv_writecols() : {error}\n")
    for chart in ("crv.ps", "new.ps"):
        box.expect_run(chart, box.crv("-r", "0,7", "-f", "a.req", "-p", chart, **user),
                       reading("a.req") + CHART, f"    _41-e-fopen: {error}\n")
    box.expect_run("usage line", box.crv("-u", "-w", "x", **user), WROTE_NOTHING)
    box.expect_run("one file", box.crv("-r", "0,7", "-f", typed=b"1\n", **user), SELECTED,
                   f"    _33-e-fopen, utl_lstfile(): {error}\n", 1)
    box.expect_run("several files", box.crv("-r", "0,7", "-fd", typed=b"a\n", **user), SELECTED,
                   f"    _34-e-fopen: {error}\n")


def write_old(box):
    box.write("a.req", REQ)
    for name in OLD:
        box.write(name, b"old\n")


def expect_old(box):
    box.expect("files", box.names(), sorted([*OLD, "a.req"]))
    for name in OLD:
        box.expect(name, box.read(name), b"old\n")


def test_directory_of_other_user_is_unchanged(box):
    write_old(box)
    user = drop_permissions(box)
    for name in box.names():
        box.path(name).chmod(0o444)
    expect_errors(box, "Permission denied", **user)
    expect_old(box)


def test_read_only_file_system_is_unchanged(box):
    box.mount("64k")
    write_old(box)
    subprocess.run(["mount", "-o", "remount,ro", box.dir], check=True)
    expect_errors(box, "Read-only file system")
    expect_old(box)


def test_unreadable_file_is_reported(box):
    box.write("locked.dat", REQ).chmod(0o000)
    user = drop_permissions(box)
    for form in FORMATS:
        box.expect_run(form.option, form.run(box, "locked.dat", **user), form.opening("locked.dat"),
                       f"{form.prefix}f-fopen: Permission denied\n", form.status)


main()
