#!/usr/bin/env python3
"""Each .rpm, installed by rpm into an empty root directory, works from there and is removed without
a trace. It requires a shell and nothing else, and rpmlint reports two known errors."""
import re
import shutil

from shared import (BUILT, CHART, CHART_STATUS, EMULATORS, PROGRAMS, VERSION, listing, main, rpm)

# The programs are linked statically so that they run on every Linux. The packages are not signed,
# because no key of the developers is published; SHA256SUMS has their sums.
KNOWN_ERRORS = ["no-signature", *["statically-linked-binary"] * len(PROGRAMS)]


def query(box, processor, *arguments):
    return box.run_command("rpm", "--query", *arguments, "--package", rpm(processor))


def run_rpm(box, root, *arguments, status=0):
    """rpm on another root directory, with a database of its own there."""
    return box.run_command("rpm", "--root", root, "--dbpath", "/var/lib/rpm", *arguments,
                           status=status)


def test_rpm_requires_only_a_shell(box):
    for processor in EMULATORS:
        required = query(box, processor, "--requires").splitlines()
        box.expect(processor, [name for name in required if not name.startswith("rpmlib(")],
                   ["/bin/sh"])


def test_rpm_fields(box):
    for processor in EMULATORS:
        fields = dict(re.findall(r"^(\w[\w ]*\w) *: (.*)$", query(box, processor, "--info"), re.M))
        for name, value in (("Name", "crv"), ("Version", VERSION), ("Architecture", processor),
                            ("Summary", "Charts and tables from simulation results")):
            box.expect(name, fields[name], value)
        box.assertRegex(fields["License"], r"\AMIT AND LGPL-2.1-or-later AND ")
        box.assertIn("\ncrv reads the result files", query(box, processor, "--info"))


def test_rpmlint_reports_known_errors(box):
    for processor in EMULATORS:
        found = box.run_program("rpmlint", rpm(processor))
        errors = re.findall(r": E: (\S+)", found.stdout)
        box.expect(f"errors in {processor}", sorted(errors), sorted(KNOWN_ERRORS))


def test_packages_work_and_are_removed(box):
    chart, _ = box.draw(BUILT)
    for processor, emulator in EMULATORS.items():
        root = box.base / processor
        (root / "tmp").mkdir(parents=True)
        foreign = ["--ignorearch"] if emulator else []
        printed = run_rpm(box, root, *foreign, "--install", rpm(processor), status=1)
        missing = re.findall(r"^\s+(\S+) is needed by crv", printed, re.M)
        box.expect("missing in an empty root directory", missing, ["/bin/sh"])
        before = [name for name in listing(root) if not name.startswith("var")]

        # The shell is for the companions; the programs do without.
        run_rpm(box, root, *foreign, "--install", "--nodeps", rpm(processor))
        run_rpm(box, root, "--verify", "--nodeps", "crv")
        for path in box.require(*emulator):
            shutil.copy(path, root / "tmp")
        prefix = [f"/tmp/{name}" for name in emulator]
        shutil.copy(root / "usr/share/doc/crv/examples/run1.req", root)
        got = box.enter(root, *prefix, "/usr/bin/crv", *CHART)
        box.expect("status", got.status, CHART_STATUS)
        box.expect("the chart", (root / "crv.ps").read_bytes(), chart)
        box.expect_programs_work(processor, lambda program, *arguments: box.enter(
            root, *prefix, f"/usr/bin/{program}", *arguments), root)

        run_rpm(box, root, "--erase", "crv")
        for name in ("run1.req", "crv.ps", *(path[1:] for path in prefix)):
            (root / name).unlink()
        # rpm creates the directories that no package owns, such as usr/bin.
        files = [name for name in listing(root)
                 if not name.startswith("var") and not (root / name).is_dir()]
        box.expect("remaining files", files, [name for name in before if name != "tmp"])
        box.expect("remaining packages", run_rpm(box, root, "--query", "--all"), "")


main("rpm", "rpmlint", "chroot")
