#!/usr/bin/env python3
"""Systems without a shell and without /bin/ls: a root directory that contains little more than the
program.
"""
import os
import re
import shutil

from harness import CHART, CHART_DONE, PROGRAM, REQ, main, printing, reading

NO_SHELL = "    _45-e-system, command interpreter: No such file or directory\n"
CHROOT, UNSHARE = (shutil.which(name, path="/usr/sbin:/usr/bin:/sbin:/bin")
                   for name in ("chroot", "unshare"))


def install(box, program, target):
    """Copies a program and its libraries into the root."""
    libraries = re.findall(r"(/\S+) \(0x", box.run_program("ldd", program).stdout)
    for source, name in [(program, target), *((path, path) for path in libraries)]:
        path = box.dir / name.lstrip("/")
        path.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(source, path)


def run_in_root(box, *arguments, **options):
    command = [CHROOT, str(box.dir), "/crv", *arguments]
    if os.geteuid() != 0:
        command = [UNSHARE, "--map-root-user", *command]
    return box.run_program(*command, PATH="/tools", **options)


def make_root(box):
    """Makes a root without a shell; skips the test when this user may not use it."""
    install(box, PROGRAM, "crv")
    box.write("a.req", REQ)
    if not CHROOT or not UNSHARE or run_in_root(box, "-h").status != 1:
        box.skipTest("this user may not change the root directory")


def test_print_without_shell_is_error(box):
    make_root(box)
    for option, command in (({}, "lpr  crv.ps"), ({"CRV_PRINTCHAIN": ":"}, ": crv.ps"),
                            ({"CRV_PRINTCHAIN": "exit 3;"}, "exit 3; crv.ps")):
        result = run_in_root(box, "-r", "0,7", "-f", "a.req", "-p", **option)
        box.expect_run(command, result,
                       reading("a.req") + CHART + printing(command) + CHART_DONE, NO_SHELL, 1)
        box.expect("chart", (box.take("crv.ps") or b"")[-10:], b"showpage \n")


def test_pick_without_shell_is_error(box):
    make_root(box)
    result = run_in_root(box, "-r", "0,7", "-fd")
    box.expect("run", (result.stderr, result.status),
               ("    _34-e-fopen: No such file or directory\n", 0))


def test_pick_without_bin_ls_finds_ls(box):
    make_root(box)
    install(box, "/bin/sh", "bin/sh")
    for tool in ("ls", "rm"):
        install(box, shutil.which(tool, path="/usr/bin:/bin"), f"tools/{tool}")
    result = run_in_root(box, "-d", "34", "-r", "0,7", "-fd", typed=b"1\n")
    box.expect("run", (result.stderr, result.status), ("", 0))
    box.expect("command", 'command1 = "ls > crv_temp.tmp *.req" \n' in result.stdout, True)
    box.expect("list", "   1 --> a.req\n" in result.stdout, True)
    box.expect("table", box.read("a.dat") is not None, True)
    box.expect("listing", box.read("crv_temp.tmp"), None)


main()
