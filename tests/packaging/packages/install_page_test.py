#!/usr/bin/env python3
"""Runs the commands of docs/install.md, line by line in one shell; they leave no files. Runs the
beginning of docs/tutorial.md up to its first chart.

"sudo" runs its command unchanged, "apt" is dpkg and "dnf" is rpm on a root directory of the test.
The commands for printers are run by printer/page_test.
"""
import shutil

from shared import (BUILT, DATABASE, PACKAGES, PATH, ROOT, VERSION, as_root, deb, listing, main,
                    package)
from support.install_page import PAGE, TUTORIAL, commands_of

STATUS = "CRV_MAXCOLS : 31"  # is printed by "crv -s"


def run_section(box, section, directory=PACKAGES, path=PATH):
    """Runs in one shell that ends at the first failure. "crv -s" ends with 1, as texts do."""
    script = "\n".join(f"{line} || [ $? -eq 1 ]" if line.endswith("crv -s") else line
                       for line in commands_of(section))
    home = box.base / "home"
    home.mkdir()
    return box.run_command("bash", "-e", "-c", script, cwd=directory, HOME=str(home), PATH=path)


def test_page_names_all_packages(box):
    made = [path.name for path in PACKAGES.glob("crv*")]
    box.expect("missing names", [name for name in made if f"`{name}`" not in PAGE.read_text()], [])


def test_checksums_are_ok(box):
    printed = run_section(box, "Installing, removing, printing")
    box.expect("sums", printed.count(": OK\n"), len(list(PACKAGES.glob("crv*"))))


def test_debian_and_ubuntu(box):
    root = box.make_root()
    dpkg = " ".join(as_root("dpkg", f"--root={root}", "--log=/dev/null", "--force-not-root"))
    (box.bin / "crv").unlink()
    box.add_tool("sudo", 'exec "$@"\n')
    box.add_tool("apt", f'action=$1; shift; exec {dpkg} --$action "$@"\n')
    printed = run_section(box, "Debian and Ubuntu", path=f"{root}/usr/bin:{box.bin}:{PATH}")
    box.assertIn(STATUS, printed)
    top = DATABASE.split("/")[0]
    box.expect("remaining", [name for name in listing(root) if not name.startswith(top)], [])


def test_fedora_and_relatives(box):
    root = box.base / "root"
    root.mkdir()
    rpm = f"rpm --root {root} --dbpath /var/lib/rpm --nodeps"
    (box.bin / "crv").unlink()
    box.add_tool("sudo", 'exec "$@"\n')
    box.add_tool("dnf", 'case $1 in install) action=--install ;; remove) action=--erase ;; esac\n'
                        f'shift; exec {rpm} $action "$@"\n')
    printed = run_section(box, "Fedora and relatives", path=f"{root}/usr/bin:{box.bin}:{PATH}")
    box.assertIn(STATUS, printed)
    left = [path for path in (root / "usr").rglob("*") if not path.is_dir()]
    box.expect("remaining", left, [])


def test_any_other_linux(box):
    box.assertIn(STATUS, run_section(box, "Any other Linux"))
    box.expect("remaining", listing(box.base / "home"), [])


def test_from_the_source(box):
    shutil.copy(package(f"crv-{VERSION}.tar.gz"), box.dir)
    box.assertIn(STATUS, run_section(box, "From the source", box.dir))
    files = [path for path in (box.base / "home").rglob("*") if not path.is_dir()]
    box.expect("remaining", files, [])


def begin_tutorial(box, section, directory, path, moved=("", "")):
    """Runs a beginning of the tutorial with some path moved, then draws a picture in the copy."""
    lines = [*commands_of(section, TUTORIAL), *commands_of("A chart", TUTORIAL),
             "crv -r 0,38:3 -f run1.req -p || [ $? -eq 1 ]"]
    home = box.base / "home"
    home.mkdir()
    box.run_command("bash", "-e", "-c", "\n".join(lines).replace(*moved), cwd=directory,
                    HOME=str(home), PATH=path, CRV_PRINTCHAIN="crv2png")
    made = set(listing(home / "crv-examples")) - set(listing(ROOT / "examples"))
    box.expect("files of the chart", sorted(made), ["crv.png", "crv.ps"])


def test_tutorial_begins_from_debian_package(box):
    box.run_command("dpkg-deb", "--extract", deb(), box.base / "deb")
    (box.bin / "crv").unlink()
    usr = f"{box.base}/deb/usr"
    begin_tutorial(box, "From the Debian package", box.dir, f"{usr}/bin:{PATH}", ("/usr", usr))


def test_tutorial_begins_from_archive(box):
    begin_tutorial(box, "From the Linux archive", PACKAGES, PATH)


def test_tutorial_begins_from_source(box):
    """With the program that was built, because test_from_the_source has compiled it."""
    box.add_tool("cmake", f"mkdir -p build/release; ln -sf '{BUILT}' build/release/crv\n")
    source = box.unpack_source()
    begin_tutorial(box, "From the source", source, f"{box.bin}:{PATH}")


main("dpkg", "rpm", "cmake", "tar", "sha256sum", "gs")
