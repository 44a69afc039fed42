#!/usr/bin/env python3
"""Writes the SPDX document of a release: what each package contains.

    write_spdx.py DIRECTORY

Reads the packages in DIRECTORY and writes crv-VERSION.spdx.json beside them, in version 2.3 of
SPDX. It names every file with its checksums, and the libraries that are linked statically. The time
of the document is SOURCE_DATE_EPOCH, and its namespace comes from the packages, so that two builds
of the same packages give the same bytes.
"""
import datetime
import hashlib
import io
import json
import os
import pathlib
import re
import subprocess
import sys
import tarfile
import zipfile

from linked_libraries import find_libraries

ORGANIZATION = "Organization: The crv developers"
NAMESPACE = "https://crv.invalid/spdx"
PACKAGES = ("*.deb", "*.rpm", "*.tar.gz", "*.zip")


def files_of_tar(data):
    """Name: bytes, for all files and links to files of a tar archive."""
    with tarfile.open(fileobj=io.BytesIO(data)) as archive:
        return {member.name.removeprefix("./"): archive.extractfile(member).read()
                for member in archive if member.isfile() or member.issym()}


def contents_of(path):
    """Name: bytes, for all files of a package."""
    if path.suffix == ".zip":
        with zipfile.ZipFile(path) as archive:
            return {info.filename: archive.read(info) for info in archive.infolist()
                    if not info.is_dir()}
    if path.suffix == ".deb":
        command = ["dpkg-deb", "--fsys-tarfile", path]
        return files_of_tar(subprocess.run(command, check=True, capture_output=True).stdout)
    if path.suffix == ".rpm":
        with path.open("rb") as package:
            run = subprocess.run(["rpm2archive", "-n"], stdin=package, check=True,
                                 capture_output=True)
        return files_of_tar(run.stdout)
    return files_of_tar(path.read_bytes())


def linkage_of(name):
    """Compiler and linkage of the programs in a package, see linked_libraries.py; None for source.
    """
    if name.endswith(".zip"):
        return "x86_64-w64-mingw32-g++-posix", "windows"
    compiler = "aarch64-linux-gnu-g++" if re.search(r"aarch64|arm64", name) else "g++"
    if name.endswith(".deb"):
        return compiler, "shared"
    return (compiler, "static") if re.search(r"\.rpm$|-linux-", name) else None


def identifier(*words):
    """An SPDX identifier: letters, digits, dots and hyphens."""
    return "SPDXRef-" + re.sub(r"[^A-Za-z0-9.]+", "-", "-".join(words))


def checksum(algorithm, data):
    value = hashlib.new(algorithm, data, usedforsecurity=False).hexdigest()
    return {"algorithm": algorithm.upper(), "checksumValue": value}


def describe_files(package, contents):
    """The file elements of a package, in the order of their names."""
    return [{"SPDXID": identifier("File", package, str(number)), "fileName": f"./{name}",
             "checksums": [checksum("sha1", contents[name]), checksum("sha256", contents[name])],
             "licenseConcluded": "NOASSERTION", "copyrightText": "NOASSERTION"}
            for number, name in enumerate(sorted(contents))]


def describe_package(path, version, contents):
    sums = sorted(checksum("sha1", data)["checksumValue"] for data in contents.values())
    code = checksum("sha1", "".join(sums).encode())["checksumValue"]
    return {"SPDXID": identifier("Package", path.name), "name": "crv", "versionInfo": version,
            "packageFileName": path.name, "supplier": ORGANIZATION,
            "downloadLocation": "NOASSERTION", "filesAnalyzed": True,
            "packageVerificationCode": {"packageVerificationCodeValue": code},
            "checksums": [checksum("sha256", path.read_bytes())],
            "primaryPackagePurpose": "SOURCE" if linkage_of(path.name) is None else "INSTALL",
            "licenseConcluded": "NOASSERTION", "licenseInfoFromFiles": ["NOASSERTION"],
            "licenseDeclared": "MIT", "copyrightText": "Copyright (c) 2026 the crv authors"}


def describe_library(library):
    name, version = library.source.split()
    return {"SPDXID": identifier("Library", name, version), "name": library.kind.title,
            "versionInfo": version, "supplier": "Organization: Debian",
            "sourceInfo": f"Debian source package {name} {version}",
            "downloadLocation": f"http://deb.debian.org/debian#{name}", "filesAnalyzed": False,
            "primaryPackagePurpose": "LIBRARY", "licenseConcluded": "NOASSERTION",
            "licenseDeclared": library.kind.license, "copyrightText": "NOASSERTION",
            "comment": f"The notices are in libraries/{library.kind.name}.txt of the packages."}


def relate(element, kind, other):
    return {"spdxElementId": element, "relationshipType": kind, "relatedSpdxElement": other}


def describe_release(paths, version):
    """Packages, libraries, files and relationships of the document."""
    packages, libraries, files, relations, notices = [], {}, [], [], {}
    for path in paths:
        contents = contents_of(path)
        package = describe_package(path, version, contents)
        packages.append(package)
        relations.append(relate("SPDXRef-DOCUMENT", "DESCRIBES", package["SPDXID"]))
        for file in describe_files(path.name, contents):
            files.append(file)
            relations.append(relate(package["SPDXID"], "CONTAINS", file["SPDXID"]))
        for library in find_libraries(*(linkage_of(path.name) or ("g++", "none"))):
            described = describe_library(library)
            libraries[described["SPDXID"]] = described
            relations.append(relate(package["SPDXID"], "STATIC_LINK", described["SPDXID"]))
            if library.kind.license.startswith("LicenseRef-"):
                notices[library.kind.license] = library.notices.read_text()
    licenses = [{"licenseId": name, "extractedText": text} for name, text in notices.items()]
    return {"packages": [*packages, *libraries.values()], "files": files,
            "relationships": relations, "hasExtractedLicensingInfos": licenses}


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    directory = pathlib.Path(sys.argv[1])
    epoch = int(os.environ["SOURCE_DATE_EPOCH"])
    paths = sorted(path for pattern in PACKAGES for path in directory.glob(f"crv[-_]{pattern}"))
    names = [re.fullmatch(r"crv-(\d+\.\d+\.\d+)\.tar\.gz", path.name) for path in paths]
    version = next(match[1] for match in names if match)
    sums = "".join(checksum("sha256", path.read_bytes())["checksumValue"] for path in paths)
    created = datetime.datetime.fromtimestamp(epoch, datetime.timezone.utc)
    document = {"spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT",
                "name": f"crv-{version}",
                "documentNamespace": f"{NAMESPACE}/crv-{version}-"
                                     + checksum("sha256", sums.encode())["checksumValue"],
                "creationInfo": {"created": created.strftime("%Y-%m-%dT%H:%M:%SZ"),
                                 "creators": [ORGANIZATION, "Tool: scripts/write_spdx.py"]},
                **describe_release(paths, version)}
    text = json.dumps(document, indent=1, ensure_ascii=False)
    (directory / f"crv-{version}.spdx.json").write_text(text + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
