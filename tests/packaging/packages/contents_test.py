#!/usr/bin/env python3
"""Contents of the packages and of "cmake --install": programs, documents, examples, licenses, valid
links, permissions, checksums, no complaint of lintian, and programs linked as promised."""
import re
import tarfile
import zipfile

from shared import (BUILT, DEBIAN_NAMES, PACKAGES, PROGRAMS, ROOT, VERSION, archive, deb,
                    listing, main, package)

DOC = "share/doc/crv"
EXAMPLES = sorted(path.name for path in (ROOT / "examples").iterdir()
                  if path.suffix in (".req", ".mad", ".pos", ".vdr"))
WEB = ("http://", "https://")
HARDENED = {"any address": "DYN (Position-Independent", "read-only relocations": "GNU_RELRO",
            "symbols bound at the start": "BIND_NOW", "guarded stack": "__stack_chk_fail",
            "checked copies": "_chk@"}
COMPANIONS = ["crv2pdf", "crv2png", "crv2svg"]
# License texts and notices of the libraries in a package, and words of their licenses.
RUNTIME = {"README.txt": "C++ library and runtime of GCC",
           "gcc.txt": "GCC RUNTIME LIBRARY EXCEPTION",
           "GPL-3.txt": "GNU GENERAL PUBLIC LICENSE"}
C_LIBRARY = RUNTIME | {"README.txt": "GNU C Library", "glibc.txt": "GNU C Library",
                       "LGPL-2.1.txt": "GNU LESSER GENERAL PUBLIC LICENSE"}
WINDOWS = RUNTIME | {"README.txt": "Runtime of MinGW-w64", "mingw-w64.txt": "MinGW"}


def expect_documents(box, tree):
    """All documents are there, and the targets of their links: nothing outside of `tree`."""
    doc = tree / DOC
    pages = ["README.md", "CONTRIBUTING.md", "bench/README.md",
             *(str(path.relative_to(ROOT)) for path in (ROOT / "docs").rglob("*.*"))]
    box.expect("missing documents", [page for page in pages if not (doc / page).exists()], [])
    box.expect("examples", listing(doc / "examples"), EXAMPLES)
    for page in sorted(doc.rglob("*.md")):
        links = re.findall(r"\]\(([^)#]+)(?:#[^)]*)?\)", page.read_text())
        broken = {link for link in links if not link.startswith(WEB)
                  and not ((page.parent / link).exists()
                           and (page.parent / link).resolve().is_relative_to(doc.resolve()))}
        box.expect(f"broken links of {page.name}", sorted(broken), [])


def expect_modes(box, tree):
    for path in [tree, *tree.rglob("*")]:
        if not path.is_symlink():
            executable = path.is_dir() or path.parent.name == "bin"
            box.expect(f"permissions of {path.relative_to(tree)}",
                       oct(path.stat().st_mode & 0o777), oct(0o755 if executable else 0o644))


def expect_libraries(box, tree, texts):
    """The licenses of what is linked statically are there, and no others."""
    directory = tree / DOC / "libraries"
    box.expect("texts of libraries", listing(directory), sorted(texts))
    for name, words in texts.items():
        box.assertIn(words, (directory / name).read_text(), name)


def test_install(box):
    tree = box.base / "tree"
    box.run_command("cmake", "--install", BUILT.parent, "--prefix", tree)
    box.expect("programs", listing(tree / "bin"), sorted([*PROGRAMS, *COMPANIONS]))
    box.expect("license", (tree / DOC / "LICENSE").read_bytes(), (ROOT / "LICENSE").read_bytes())
    expect_documents(box, tree)


def test_lintian_finds_nothing(box):
    for processor in DEBIAN_NAMES:
        printed = box.run_command("lintian", "--allow-root", "--fail-on", "error,warning",
                                  deb(processor))
        box.expect(f"lintian on {processor}", printed, "")


def test_deb_fields(box):
    for processor, name in DEBIAN_NAMES.items():
        printed = box.run_command("dpkg-deb", "--field", deb(processor))
        fields = dict(re.findall(r"^(\S+): (.*)$", printed, re.M))
        box.assertRegex(fields["Depends"], r"\Alibc6 \(>= [\d.]+\)\Z")
        for field, value in (("Package", "crv"), ("Version", f"{VERSION}-0crv1"),
                             ("Architecture", name), ("Recommends", "ghostscript"),
                             ("Suggests", "cups-bsd | lpr, poppler-utils")):
            box.expect(field, fields[field], value)


