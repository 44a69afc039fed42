#!/usr/bin/env python3
# packaging/packages/archives_test - the program of the .tar.gz starts in a root folder where there is nothing else, no library and no
# shell; and the programs of the packages pass the same cases as the built one. The .zip is looked at where it could be made.
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import zipfile

from shared import CHART, CHART_STATUS, ROOT, TOOLS, draw, expect, finish, given, need, package, run

WINDOWS_LIBRARIES = ("KERNEL32.dll", "msvcrt.dll", "api-ms-win-")


def unpacked(packages, folder):
    run("tar", "-xf", package(packages, ".tar.gz"), "-C", folder)
    return next(pathlib.Path(folder).iterdir())


def may_change_root():
    """How a program is run in another root folder, or nothing where that is not allowed."""
    for command in (["chroot"], ["unshare", "--map-root-user", "chroot"]):
        if subprocess.run([*command, "/", "true"], env=TOOLS, capture_output=True).returncode == 0:
            return command
    return None


def test_the_program_of_the_archive_starts_where_nothing_else_is(tree, built, change_root):
    with tempfile.TemporaryDirectory() as root:
        shutil.copy(tree / "bin/crv", root)
        shutil.copy(tree / "share/doc/crv/examples/run1.req", root)
        printed = run(*change_root, root, "/crv", *CHART, status=CHART_STATUS)
        chart, words = draw(built, ROOT / "examples/run1.req")
        # There is no shell that could say that there is no printer command either.
        wanted = words.replace('Printer command = ": crv.ps"', 'Printer command = "lpr  crv.ps"')
        expect("what is printed in an empty root", printed, wanted)
        expect("the chart of an empty root", pathlib.Path(root, "crv.ps").read_bytes() == chart, True)
        expect("what lies there then", sorted(os.listdir(root)), ["crv", "crv.ps", "run1.req"])


def test_packaged_programs_pass_the_cases_of_the_built_one(tree, packages):
    with tempfile.TemporaryDirectory() as folder:
        run("dpkg-deb", "--extract", package(packages, ".deb"), folder)
        for program in (pathlib.Path(folder, "usr/bin/crv"), tree / "bin/crv"):
            printed = run(sys.executable, ROOT / "tests/run_cases.py", "--crv", program)
            expect("cases", printed.endswith(" cases passed, 0 failed\n"), True)


def expect_chart_under_wine(program, folder, built):
    """The unpacked program draws what the built one does, but for the line ends of its system."""
    wine = shutil.which("wine64", path=f"{TOOLS['PATH']}:/usr/lib/wine")
    need(*([] if wine else ["wine64"]))
    shutil.copy(ROOT / "examples/run1.req", folder)
    environment = {**TOOLS, "HOME": folder, "WINEPREFIX": f"{folder}/wine", "WINEDEBUG": "-all", "DISPLAY": "",
                   "WINEDLLOVERRIDES": "mscoree,mshtml,winemenubuilder.exe=", "CRV_PRINTCHAIN": "rem"}
    run(wine, program, *CHART, cwd=folder, env=environment, status=CHART_STATUS)
    run(shutil.which("wineserver64", path=f"{TOOLS['PATH']}:/usr/lib/wine") or "wineserver", "-w", env=environment)
    chart, _ = draw(built, ROOT / "examples/run1.req")
    drawn = pathlib.Path(folder, "crv.ps").read_bytes()
    expect("the chart of the .zip's program", drawn == chart.replace(b"\n", b"\r\n"), True)


def test_the_zip_has_a_program_that_needs_windows_alone(packages, built):
    if not list(packages.glob("*.zip")):
        return
    need("x86_64-w64-mingw32-objdump")
    path = package(packages, ".zip")
    top = path.name.removesuffix(".zip")
    with zipfile.ZipFile(path) as archive, tempfile.TemporaryDirectory() as folder:
        expect("files that are damaged", archive.testzip(), None)
        names = archive.namelist()
        expect("one folder", {name.split("/")[0] for name in names}, {top})
        for name in ("bin/crv.exe", "share/doc/crv/README.md", "share/doc/crv/LICENSE", "share/doc/crv/examples/run1.req"):
            expect(f"{name} is there", f"{top}/{name}" in names, True)
        program = archive.extract(f"{top}/bin/crv.exe", folder)
        head = run("x86_64-w64-mingw32-objdump", "--private-headers", program)
        expect_chart_under_wine(program, folder, built)
    needed = [line.split()[-1] for line in head.splitlines() if "DLL Name:" in line]
    expect("libraries are needed", bool(needed), True)
    expect("libraries that Windows does not have", [n for n in needed if not n.startswith(WINDOWS_LIBRARIES)], [])


def main():
    need("tar", "chroot", "dpkg-deb")
    packages, built = given()
    change_root = may_change_root()
    with tempfile.TemporaryDirectory() as folder:
        tree = unpacked(packages, folder)
        if change_root:
            test_the_program_of_the_archive_starts_where_nothing_else_is(tree, built, change_root)
        test_packaged_programs_pass_the_cases_of_the_built_one(tree, packages)
        test_the_zip_has_a_program_that_needs_windows_alone(packages, built)
    finish(None if change_root else "no program may be run in another root folder here; the rest of this test has passed")


if __name__ == "__main__":
    main()
