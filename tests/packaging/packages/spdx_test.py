#!/usr/bin/env python3
"""The SPDX document of the release has the elements that version 2.3 requires, and what it says of
each package is true: sums, files, verification code, linked libraries."""
import hashlib
import json
import re
import tarfile
import zipfile

from shared import PACKAGES, VERSION, archive, main, package

REQUIRED = {"packages": {"SPDXID", "name", "downloadLocation"},
            "files": {"SPDXID", "fileName", "checksums"},
            "relationships": {"spdxElementId", "relationshipType", "relatedSpdxElement"},
            "hasExtractedLicensingInfos": {"licenseId", "extractedText"}}
LIBRARIES = {"_amd64.deb": ["gcc-12"], "_arm64.deb": ["gcc-12"],
             ".x86_64.rpm": ["gcc-12", "glibc"], ".aarch64.rpm": ["gcc-12", "glibc"],
             "-linux-x86_64.tar.gz": ["gcc-12", "glibc"],
             "-linux-aarch64.tar.gz": ["gcc-12", "glibc"],
             "-windows-x86_64.zip": ["gcc-12", "mingw-w64"], f"crv-{VERSION}.tar.gz": []}

VALIDATE = """
import license_expression, sys
licenses = license_expression.get_spdx_licensing()
print([fault for one in sys.argv[1:] for fault in licenses.validate(one).errors])
"""


def document():
    return json.loads(package("crv-*.spdx.json").read_text())


def packages_by_file():
    return {one["packageFileName"]: one for one in document()["packages"]
            if "packageFileName" in one}


def related(name, kind):
    """The elements to which a package has a relationship."""
    found = document()
    elements = {one["SPDXID"]: one for one in [*found["packages"], *found["files"]]}
    own = packages_by_file()[name]["SPDXID"]
    return [elements[one["relatedSpdxElement"]] for one in found["relationships"]
            if one["spdxElementId"] == own and one["relationshipType"] == kind]


def sum_of(element, algorithm):
    return next(one["checksumValue"] for one in element["checksums"]
                if one["algorithm"] == algorithm)


def test_document_has_required_elements(box):
    found = document()
    for field, value in (("spdxVersion", "SPDX-2.3"), ("dataLicense", "CC0-1.0"),
                         ("SPDXID", "SPDXRef-DOCUMENT"), ("name", f"crv-{VERSION}")):
        box.expect(field, found[field], value)
    box.assertRegex(found["documentNamespace"], r"\Ahttps://[^#]+-[0-9a-f]{64}\Z")
    box.assertRegex(found["creationInfo"]["created"], r"\A\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ\Z")
    box.assertTrue(all(re.match(r"(Person|Organization|Tool): ", creator)
                       for creator in found["creationInfo"]["creators"]))
    for kind, fields in REQUIRED.items():
        box.expect(f"{kind} without a required field",
                   [one for one in found[kind] if not fields <= set(one)], [])


def test_identifiers_are_valid_and_known(box):
    found = document()
    names = [found["SPDXID"], *(one["SPDXID"] for one in [*found["packages"], *found["files"]])]
    box.expect("identifiers that occur twice", len(names), len(set(names)))
    box.expect("invalid identifiers",
               [name for name in names if not re.fullmatch(r"SPDXRef-[A-Za-z0-9.-]+", name)], [])
    used = {one[end] for one in found["relationships"]
            for end in ("spdxElementId", "relatedSpdxElement")}
    box.expect("unknown identifiers", sorted(used - set(names)), [])


def test_license_expressions_are_valid(box):
    found = document()
    own = {one["licenseId"] for one in found["hasExtractedLicensingInfos"]}
    declared = {one["licenseDeclared"] for one in found["packages"]} - own
    # The Python of the system has Debian's modules.
    printed = box.run_command("/usr/bin/python3", "-c", VALIDATE, *sorted(declared), "Unknown-1.0")
    box.expect("faults", printed, "['Unknown license key(s): Unknown-1.0']\n")


def test_each_package_is_described(box):
    made = {path.name: hashlib.sha256(path.read_bytes()).hexdigest()
            for path in PACKAGES.iterdir() if path.suffix not in (".json", "")}
    described = {name: sum_of(one, "SHA256") for name, one in packages_by_file().items()}
    box.expect("packages", described, made)


def test_files_are_those_of_the_archives(box):
    for path in (archive("x86_64"), archive("aarch64"), package(f"crv-{VERSION}.tar.gz")):
        with tarfile.open(path) as packed:
            expected = {f"./{member.name}": hashlib.sha256(packed.extractfile(member).read())
                        for member in packed if not member.isdir()}
        expect_files(box, path.name, expected)
    path = package("*.zip")
    with zipfile.ZipFile(path) as packed:
        expected = {f"./{info.filename}": hashlib.sha256(packed.read(info))
                    for info in packed.infolist() if not info.is_dir()}
    expect_files(box, path.name, expected)


def expect_files(box, name, expected):
    described = {one["fileName"]: sum_of(one, "SHA256") for one in related(name, "CONTAINS")}
    box.expect(f"files of {name}", described,
               {file: found.hexdigest() for file, found in expected.items()})


def test_files_are_those_of_the_packages(box):
    for path, command in ((package("*_amd64.deb"), 'dpkg-deb --fsys-tarfile "$1" | tar -x'),
                          (package("*_arm64.deb"), 'dpkg-deb --fsys-tarfile "$1" | tar -x'),
                          (package("*.x86_64.rpm"), 'rpm2archive -n < "$1" | tar -x'),
                          (package("*.aarch64.rpm"), 'rpm2archive -n < "$1" | tar -x')):
        top = box.base / path.name
        top.mkdir()
        box.run_command("sh", "-c", command, "sh", path, cwd=top)
        expected = {f"./{file.relative_to(top)}": hashlib.sha256(file.read_bytes())
                    for file in top.rglob("*") if file.is_file()}
        expect_files(box, path.name, expected)


def test_verification_codes_are_right(box):
    for name, one in packages_by_file().items():
        sums = sorted(sum_of(file, "SHA1") for file in related(name, "CONTAINS"))
        box.expect(name, one["packageVerificationCode"]["packageVerificationCodeValue"],
                   hashlib.sha1("".join(sums).encode()).hexdigest())


def test_linked_libraries_are_named(box):
    for ending, names in LIBRARIES.items():
        path = package(f"*{ending}")
        sources = [one["sourceInfo"].split()[-2] for one in related(path.name, "STATIC_LINK")]
        box.expect(path.name, sources, names)


main("dpkg-deb", "rpm2archive")
