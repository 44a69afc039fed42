#!/usr/bin/env python3
"""A system without a shell: the chart is written, and an error says that it is not printed."""
import os
import re
import shutil

from harness import CHART, CHART_DONE, PROGRAM, REQ, main, printing, reading

NO_SHELL = "    _45-e-system, command interpreter: No such file or directory\n"


def make_empty_root(box):
    """Makes a root directory that contains the program, its libraries and a request file."""
    libraries = re.findall(r"(/\S+) \(0x", box.run_program("ldd", PROGRAM).stdout)
    for library in libraries:
        target = box.dir / library.lstrip("/")
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(library, target)
    shutil.copy(PROGRAM, box.dir / "crv")
    box.write("a.req", REQ)


def run_in_root(box, *arguments, **options):
    command = ["chroot", str(box.dir), "/crv", *arguments]
    if os.geteuid() != 0:
        command = ["unshare", "--map-root-user", *command]
    return box.run_program(*command, PATH="/usr/sbin:/usr/bin:/sbin:/bin", **options)


def require_root(box):
    make_empty_root(box)
    if run_in_root(box, "-h").status != 1:
        box.skipTest("this user may not change the root directory")


def test_print_without_shell_is_error(box):
    require_root(box)
    for option, command in (({}, "lpr  crv.ps"), ({"CRV_PRINTCHAIN": ":"}, ": crv.ps"),
                            ({"CRV_PRINTCHAIN": "exit 3;"}, "exit 3; crv.ps")):
        result = run_in_root(box, "-r", "0,7", "-f", "a.req", "-p", **option)
        box.expect_run(command, result,
                       reading("a.req") + CHART + printing(command) + CHART_DONE, NO_SHELL, 1)
        box.expect("chart", (box.take("crv.ps") or b"")[-10:], b"showpage \n")


def test_pick_without_shell_is_error(box):
    require_root(box)
    result = run_in_root(box, "-r", "0,7", "-fd")
    box.expect("run", (result.stderr, result.status),
               ("    _34-e-fopen: No such file or directory\n", 0))


main()
