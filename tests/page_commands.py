# tests/page_commands - the commands that docs/install.md shows, for the tests that run them.
import pathlib
import re

PAGE = pathlib.Path(__file__).resolve().parents[1] / "docs/install.md"


def commands_of(section):
    """The indented lines below a heading, or above all headings but the first."""
    parts = re.split(r"^##? (.*)\n", PAGE.read_text(), flags=re.M)[1:]
    lines = dict(zip(parts[::2], parts[1::2]))[section].splitlines()
    return [line.strip() for line in lines if line.startswith("    ")]
