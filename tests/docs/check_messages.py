#!/usr/bin/env python3
"""Compares docs/messages.md with the messages of the programs: each has one row, in the order of
routine numbers of its section. Debug traces have a section of their own. The messages are read from
the constant texts of the built programs, crv and those beside it.

    check_messages.py CRV ROOT    compares
    check_messages.py CRV         prints the messages, in the order of routine numbers
"""
import itertools
import pathlib
import re
import struct
import sys

# A constant text that ends in NUL; any bytes can precede it.
TEXT = re.compile(rb"[\n -~]+\0")
MESSAGE = re.compile(r"(?:(?:%%|%c)(?:crv|utl)| (?:crv|utl)|   )_([0-9]+|xx|%d)-[a-z]-?")
MIN_MESSAGES = 150
TRACES = "Debug traces"
ALWAYS_TRACE = re.compile(r"    _(?:\d+|%d)-i-|.*_\d+-v-")
NEVER_TRACE = re.compile(r" *[% ](?:crv|utl|  )_(?:\d+|xx|%d)-[efsw]-")


def read_only_sections(path):
    """The contents of the sections of an ELF file that the program can only read."""
    image = path.read_bytes()
    if image[:4] != b"\x7fELF":
        raise ValueError(f"{path} is no ELF file")
    order = "<" if image[5] == 1 else ">"
    word, table, sizes = ("I", 0x20, 0x2E) if image[4] == 1 else ("Q", 0x28, 0x3A)
    (offset,) = struct.unpack_from(order + word, image, table)
    size, count = struct.unpack_from(order + "HH", image, sizes)
    for number in range(count):
        _, kind, flags, _, start, length = struct.unpack_from(
            f"{order}II{word * 4}", image, offset + number * size
        )
        if (
            kind == 1 and flags & 7 == 2
        ):  # contents that are loaded, neither writable nor executable
            yield image[start : start + length]


def as_printed(text):
    """The text with its conversions, but without line ends and doubled signs."""
    text = re.sub("^%ccrv", "%crv", text)
    return text.replace("%%", "%").replace("\n", "")


def messages(crv):
    """All messages of crv and the programs beside it, sorted by routine number."""
    found = {}
    others = [path for path in sorted(crv.parent.glob("crv-*")) if path.name[4:].isalpha()]
    for section in itertools.chain(*map(read_only_sections, [crv, *others])):
        for text in TEXT.findall(section):
            text = text[:-1].decode()
            match = MESSAGE.search(text)
            if match:
                # Only blanks and line ends belong to a message; before them is other data.
                begin = len(text[: match.start()].rstrip(" \n"))
                shown, number = as_printed(text[begin:]), match.group(1)
                found[shown] = (int(number) if number.isdigit() else 999, shown.strip())
    if len(found) < MIN_MESSAGES:
        raise LookupError(f"{crv} has {len(found)} messages")
    return sorted(found, key=found.get)


def faults_of_section(heading, rows, wanted):
    wrong = NEVER_TRACE if heading == TRACES else ALWAYS_TRACE
    yield from (f"messages.md has a row under {heading}: {row}" for row in rows if wrong.match(row))
    known = [row for row in rows if row in wanted]
    pairs = zip(known, sorted(known, key=wanted.index))
    first = next((pair for pair in pairs if pair[0] != pair[1]), None)
    if first:
        yield f"messages.md has the row for: {first[0]}, where this one comes first: {first[1]}"


def faults_of_page(page, wanted):
    listed = []
    for section in re.split(r"^## ", page, flags=re.M):
        rows = re.findall(r"^\| `` (.*?) `` \|", section, re.M)
        listed += rows
        yield from faults_of_section(section.split("\n", 1)[0], rows, wanted)
    yield from (f"messages.md has no row for: {text}" for text in wanted if text not in listed)
    for row in sorted(set(listed)):
        if row not in wanted:
            yield f"messages.md has a row for what is not printed: {row}"
        elif listed.count(row) > 1:
            yield f"messages.md has {listed.count(row)} rows for: {row}"


def main():
    wanted = messages(pathlib.Path(sys.argv[1]))
    if len(sys.argv) < 3:
        print(*wanted, sep="\n")
        return
    page = pathlib.Path(sys.argv[2], "docs/messages.md").read_text()
    faults = list(faults_of_page(page, wanted))
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
