#!/usr/bin/env python3
# packaging/packages/deb_test - the .deb installed by dpkg into a fresh root folder that knows of the C library and nothing else: the
# program does its work from there, and after removing it nothing is left.
import os
import pathlib
import shutil
import sys
import tempfile

from shared import (CHART_STATUS, DATABASE, ROOT, TOOLS, as_root, expect, expect_same_chart, finish, fresh_root, given, listing,
                    need, package, run)

sys.path.insert(0, str(ROOT / "tests/packaging/shells"))
import installed_test  # noqa: E402  (found by the path above)


def dpkg(folder, *arguments, status=0):
    # Small images leave documents out; they are part of what is looked at here.
    words = ["--log=/dev/null", "--path-include=*", *([] if os.geteuid() == 0 else ["--force-not-root"])]
    return run(*as_root("dpkg", f"--root={folder}", *words, *arguments), status=status)


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


def expect_page_completions_and_pictures(root):
    """Where the package has put them they are found, by man, the shells and the user."""
    share = root / "usr/share"
    with tempfile.TemporaryDirectory() as scratch:
        home = pathlib.Path(scratch)
        bash, zsh, fish, man = (shutil.which(name) for name in ("bash", "zsh", "fish", "man"))
        expect("man, bash, zsh, fish", [*installed_test.faults_of_man(man, share),
                                        *installed_test.faults_of_bash(bash, share, home),
                                        *installed_test.faults_of_zsh(zsh, share, home, "vendor-completions"),
                                        *installed_test.faults_of_fish(fish, share, home)], [])
        shutil.copy(share / "doc/crv/examples/run1.req", home)
        draw = f"'{root}/usr/bin/crv' -r 0,38:3 -f run1.req -p"
        run("sh", "-c", draw, cwd=home, env={**TOOLS, "CRV_PRINTCHAIN": f"'{root}/usr/bin/crv2pdf'"}, status=CHART_STATUS)
        expect("a picture in one line", (home / "crv.pdf").read_bytes()[:5], b"%PDF-")


def test_installed_it_works_and_removed_it_is_gone(deb, built):
    with tempfile.TemporaryDirectory() as scratch:
        root = pathlib.Path(scratch)
        fresh_root(root)
        before, database_before = without_database(root), listing(root / DATABASE)
        dpkg(root, "--install", deb)
        expect("installed", packages_known(root), ["crv", "libc6"])
        expect("files that are not as they were packed", dpkg(root, "--verify", "crv"), "")
        expect_same_chart("installed", root / "usr/bin/crv", root / "usr/share/doc/crv/examples/run1.req", built)
        expect_page_completions_and_pictures(root)
        expect("the program leaves nothing beside itself", [name for name in listing(root / "usr/bin") if "." in name], [])

        printed = dpkg(root, "--purge", "crv")
        expect("what dpkg says of the removal", [line for line in printed.splitlines() if "warning" in line], [])
        expect("what is left", without_database(root), before)
        expect("packages left", packages_known(root), ["libc6"])
        left = [name for name in listing(root / DATABASE) if name not in database_before and "crv" in name]
        expect("what is left in the database", left, [])


def main():
    need("dpkg", "dpkg-query", "man", "bash", "zsh", "fish", "gs", *(() if os.geteuid() == 0 else ("fakeroot",)))
    packages, built = given()
    deb = package(packages, ".deb")
    test_a_system_without_the_c_library_is_told_so(deb)
    test_installed_it_works_and_removed_it_is_gone(deb, built)
    finish()


if __name__ == "__main__":
    main()
