#!/usr/bin/env python3
"""Each .deb, installed by dpkg into a root directory that has only the C library, works from there
and is removed without a trace."""
import os
import shutil
import sys

from shared import (CHART_STATUS, DATABASE, EMULATORS, NATIVE, ROOT, as_root, deb, listing, main)

sys.path.insert(0, str(ROOT / "tests/packaging/shells"))
import installed_test  # noqa: E402  (found by the path above)


def dpkg(box, root, *arguments, status=0):
    # Small images are configured without documents, which are checked here too.
    options = ["--log=/dev/null", "--path-include=*",
               *([] if os.geteuid() == 0 else ["--force-not-root"])]
    return box.run_command(*as_root("dpkg", f"--root={root}", *options, *arguments), status=status)


def without_database(root):
    return [name for name in listing(root) if not name.startswith(DATABASE)]


def installed_packages(root):
    lines = (root / DATABASE / "status").read_text().splitlines()
    return [line.split()[1] for line in lines if line.startswith("Package:")]


def test_deb_needs_c_library(box):
    for processor in EMULATORS:
        root = box.make_root(processor)
        (root / DATABASE / "status").write_text("")
        printed = dpkg(box, root, "--install", deb(processor), status=1)
        box.assertIn("depends on libc6", printed)


def expect_installed_files(box, root):
    """man, the shells and the user find what the package has installed."""
    share = root / "usr/share"
    box.expect("man, bash, zsh, fish",
               [*installed_test.faults_of(share, box.base, "vendor-completions")], [])
    shutil.copy(share / "doc/crv/examples/run1.req", box.dir)
    bin = root / "usr/bin"
    box.run_command("sh", "-c", f"'{bin}/crv' -r 0,38:3 -f run1.req -p",
                    CRV_PRINTCHAIN=f"'{bin}/crv2pdf'", status=CHART_STATUS)
    box.expect("a picture from one command", box.read("crv.pdf")[:5], b"%PDF-")


def try_package(box, processor):
    root = box.make_root(processor)
    before, database_before = without_database(root), listing(root / DATABASE)
    dpkg(box, root, "--install", deb(processor))
    box.expect("installed", installed_packages(root), ["crv", "libc6"])
    box.expect("changed files", dpkg(box, root, "--verify", "crv"), "")
    # The C library is that of the cross compiler.
    emulator = [word for name in EMULATORS[processor]
                for word in (name, "-L", f"/usr/{processor}-linux-gnu")]
    box.expect_same_chart(processor, *emulator, root / "usr/bin/crv",
                          request_file=root / "usr/share/doc/crv/examples/run1.req")
    box.expect_programs_work(processor, lambda program, *arguments: box.run_program(
        *emulator, root / "usr/bin" / program, *arguments), box.dir)
    if processor == NATIVE:
        expect_installed_files(box, root)
    box.expect("files that a run leaves beside the program",
               [name for name in listing(root / "usr/bin") if "." in name], [])

    printed = dpkg(box, root, "--purge", "crv")
    box.expect("warnings of dpkg", [line for line in printed.splitlines() if "warning" in line], [])
    box.expect("remaining files", without_database(root), before)
    box.expect("remaining packages", installed_packages(root), ["libc6"])
    left = [name for name in listing(root / DATABASE)
            if name not in database_before and "crv" in name]
    box.expect("remaining files of the database", left, [])


def test_packages_work_and_are_removed(box):
    for processor in EMULATORS:
        try_package(box, processor)


main("dpkg", "dpkg-query", "man", "bash", "zsh", "fish", "gs",
     *(name for names in EMULATORS.values() for name in names),
     *(() if os.geteuid() == 0 else ("fakeroot",)))
