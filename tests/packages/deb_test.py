#!/usr/bin/env python3
# packages/deb_test - the .deb installed by dpkg into a fresh root folder that knows of the C library and nothing else: the
# program does its work from there, and after removing it nothing is left.
import os
import pathlib
import tempfile

from shared import DATABASE, as_root, expect, expect_same_chart, finish, fresh_root, given, listing, need, package, run


def dpkg(folder, *arguments, status=0):
    force = [] if os.geteuid() == 0 else ["--force-not-root"]
    return run(*as_root("dpkg", f"--root={folder}", "--log=/dev/null", *force, *arguments), status=status)


def without_database(folder):
    return [name for name in listing(folder) if not name.startswith(DATABASE)]


def packages_known(folder):
    text = (folder / DATABASE / "status").read_text()
    return [line.split()[1] for line in text.splitlines() if line.startswith("Package:")]


def test_a_system_without_the_c_library_is_told_so(deb):
    with tempfile.TemporaryDirectory() as scratch:
        root = pathlib.Path(scratch)
        fresh_root(root)
        (root / DATABASE / "status").write_text("")
        printed = dpkg(root, "--install", deb, status=1)
        expect("the C library is missed", "crv depends on libc6" in printed, True)


def test_installed_it_works_and_removed_it_is_gone(deb, built):
    with tempfile.TemporaryDirectory() as scratch:
        root = pathlib.Path(scratch)
        fresh_root(root)
        before, database_before = without_database(root), listing(root / DATABASE)
        dpkg(root, "--install", deb)
        expect("installed", packages_known(root), ["crv", "libc6"])
        expect("files that are not as they were packed", dpkg(root, "--verify", "crv"), "")
        expect_same_chart("installed", root / "usr/bin/crv", root / "usr/share/doc/crv/examples/run1.req", built)
        expect("the program leaves nothing beside itself", [name for name in listing(root / "usr/bin") if "." in name], [])

        printed = dpkg(root, "--purge", "crv")
        expect("what dpkg says of the removal", [line for line in printed.splitlines() if "warning" in line], [])
        expect("what is left", without_database(root), before)
        expect("packages left", packages_known(root), ["libc6"])
        left = [name for name in listing(root / DATABASE) if name not in database_before and "crv" in name]
        expect("what is left in the database", left, [])


def main():
    need("dpkg", "dpkg-query", *(() if os.geteuid() == 0 else ("fakeroot",)))
    packages, built = given()
    deb = package(packages, ".deb")
    test_a_system_without_the_c_library_is_told_so(deb)
    test_installed_it_works_and_removed_it_is_gone(deb, built)
    finish()


if __name__ == "__main__":
    main()
