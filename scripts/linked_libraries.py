#!/usr/bin/env python3
"""The libraries that are linked statically into the packaged programs, with their licenses.

    linked_libraries.py COMPILER LINKAGE VERSION DIRECTORY

LINKAGE is "shared" (only the C++ library and the runtime of the compiler are linked statically),
"static" (also the C library), "windows", or "none" (source). Writes the texts that the licenses
require into DIRECTORY: a README.txt, and copyright notices and licenses. They come from the Debian
packages that contain the libraries.
"""
import pathlib
import re
import shutil
import subprocess
import sys
from typing import NamedTuple

COMMON_LICENSES = pathlib.Path("/usr/share/common-licenses")
RUNTIME_FILES = {"shared": ["libstdc++.a", "libgcc.a"],
                 "static": ["libstdc++.a", "libgcc.a", "libc.a"],
                 "windows": ["libstdc++.a", "libgcc.a", "libmingw32.a"],
                 "none": []}


class Kind(NamedTuple):
    """A library: its name, its SPDX license, and the license texts that its notices refer to."""
    name: str
    title: str
    license: str
    texts: tuple
    terms: str


GCC = Kind("gcc", "C++ library and runtime of GCC", "GPL-3.0-or-later WITH GCC-exception-3.1",
           ("GPL-3",), """\
The GCC Runtime Library Exception, which is in gcc.txt, permits to distribute a program that was
compiled with GCC under any terms. The complete GNU General Public License is in GPL-3.txt.
""")
GLIBC = Kind("glibc", "GNU C Library", "LGPL-2.1-or-later", ("LGPL-2.1",), """\
The GNU Lesser General Public License, version 2.1, in LGPL-2.1.txt, covers the use of this library.
Its section 6 applies to these programs, and is met as follows:

- You may modify the programs for your own use, and reverse engineer them to debug such changes.
- To link the programs with a modified C library, build them from their complete source,
  {source}, which is offered in the same place as this package: install the modified
  library, then run "cmake --preset static && cmake --build --preset static".
- The complete source of the library is the Debian source package named above. It is offered in the
  same place as this package. For at least three years from the day of this release the crv
  developers also send it, together with the source of the programs, to anyone who has this package
  and asks for it, for no more than the cost of sending it.
""")
MINGW = Kind("mingw-w64", "Runtime of MinGW-w64", "LicenseRef-mingw-w64", (), """\
The notices in mingw-w64.txt must stay with the programs.
""")
KINDS = {"libstdc++.a": GCC, "libgcc.a": GCC, "libc.a": GLIBC, "libmingw32.a": MINGW}


class Library(NamedTuple):
    kind: Kind
    source: str  # name and version of the Debian source package
    notices: pathlib.Path


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()


def source_package(package, name):
    """Name and version of the source package; a cross library was built from that of another."""
    fields = output_of("dpkg-query", "-W", "-f",
                       "${source:Package} ${source:Version}\n${Built-Using}\n", package)
    own, used = fields.split("\n", 1) if "\n" in fields else (fields, "")
    found = re.search(rf"\b({name}(?:-\d+)?) \(= ([^)]+)\)", used)
    return " ".join(found.groups()) if found else own


def owner(path):
    """The Debian package that contains a file."""
    return output_of("dpkg-query", "-S", path).split(": ")[0].split(":")[0]


def find_libraries(compiler, linkage):
    """The libraries, in the order of the runtime files; one for each kind."""
    found = {}
    for name in RUNTIME_FILES[linkage]:
        kind = KINDS[name]
        if kind in found:
            continue
        path = pathlib.Path(output_of(compiler, f"-print-file-name={name}")).resolve()
        package = owner(path)
        notices = pathlib.Path("/usr/share/doc", package, "copyright")
        found[kind] = Library(kind, source_package(package, kind.name), notices)
    return list(found.values())


def write_texts(libraries, version, directory):
    directory.mkdir(parents=True, exist_ok=True)
    parts = ["The programs of this package are licensed under the terms of the MIT license. They "
             "contain\nparts of these libraries, which are linked statically:\n"]
    for library in libraries:
        kind = library.kind
        terms = kind.terms.format(source=f"crv-{version}.tar.gz")
        parts.append(f"{kind.title}\n"
                     f"    license           {kind.license.removeprefix('LicenseRef-')}\n"
                     f"    Debian source     {library.source}\n"
                     f"    notices           {kind.name}.txt\n\n{terms}")
        shutil.copyfile(library.notices, directory / f"{kind.name}.txt")
        for text in kind.texts:
            shutil.copyfile(COMMON_LICENSES / text, directory / f"{text}.txt")
    (directory / "README.txt").write_text("\n".join(parts))


def main():
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    compiler, linkage, version, directory = sys.argv[1:]
    write_texts(find_libraries(compiler, linkage), version, pathlib.Path(directory))


if __name__ == "__main__":
    main()
