"""The commands of docs/install.md and docs/tutorial.md, for the scripts that run them."""
import re

from .sandbox import ROOT

PAGE = ROOT / "docs/install.md"
TUTORIAL = ROOT / "docs/tutorial.md"


def commands_of(section, page=PAGE):
    """The indented lines below a heading."""
    parts = re.split(r"^##? (.*)\n", page.read_text(), flags=re.M)[1:]
    lines = dict(zip(parts[::2], parts[1::2]))[section].splitlines()
    return [line.strip() for line in lines if line.startswith("    ")]
