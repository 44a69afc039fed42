"""The commands of docs/install.md, for the scripts that run them."""
import re

from .sandbox import ROOT

PAGE = ROOT / "docs/install.md"


def commands_of(section):
    """The indented lines below a heading."""
    parts = re.split(r"^##? (.*)\n", PAGE.read_text(), flags=re.M)[1:]
    lines = dict(zip(parts[::2], parts[1::2]))[section].splitlines()
    return [line.strip() for line in lines if line.startswith("    ")]
