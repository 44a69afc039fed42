#!/usr/bin/env python3
"""Contents of the packages and of "cmake --install": program, documents, examples, valid links,
permissions, checksums, no complaint of lintian, and programs that are linked as promised."""
import re
import tarfile

from shared import BUILT, PACKAGES, ROOT, listing, main, package

DOC = "share/doc/crv"
EXAMPLES = sorted(path.name for path in (ROOT / "examples").iterdir()
                  if path.suffix in (".req", ".mad", ".pos", ".vdr"))
WEB = ("http://", "https://")
HARDENED = {"any address": "DYN (Position-Independent", "read-only relocations": "GNU_RELRO",
            "symbols bound at the start": "BIND_NOW", "guarded stack": "__stack_chk_fail",
            "checked copies": "_chk@"}


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


def test_install(box):
    tree = box.base / "tree"
    box.run_command("cmake", "--install", BUILT.parent, "--prefix", tree)
    box.expect("program", (tree / "bin/crv").exists(), True)
    box.expect("license", (tree / DOC / "LICENSE").read_bytes(), (ROOT / "LICENSE").read_bytes())
    expect_documents(box, tree)


def test_lintian_finds_nothing(box):
    printed = box.run_command("lintian", "--allow-root", "--fail-on", "error,warning",
                              package(".deb"))
    box.expect("lintian", printed, "")


def test_deb_fields(box):
    version = re.search(r"project\(crv VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text())[1]
    printed = box.run_command("dpkg-deb", "--field", package(".deb"))
    fields = dict(re.findall(r"^(\S+): (.*)$", printed, re.M))
    box.assertRegex(fields["Depends"], r"\Alibc6 \(>= [\d.]+\)\Z")
    for name, value in (("Package", "crv"), ("Version", f"{version}-0crv1"),
                        ("Recommends", "ghostscript"),
                        ("Suggests", "cups-bsd | lpr, poppler-utils")):
        box.expect(name, fields[name], value)


def test_deb_contents(box):
    top = box.base / "deb"
    box.run_command("dpkg-deb", "--extract", package(".deb"), top)
    tree = top / "usr"
    box.expect("top directories", listing(top, "*"), ["usr"])
    box.expect("directories below usr", listing(tree, "*"), ["bin", "share"])
    texts = sorted(path.name for path in (tree / DOC).iterdir() if path.is_file())
    box.expect("texts", texts,
               ["CHANGELOG.md", "CONTRIBUTING.md", "README.md", "changelog.Debian.gz",
                "changelog.gz", "copyright"])
    license = re.sub(r"\s+", " ", (ROOT / "LICENSE").read_text().split("\n\n", 2)[2]).strip()
    shown = re.sub(r"\s+(\. )?", " ", (tree / DOC / "copyright").read_text()).strip()
    box.assertIn(license, shown.replace(" . ", " "))
    box.expect("manual pages that are not packed",
               [p.name for p in tree.glob("share/man/*/*") if p.suffix != ".gz"], [])
    expect_documents(box, tree)
    expect_modes(box, tree)
    program = tree / "bin/crv"
    head = box.run_command("readelf", "--wide", "--file-header", "--dynamic", "--program-headers",
                           "--symbols", program)
    for name, mark in HARDENED.items():
        box.expect(name, mark in head, True)
    box.expect("libraries", re.findall(r"NEEDED.*\[(\w+)", head),
               re.findall(r"NEEDED.*\[(lib[cm]|ld)\b", head))
    sections = box.run_command("readelf", "--wide", "--sections", program)
    box.expect("has its own symbols", ".symtab" in sections, False)


def test_archive_contents(box):
    with tarfile.open(package(".tar.gz")) as archive:
        box.expect("owners", {(member.uid, member.gid) for member in archive}, {(0, 0)})
        names = [member.name.split("/") for member in archive]
        box.expect("order", names, sorted(names))
    tree = box.unpack(package(".tar.gz"))
    expect_documents(box, tree)
    expect_modes(box, tree)
    head = box.run_command("readelf", "--wide", "--dynamic", "--program-headers", tree / "bin/crv")
    box.expect("needs a loader", "INTERP" in head, False)
    box.expect("needs a library", "NEEDED" in head, False)


def test_checksums(box):
    names = sorted(path.name for path in PACKAGES.iterdir() if path.name != "SHA256SUMS")
    printed = box.run_command("sha256sum", "--check", "--strict", "SHA256SUMS", cwd=PACKAGES)
    box.expect("sums", printed, "".join(f"{name}: OK\n" for name in names))


main("dpkg-deb", "readelf", "cmake", "lintian")