def expect_deb_contents(box, processor):
    top = box.base / processor
    box.run_command("dpkg-deb", "--extract", deb(processor), top)
    tree = top / "usr"
    box.expect("top directories", listing(top, "*"), ["usr"])
    box.expect("directories below usr", listing(tree, "*"), ["bin", "share"])
    box.expect("programs", listing(tree / "bin"), sorted([*PROGRAMS, *COMPANIONS]))
    texts = sorted(path.name for path in (tree / DOC).iterdir() if path.is_file())
    box.expect("texts", texts,
               ["CHANGELOG.md", "CONTRIBUTING.md", "README.md", "changelog.Debian.gz",
                "changelog.gz", "copyright"])
    license = re.sub(r"\s+", " ", (ROOT / "LICENSE").read_text().split("\n\n", 2)[2]).strip()
    shown = re.sub(r"\s+(\. )?", " ", (tree / DOC / "copyright").read_text()).strip()
    box.assertIn(license, shown.replace(" . ", " "))
    pages = listing(tree / "share/man/man1")
    box.expect("manual pages", pages,
               sorted(f"{path.name}.gz" for path in (ROOT / "man").glob("*.1")))
    expect_documents(box, tree)
    expect_libraries(box, tree, RUNTIME)
    expect_modes(box, tree)
    for program in PROGRAMS:
        expect_hardened(box, tree / "bin" / program)


def expect_hardened(box, program):
    head = box.run_command("readelf", "--wide", "--file-header", "--dynamic", "--program-headers",
                           "--symbols", program)
    for name, mark in HARDENED.items():
        box.expect(f"{program.name}: {name}", mark in head, True)
    box.expect("libraries", re.findall(r"NEEDED.*\[(\w+)", head),
               re.findall(r"NEEDED.*\[(lib[cm]|ld)\b", head))
    sections = box.run_command("readelf", "--wide", "--sections", program)
    box.expect("has its own symbols", ".symtab" in sections, False)


def test_deb_contents(box):
    for processor in DEBIAN_NAMES:
        expect_deb_contents(box, processor)


def expect_static(box, program):
    head = box.run_command("readelf", "--wide", "--dynamic", "--program-headers", program)
    box.expect(f"{program.name} needs a loader", "INTERP" in head, False)
    box.expect(f"{program.name} needs a library", "NEEDED" in head, False)


def test_archive_contents(box):
    for processor in DEBIAN_NAMES:
        with tarfile.open(archive(processor)) as packed:
            box.expect("owners", {(member.uid, member.gid) for member in packed}, {(0, 0)})
            names = [member.name.split("/") for member in packed]
            box.expect("order", names, sorted(names))
        tree = box.unpack(archive(processor))
        box.expect("programs", listing(tree / "bin"), sorted([*PROGRAMS, *COMPANIONS]))
        expect_documents(box, tree)
        expect_libraries(box, tree, C_LIBRARY)
        expect_modes(box, tree)
        for program in PROGRAMS:
            expect_static(box, tree / "bin" / program)


def test_rpm_contents(box):
    """The package has the same programs and documents as the archive, below /usr."""
    for processor in DEBIAN_NAMES:
        top = box.base / "rpm" / processor
        top.mkdir(parents=True)
        box.run_command("sh", "-c", 'rpm2archive -n < "$1" | tar -x -C "$2"', "sh",
                        package(f"*.{processor}.rpm"), top)
        tree, same = top / "usr", box.unpack(archive(processor))
        box.expect("top directories", listing(top, "*"), ["usr"])
        for directory in ("bin", DOC):
            for name in listing(same / directory):
                if (same / directory / name).is_file():
                    box.expect(name, (tree / directory / name).read_bytes(),
                               (same / directory / name).read_bytes())
        box.expect("programs", listing(tree / "bin"), listing(same / "bin"))
        expect_documents(box, tree)
        expect_libraries(box, tree, C_LIBRARY)
        expect_modes(box, tree)


def test_zip_names_libraries(box):
    with zipfile.ZipFile(package("*.zip")) as packed:
        packed.extractall(box.base / "zip")
    expect_libraries(box, next((box.base / "zip").iterdir()), WINDOWS)


def test_source_archive_contents(box):
    """The archive has the files of the source, without git and without the output of builds."""
    tree = box.unpack_source()
    box.expect("top directory", tree.name, f"crv-{VERSION}")
    box.expect("directories that do not belong there",
               [name for name in listing(tree, "*") if name in ("build", "dist", ".git")], [])
    names = [path.relative_to(tree) for path in tree.rglob("*") if path.is_file()]
    differing = [str(name) for name in names if name.name != "commit_time.txt"
                 and (tree / name).read_bytes() != (ROOT / name).read_bytes()]
    box.expect("differing files", differing, [])
    box.assertRegex((tree / "cmake/commit_time.txt").read_text(), r"\A\d+\n\Z")
    for pattern in ("src/**/*.cpp", "tests/**/*.py", "tests/cases/*/*", "scripts/*", "*.md"):
        box.expect(f"missing {pattern}",
                   [name for name in listing(ROOT, pattern)
                    if "__pycache__" not in name and not (tree / name).exists()], [])


def test_checksums(box):
    names = sorted(path.name for path in PACKAGES.iterdir() if path.name != "SHA256SUMS")
    printed = box.run_command("sha256sum", "--check", "--strict", "SHA256SUMS", cwd=PACKAGES)
    box.expect("sums", printed, "".join(f"{name}: OK\n" for name in names))


main("dpkg-deb", "readelf", "cmake", "lintian", "rpm2archive")
