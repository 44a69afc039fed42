#!/usr/bin/env python3
"""scripts/release.sh rejects what is not a version, a tree with changes, and a source that does not
agree on the version, before it runs a test. The source agrees on the version that it has."""
from shared import ROOT, VERSION, main

OTHER = "9.8.7"
GIT = ("git", "-c", "user.name=crv", "-c", "user.email=crv@crv.invalid")


def release(box, source, *arguments):
    """Status and error messages; a run that passes the checks would print test results."""
    found = box.run_program("bash", source / "scripts/release.sh", *arguments, cwd=source)
    box.expect("output", found.stdout, "")
    return found.status, found.stderr


def make_checkout(box):
    """The source as a git checkout without changes."""
    source = box.unpack_source()
    box.run_command("git", "init", "--quiet", cwd=source)
    commit(box, source)
    return source


def commit(box, source):
    box.run_command("git", "add", "--all", cwd=source)
    box.run_command(*GIT, "commit", "--quiet", "--message", "all", cwd=source)


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


main("git")
