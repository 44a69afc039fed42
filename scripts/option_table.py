"""The option table of the program as Python objects, read from the output of crv_print_options."""
import dataclasses
import pathlib
import subprocess
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[1]
SECTIONS = ("series", "tables", "chart", "texts", "other")


@dataclasses.dataclass
class Form:
    spelling: str
    rest: str  # nothing, ignored, number
    option: str
    value: str  # none, any, plain, table
    value_name: str  # in brackets when the value can be left out
    completion: str  # of the value: a suffix of files, "selection", "chart", or empty
    summary: str  # empty for a form that is in no list
    viewer: str = None  # effect in the viewers: empty without one, None if they reject it

    @property
    def shown(self):
        """The form as the documents show it: -fpN."""
        return self.spelling + ("N" if self.rest == "number" else "")


@dataclasses.dataclass
class Entry:
    """An option with its description and all of its forms."""

    option: str
    section: str
    effect: str
    details: str
    forms: list


def parse(printed):
    """Returns all forms, and the entries of the documents, in their order."""
    rows = [line.split("\t") for line in printed.splitlines()]
    viewers = {row[1]: row[2] for row in rows if row[0] == "viewer"}
    forms = [Form(*row[1:], viewers.get(row[3])) for row in rows if row[0] == "form"]
    listed = [form for form in forms if form.summary]
    entries = [
        Entry(*row[1:], [form for form in listed if form.option == row[1]])
        for row in rows
        if row[0] == "text"
    ]
    if not listed or not entries or len(forms) + len(entries) + len(viewers) != len(rows):
        raise ValueError(f"not an option table: {printed[:200]!r}")
    return forms, entries


def read(program=None):
    """Reads the table from `program`, or from one that is compiled for this purpose."""
    if program:
        return parse(subprocess.run([program], check=True, capture_output=True, text=True).stdout)
    with tempfile.TemporaryDirectory() as scratch:
        program = pathlib.Path(scratch, "print_options")
        subprocess.run(
            [
                "c++",
                "-std=c++20",
                f"-I{ROOT / 'src'}",
                ROOT / "scripts/print_options.cpp",
                "-o",
                program,
            ],
            check=True,
        )
        return read(program)
