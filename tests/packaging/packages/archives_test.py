#!/usr/bin/env python3
"""The program of the .tar.gz starts in a root directory that has nothing else, no library and no
shell. The packaged programs pass the cases. The .zip is checked where it could be made."""
import shutil
import subprocess
import sys
import zipfile

from shared import BUILT, CHART, CHART_STATUS, PACKAGES, PATH, ROOT, listing, main, package

WINDOWS_LIBRARIES = ("KERNEL32.dll", "msvcrt.dll", "api-ms-win-")
DOC = "share/doc/crv"


def test_archived_program_needs_nothing_else(box):
    for command in (("chroot",), ("unshare", "--map-root-user", "chroot")):
        if subprocess.run([*command, "/", "true"], capture_output=True).returncode == 0:
            break
    else:
        box.skipTest("no program may be run in another root directory here")
    tree = box.unpack(package(".tar.gz"))
    root = box.base / "root"
    root.mkdir()
    shutil.copy(tree / "bin/crv", root)
    shutil.copy(tree / DOC / "examples/run1.req", root)
    printed = box.run_command(*command, root, "/crv", *CHART, status=CHART_STATUS)
    chart, expected = box.draw(BUILT)
    # There is no shell that could report the missing printer command either.
    box.expect("what is printed", printed, expected.replace('= ": crv.ps"', '= "lpr  crv.ps"'))
    box.expect("the chart", (root / "crv.ps").read_bytes(), chart)
    box.expect("files", listing(root), ["crv", "crv.ps", "run1.req"])


def test_packaged_programs_pass_cases(box):
    box.run_command("dpkg-deb", "--extract", package(".deb"), box.base / "deb")
    for program in (box.base / "deb/usr/bin/crv", box.unpack(package(".tar.gz")) / "bin/crv"):
        printed = box.run_command(sys.executable, ROOT / "tests/run_cases.py", "--crv", program)
        box.assertRegex(printed, r" cases passed, 0 failed\n\Z")


def expect_chart_under_wine(box, program):
    """The unpacked program draws the chart of the built one, with the line ends of Windows."""
    path = f"{PATH}:/usr/lib/wine"
    wine, = box.require("wine64", path=path)
    box.copy_example("run1.req")
    expected, _ = box.draw(BUILT)
    box.path("crv.ps").unlink()
    box.environment |= {"WINEPREFIX": str(box.base / "wine"), "WINEDEBUG": "-all", "DISPLAY": "",
                        "WINEDLLOVERRIDES": "mscoree,mshtml,winemenubuilder.exe="}
    box.run_command(wine, program, *CHART, CRV_PRINTCHAIN="rem", status=CHART_STATUS)
    box.run_command(shutil.which("wineserver64", path=path) or "wineserver", "-w")
    box.expect("the chart", box.read("crv.ps"), expected.replace(b"\n", b"\r\n"))


def test_zip_program_needs_only_windows(box):
    if not list(PACKAGES.glob("*.zip")):
        return
    box.require("x86_64-w64-mingw32-objdump", path=PATH)
    path = package(".zip")
    top = path.name.removesuffix(".zip")
    with zipfile.ZipFile(path) as archive:
        box.expect("damaged files", archive.testzip(), None)
        names = archive.namelist()
        box.expect("one directory", {name.split("/")[0] for name in names}, {top})
        for name in ("bin/crv.exe", f"{DOC}/README.md", f"{DOC}/LICENSE",
                     f"{DOC}/examples/run1.req"):
            box.expect(f"{name} is packed", f"{top}/{name}" in names, True)
        program = archive.extract(f"{top}/bin/crv.exe", box.base)
    head = box.run_command("x86_64-w64-mingw32-objdump", "--private-headers", program)
    expect_chart_under_wine(box, program)
    needed = [line.split()[-1] for line in head.splitlines() if "DLL Name:" in line]
    box.expect("libraries are needed", bool(needed), True)
    box.expect("libraries that are not part of Windows",
               [name for name in needed if not name.startswith(WINDOWS_LIBRARIES)], [])


main("tar", "chroot", "dpkg-deb")
