#!/usr/bin/env python3
"""Every message of the source has its row in docs/messages.md, and every row its message, in the order of routine numbers.

    check_messages.py ROOT           compares
    check_messages.py ROOT --list    prints the messages of the source, in the order of routine numbers
"""
import pathlib
import re
import sys

LITERAL = re.compile(r'"((?:[^"\\]|\\.)*)"')
MESSAGE = re.compile(r"(?:crv|utl|  )_([0-9]+|xx|%d)-[a-z]-?")


def messages(src):
    """All message texts as they are printed, with their conversions, keyed to sort by routine number."""
    found = {}
    for path in sorted(src.rglob("*.cpp")):
        text = re.sub(r"^\s*//.*$", "", path.read_text(), flags=re.M)
        for literal in LITERAL.findall(text):
            match = MESSAGE.search(literal)
            if not match:
                continue
            shown = literal.replace("%c", "%", 1) if literal.startswith("%ccrv") else literal
            shown = shown.replace("%%", "%").replace("\\n", "").replace('\\"', '"')
            number = match.group(1)
            found[shown] = (int(number) if number.isdigit() else 999, shown.strip())
    return sorted(found, key=found.get)


def main():
    root = pathlib.Path(sys.argv[1])
    wanted = messages(root / "src")
    if "--list" in sys.argv:
        print(*wanted, sep="\n")
        return
    rows = re.findall(r"^\| `` (.*?) `` \|", (root / "docs/messages.md").read_text(), re.M)
    faults = [f"messages.md has no row for: {text}" for text in wanted if text not in rows]
    faults += [f"messages.md has a row for what is not printed: {text}" for text in rows if text not in wanted]
    if not faults and rows != wanted:
        row, text = next(pair for pair in zip(rows, wanted) if pair[0] != pair[1])
        faults.append(f"messages.md has the row for: {row}, where this one comes first: {text}")
    print(*faults, sep="\n")
    sys.exit(1 if faults or not wanted else 0)


if __name__ == "__main__":
    main()
