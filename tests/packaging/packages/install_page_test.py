#!/usr/bin/env python3
# packaging/packages/install_page_test - the commands of docs/install.md do what the page says, line by line in one shell, and leave
# nothing behind. "sudo" runs its command as it stands, "apt" is dpkg on a root folder of the test; the commands for printers
# are run by printer/page_test.
import pathlib
import sys
import tempfile

from shared import DATABASE, TOOLS, as_root, copy_source, expect, finish, fresh_root, given, listing, need, run

sys.path.append(str(pathlib.Path(__file__).resolve().parents[2]))
from page_commands import PAGE, commands_of  # noqa: E402

STATUS = "CRV_MAXCOLS : 31"  # is in what "crv -s" prints
SUMS, DEBIAN, LINUX, SOURCE = ("Installing, removing, printing", "Debian and Ubuntu", "Any other Linux", "From the source")


def shell(lines, folder, home, path=TOOLS["PATH"]):
    """Runs the lines in one shell that ends at the first that fails. "crv -s" ends with 1, as texts do."""
    script = "\n".join(f"{line} || [ $? -eq 1 ]" if line.endswith("crv -s") else line for line in lines)
    return run("bash", "-e", "-c", script, cwd=folder, env={**TOOLS, "HOME": str(home), "PATH": path})


def write_tool(folder, name, text):
    (folder / name).write_text("#!/bin/sh\n" + text)
    (folder / name).chmod(0o755)


def test_the_packages_that_were_made_are_those_of_the_page(packages):
    made = [path.name for path in packages.glob("crv*")]
    expect("packages that the page does not name", [name for name in made if f"`{name}`" not in PAGE.read_text()], [])


def test_the_sums_say_ok(packages, home):
    printed = shell(commands_of(SUMS), packages, home)
    expect("sums", printed.count(": OK\n"), len(list(packages.glob("crv*"))))


def test_debian_and_ubuntu(packages, home):
    with tempfile.TemporaryDirectory() as scratch:
        root, tools = pathlib.Path(scratch, "root"), pathlib.Path(scratch, "tools")
        fresh_root(root)
        tools.mkdir()
        dpkg = " ".join(as_root("dpkg", f"--root={root}", "--log=/dev/null", "--force-not-root"))
        write_tool(tools, "sudo", 'exec "$@"\n')
        write_tool(tools, "apt", f'action=$1; shift; exec {dpkg} --$action "$@"\n')
        printed = shell(commands_of(DEBIAN), packages, home, f"{root}/usr/bin:{tools}:{TOOLS['PATH']}")
        expect("deb: the program says its status", STATUS in printed, True)
        expect("deb: what is left", [name for name in listing(root) if not name.startswith(DATABASE.split("/")[0])], [])


def test_any_other_linux(packages, home):
    printed = shell(commands_of(LINUX), packages, home)
    expect("tar.gz: the program says its status", STATUS in printed, True)
    expect("tar.gz: what is left", listing(home), [])


def test_from_the_source(home):
    with tempfile.TemporaryDirectory() as scratch:
        copy = pathlib.Path(scratch, "source")
        copy_source(copy)
        printed = shell(commands_of(SOURCE), copy, home)
        expect("source: the program says its status", STATUS in printed, True)
        expect("source: files that are left", [path for path in home.rglob("*") if not path.is_dir()], [])


def main():
    need("dpkg", "cmake", "tar", "sha256sum")
    packages, _ = given()
    tests = [lambda home: test_the_packages_that_were_made_are_those_of_the_page(packages),
             lambda home: test_the_sums_say_ok(packages, home), lambda home: test_debian_and_ubuntu(packages, home),
             lambda home: test_any_other_linux(packages, home), test_from_the_source]
    for test in tests:
        with tempfile.TemporaryDirectory() as home:
            test(pathlib.Path(home))
    finish()


if __name__ == "__main__":
    main()
