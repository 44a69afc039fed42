#!/usr/bin/env python3
"""scripts/release.sh rejects what is not a version, a tree with changes, and a source that does not
agree on the version, before it runs a test, and makes no packages when a test fails. It rejects
packages of which one is missing or damaged; after the others it prints the steps that remain."""
import hashlib
import re
import shutil

from shared import PACKAGES, ROOT, VERSION, commit, main, make_checkout

OTHER = "9.8.7"
LIBRARIES = {"gcc-12", "glibc", "mingw-w64"}  # by their sources


def release(box, source, *arguments):
    """Status and error messages; a run that passes the checks would print test results."""
    found = box.run_program("bash", source / "scripts/release.sh", *arguments, cwd=source)
    box.expect("output", found.stdout, "")
    return found.status, found.stderr


def test_rejects_what_is_not_a_version(box):
    for word in ("1.0", "v1.0.0", "1.0.0-rc1", "1.0.0.0", "latest", "", "1.0.0 --force", "-h"):
        box.expect(word, release(box, ROOT, word),
                   (2, f'release.sh: "{word}" is not a version: write three numbers, '
                       "such as 1.0.0\n"))
    box.expect("no version", release(box, ROOT)[0], 2)
    box.expect("two versions", release(box, ROOT, "1.0.0", "1.0.1")[0], 2)


def test_rejects_tree_with_changes(box):
    source = make_checkout(box)
    (source / "new.txt").write_text("not committed\n")
    box.expect("a new file", release(box, source, VERSION),
               (1, "release.sh: these changes are not committed:\n?? new.txt\n"))
    (source / "new.txt").unlink()
    (source / "LICENSE").write_text("changed\n")
    box.expect("a changed file", release(box, source, VERSION),
               (1, "release.sh: these changes are not committed:\n M LICENSE\n"))


def test_rejects_source_without_git(box):
    source = box.unpack_source()
    status, printed = release(box, source, VERSION)
    box.expect("status", status, 1)
    box.assertTrue(printed.endswith("release.sh: releases are made from a git checkout\n"))


def test_rejects_version_that_nothing_names(box):
    status, printed = release(box, make_checkout(box), OTHER)
    box.expect("status", status, 1)
    first, *faults = printed.splitlines()
    box.expect("first line", first, f"release.sh: not everything is ready for {OTHER}:")
    for fault in (f"CMakeLists.txt: the version is {VERSION}",
                  f"CHANGELOG.md: the first section after Unreleased is not that of {OTHER}",
                  f'man/crv.1: no ".Os crv {OTHER}"',
                  f"packaging/conda/meta.yaml: the version is not {OTHER}",
                  "docs/stability.md: the title does not name version 9"):
        box.expect(fault, fault in faults, True)
    box.assertIn(f"docs/install.md:5: names version {VERSION}", printed)


def test_rejects_entries_left_under_unreleased(box):
    source = make_checkout(box)
    log = source / "CHANGELOG.md"
    head, rest = log.read_text().split("## [Unreleased]\n", 1)
    log.write_text(f"{head}## [Unreleased]\n\n- A late change.\n{rest}")
    commit(box, source)
    status, printed = release(box, source, VERSION)
    box.expect("status", status, 1)
    box.assertIn("CHANGELOG.md: entries are left under Unreleased", printed)


def test_rejects_change_log_of_another_form(box):
    source = make_checkout(box)
    log = source / "CHANGELOG.md"
    for old, new, fault in (
            ("## [", "## Version ", "is neither [Unreleased] nor"),
            (f"## [{VERSION}]", f"## [1{VERSION}]", f"Unreleased is not that of {VERSION}"),
            ("### Added", "### News", "the part News is none of"),
            (" - 2026-", " - 2026-99-", "is neither [Unreleased] nor"),
            ("2026-11-22", "2026-11-31", "2026-11-31 is not a date")):
        kept = log.read_text()
        box.assertIn(old, kept)
        log.write_text(kept.replace(old, new, 1))
        commit(box, source)
        status, printed = release(box, source, VERSION)
        box.expect(f"status with {new}", status, 1)
        box.assertIn(fault, printed)
        log.write_text(kept)


def test_failed_tests_end_release(box):
    source = make_checkout(box)
    (source / ".ci/run").write_text("#!/bin/sh\necho CI is $CI\nexit 3\n")
    commit(box, source)
    found = box.run_program("bash", source / "scripts/release.sh", VERSION, cwd=source)
    box.expect_run("run", found, "CI is true\n", "", 3)
    box.expect("packages are made", (source / "dist").exists(), False)


def steps(box, directory):
    return box.run_program("bash", ROOT / "scripts/release_steps.sh", VERSION, directory)


def test_steps_follow_complete_packages(box):
    found = steps(box, PACKAGES)
    box.expect("errors", (found.stderr, found.status), ("", 0))
    lines = [line.strip() for line in found.stdout.splitlines()]
    archive = (PACKAGES / f"crv-{VERSION}.tar.gz").read_bytes()
    box.expect("sum of the source archive", lines[-1], hashlib.sha256(archive).hexdigest())
    contact = "cmake/packages.cmake: The crv developers <developers@crv.invalid>"
    box.expect("the placeholder of the contact", contact in lines, True)
    numbers = [line[0] for line in lines if re.match(r"\d\. ", line)]
    box.expect("numbers", numbers, ["1", "2", "3", "4", "5", "6"])


def test_steps_name_sources_of_libraries(box):
    names = re.findall(r"dget --download-only https://deb\.debian\.org/debian/pool/main/(\S+)\n",
                       steps(box, PACKAGES).stdout)
    box.expect("sources", {name.split("/")[1] for name in names}, LIBRARIES)
    for library in ("libstdc++-12-dev", "libc6-dev"):  # those of this machine
        source, version = box.output_of(
            "dpkg-query", "-W", "-f", "${source:Package} ${source:Version}", library).split()
        box.assertIn(f"{source[0]}/{source}/{source}_{version}.dsc", names)


def test_missing_package_is_named(box):
    names = sorted(path.name for path in PACKAGES.glob("crv*"))
    box.expect("kinds of packages", len(names), 9)
    for name in names:
        directory = box.base / "packages"
        shutil.copytree(PACKAGES, directory)
        (directory / name).unlink()
        expected = f"release_steps.sh: these packages were not made: {name}\n"
        box.expect_run(f"without {name}", steps(box, directory), "", expected, 1)
        (directory / name).write_bytes(b"")
        box.expect_run(f"{name} is empty", steps(box, directory), "", expected, 1)
        shutil.rmtree(directory)


def test_damaged_package_is_named(box):
    directory = box.base / "packages"
    shutil.copytree(PACKAGES, directory)
    name = f"crv-{VERSION}-windows-x86_64.zip"
    with (directory / name).open("ab") as file:
        file.write(b"\n")
    found = steps(box, directory)
    box.expect("status", (found.stdout, found.status), ("", 1))
    box.assertIn(f"{name}: FAILED\n", found.stderr)
    sums = directory / "SHA256SUMS"
    sums.write_text("".join(line for line in sums.read_text().splitlines(True)
                            if not line.endswith(f"{name}\n")))
    box.expect_run("without its sum", steps(box, directory), "",
                   f"release_steps.sh: these packages were not made: {name}\n", 1)


main("git", "dpkg-query")
