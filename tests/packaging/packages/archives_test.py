#!/usr/bin/env python3
"""The programs of each .tar.gz start in a root directory that has nothing else, no library and no
shell. The packaged programs pass the cases. Those of the .zip need only Windows, and work."""
import re
import shutil
import sys
import zipfile

from shared import (BUILT, CHART, CHART_STATUS, EMULATORS, PATH, PROGRAMS, ROOT, archive, deb,
                    listing, main, package)

WINDOWS_LIBRARIES = ("KERNEL32.dll", "msvcrt.dll", "api-ms-win-")
DOC = "share/doc/crv"


def test_archived_programs_need_nothing_else(box):
    chart, expected = box.draw(BUILT)
    for processor, emulator in EMULATORS.items():
        root = box.base / processor
        tree = box.unpack(archive(processor))
        root.mkdir()
        copied = [*box.require(*emulator), *(tree / "bin" / name for name in PROGRAMS),
                  tree / DOC / "examples/run1.req"]
        for path in copied:
            shutil.copy(path, root)
        emulator = [f"/{name}" for name in emulator]

        def run(program, *arguments):
            return box.enter(root, *emulator, f"/{program}", *arguments)

        got = run("crv", *CHART)
        box.expect(f"{processor}: status", got.status, CHART_STATUS)
        box.expect(f"{processor}: what is printed", got.stdout,
                   expected.replace('= ": crv.ps"', '= "lpr  crv.ps"'))
        box.expect(f"{processor}: errors", got.stderr,
                   "    _45-e-system, command interpreter: No such file or directory\n")
        box.expect(f"{processor}: the chart", (root / "crv.ps").read_bytes(), chart)
        box.expect_programs_work(processor, run, root)
        box.expect(f"{processor}: files", listing(root),
                   sorted(["crv.ps", *(path.rsplit("/")[-1] for path in map(str, copied))]))


def test_packaged_programs_pass_cases(box):
    box.run_command("dpkg-deb", "--extract", deb(), box.base / "deb")
    for program in (box.base / "deb/usr/bin/crv", box.unpack(archive()) / "bin/crv"):
        printed = box.run_command(sys.executable, ROOT / "tests/run_cases.py", "--crv", program)
        box.assertRegex(printed, r" cases passed, 0 failed\n\Z")


def expect_programs_work_under_wine(box, directory):
    """The unpacked programs do the same as the built ones. Lines of a chart and of messages end in
    CR LF, those that a viewer prints in LF, see docs/windows.md."""
    path = f"{PATH}:/usr/lib/wine"
    wine, = box.require("wine64", path=path)
    chart, _ = box.draw(BUILT)
    box.path("crv.ps").unlink()

    def run(program, *arguments):
        got = box.run_program(wine, directory / f"{program}.exe", *arguments)
        messages = [name for name in ("stdout", "stderr")
                    if name == "stderr" or program == "crv"]
        for name in messages:
            text = getattr(got, name)
            box.expect(f"{program}: line ends without CR", re.findall(r"[^\r]\n", text), [])
            got = got._replace(**{name: text.replace("\r\n", "\n")})
        return got

    # The first start of Wine prints messages of its own, and "rem" prints nothing. The server of
    # Wine ends before its directory is removed.
    box.environment |= {"WINEPREFIX": str(box.base / "wine"), "WINEDEBUG": "-all", "DISPLAY": "",
                        "WINEDLLOVERRIDES": "mscoree,mshtml,winemenubuilder.exe=",
                        "CRV_PRINTCHAIN": "rem"}
    box.run_command(wine, "wineboot", "-i")
    box.expect("status of the chart", run("crv", *CHART).status, CHART_STATUS)
    box.expect("the chart", box.read("crv.ps"), chart.replace(b"\n", b"\r\n"))
    box.expect_programs_work("Windows", run, box.dir)
    box.run_command(shutil.which("wineserver64", path=path) or "wineserver", "-w")


def test_zip_programs_need_only_windows(box):
    objdump, = box.require("x86_64-w64-mingw32-objdump", path=PATH)
    path = package("*.zip")
    top = path.name.removesuffix(".zip")
    with zipfile.ZipFile(path) as packed:
        box.expect("damaged files", packed.testzip(), None)
        names = packed.namelist()
        box.expect("one directory", {name.split("/")[0] for name in names}, {top})
        for name in (f"{DOC}/README.md", f"{DOC}/LICENSE", f"{DOC}/examples/run1.req"):
            box.expect(f"{name} is packed", f"{top}/{name}" in names, True)
        programs = [packed.extract(f"{top}/bin/{name}.exe", box.base) for name in PROGRAMS]
    for program in programs:
        head = box.run_command(objdump, "--private-headers", program)
        needed = [line.split()[-1] for line in head.splitlines() if "DLL Name:" in line]
        box.expect("libraries are needed", bool(needed), True)
        box.expect(f"libraries of {program} that are not part of Windows",
                   [name for name in needed if not name.startswith(WINDOWS_LIBRARIES)], [])
    expect_programs_work_under_wine(box, box.base / top / "bin")


main("tar", "chroot", "dpkg-deb")
