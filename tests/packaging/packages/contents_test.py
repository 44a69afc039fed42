#!/usr/bin/env python3
# packaging/packages/contents_test - what is in the packages and what "cmake --install" lays down: program, documents and examples where
# they belong, links of documents that lead somewhere, sums that verify, no complaint of the package checker, and programs
# linked as each package promises.
import pathlib
import re
import tarfile
import tempfile

from shared import ROOT, expect, finish, given, listing, need, package, run

DOC = "share/doc/crv"
EXAMPLES = sorted(path.name for path in (ROOT / "examples").iterdir() if path.suffix in (".req", ".mad", ".pos", ".vdr"))
FOR_READERS_OF_THE_SOURCE = ("http://", "https://", "../tests/")


def expect_documents(name, tree, elsewhere=()):
    """The documents are all there, and what they link to, but for what the package has elsewhere."""
    doc = tree / DOC
    pages = ["README.md", "CONTRIBUTING.md", "bench/README.md",
             *(str(path.relative_to(ROOT)) for path in (ROOT / "docs").rglob("*.*"))]
    expect(f"{name}: documents that are missing", [page for page in pages if not (doc / page).exists()], [])
    expect(f"{name}: examples", listing(doc / "examples"), EXAMPLES)
    for page in sorted(doc.rglob("*.md")):
        links = re.findall(r"\]\(([^)#]+)(?:#[^)]*)?\)", page.read_text())
        broken = [link for link in links if not link.startswith(FOR_READERS_OF_THE_SOURCE)
                  and not (page.parent / link).exists()]
        expect(f"{name}: links of {page.relative_to(doc)} that lead nowhere", sorted(set(broken) - set(elsewhere)), [])


def expect_modes(name, tree):
    for path in [tree, *tree.rglob("*")]:
        if path.is_symlink():
            continue
        wanted = 0o755 if path.is_dir() or path.parent.name == "bin" else 0o644
        expect(f"{name}: permissions of {path.relative_to(tree)}", oct(path.stat().st_mode & 0o777), oct(wanted))


def test_install_lays_program_documents_and_examples_where_they_belong(built):
    with tempfile.TemporaryDirectory() as prefix:
        tree = pathlib.Path(prefix, "tree")
        run("cmake", "--install", built.parent, "--prefix", tree)
        expect("install: the program", (tree / "bin/crv").exists(), True)
        expect("install: licence", (tree / DOC / "LICENSE").read_bytes(), (ROOT / "LICENSE").read_bytes())
        expect_documents("install", tree)


def test_the_deb_pleases_the_package_checker(packages):
    need("lintian")
    printed = run("lintian", "--allow-root", "--fail-on", "error,warning", package(packages, ".deb"))
    expect("what lintian finds", printed, "")


def test_the_deb_has_what_debian_wants(packages):
    deb = package(packages, ".deb")
    version = re.search(r"project\(crv VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text()).group(1)
    fields = dict(re.findall(r"^(\S+): (.*)$", run("dpkg-deb", "--field", deb), re.M))
    expect("package", fields["Package"], "crv")
    expect("version", fields["Version"], f"{version}-0crv1")
    expect("only the C library is needed", re.fullmatch(r"libc6 \(>= [\d.]+\)", fields["Depends"]) is not None, True)
    expect("recommended", fields["Recommends"], "ghostscript")
    expect("suggested", fields["Suggests"], "cups-bsd | lpr, poppler-utils")
    with tempfile.TemporaryDirectory() as folder:
        run("dpkg-deb", "--extract", deb, folder)
        tree = pathlib.Path(folder, "usr")
        expect("folders at the top", [p.name for p in pathlib.Path(folder).iterdir()], ["usr"])
        expect("folders below usr", sorted(p.name for p in tree.iterdir()), ["bin", "share"])
        expect("texts of the package", sorted(p.name for p in (tree / DOC).iterdir() if p.is_file()),
               ["CONTRIBUTING.md", "README.md", "changelog.Debian.gz", "changelog.gz", "copyright"])
        licence = re.sub(r"\s+", " ", (ROOT / "LICENSE").read_text().split("\n\n", 2)[2]).strip()
        shown = re.sub(r"\s+(\. )?", " ", (tree / DOC / "copyright").read_text()).strip()
        expect("the licence stands in the copyright file", licence in shown.replace(" . ", " "), True)
        expect("pages of the manual that are not packed",
               [p.name for p in tree.glob("share/man/*/*") if p.suffix != ".gz"], [])
        expect_documents("deb", tree, elsewhere=["CHANGELOG.md"])
        expect_modes("deb", tree)
        expect_hardened(tree / "bin/crv")


def expect_hardened(program):
    head = run("readelf", "--wide", "--file-header", "--dynamic", "--program-headers", "--symbols", program)
    for name, mark in (("placed anywhere in memory", "DYN (Position-Independent"), ("relocations read-only", "GNU_RELRO"),
                       ("symbols bound at the start", "BIND_NOW"), ("a guarded stack", "__stack_chk_fail"),
                       ("checked copies", "_chk@")):
        expect(f"deb: {name}", mark in head, True)
    expect("deb: libraries", re.findall(r"NEEDED.*\[(\w+)", head), re.findall(r"NEEDED.*\[(lib[cm]|ld)\b", head))
    expect("deb: stripped of its own symbols", ".symtab" in run("readelf", "--wide", "--sections", program), False)


def test_the_archive_has_one_folder_and_a_program_without_libraries(packages):
    path = package(packages, ".tar.gz")
    with tempfile.TemporaryDirectory() as folder:
        with tarfile.open(path) as archive:
            expect("owners", {(member.uid, member.gid) for member in archive}, {(0, 0)})
            names = [member.name.split("/") for member in archive]
            expect("order", names, sorted(names))
        run("tar", "-xpf", path, "-C", folder)
        top = [entry.name for entry in pathlib.Path(folder).iterdir()]
        expect("the folder has the name of the archive", top, [path.name.removesuffix(".tar.gz")])
        tree = pathlib.Path(folder, top[0])
        expect_documents("archive", tree)
        expect_modes("archive", tree)
        head = run("readelf", "--wide", "--dynamic", "--program-headers", tree / "bin/crv")
        expect("archive: needs no loader", "INTERP" in head, False)
        expect("archive: needs no library", "NEEDED" in head, False)


def test_the_sums_are_those_of_the_packages(packages):
    names = sorted(path.name for path in packages.iterdir() if path.name != "SHA256SUMS")
    printed = run("sha256sum", "--check", "--strict", "SHA256SUMS", cwd=packages)
    expect("sums", printed, "".join(f"{name}: OK\n" for name in names))


def main():
    need("dpkg-deb", "readelf", "cmake")
    packages, built = given()
    test_install_lays_program_documents_and_examples_where_they_belong(built)
    test_the_deb_pleases_the_package_checker(packages)
    test_the_deb_has_what_debian_wants(packages)
    test_the_archive_has_one_folder_and_a_program_without_libraries(packages)
    test_the_sums_are_those_of_the_packages(packages)
    finish()


if __name__ == "__main__":
    main()
