#!/usr/bin/env python3
"""File names with characters that a shell, printf or a terminal treats specially."""
import os

from harness import FORMATS, REQ, SELECTED, TABLE, WROTE_NOTHING, draw, drawing, main, reading

STEMS = [os.fsdecode(stem) for stem in (
    b"two words", b" blanks ", b"it's", b'"quoted"', b"100%", b"%s%n%d", b"$(touch owned)",
    b"`touch owned`", b"a;b&c|d", b"<in>out", b"star*", b"[x]?", b"back\\slash", b"new\nline",
    b"tab\there", b"~", b"#", b"!", b"=", b"k\xc3\xb6rper", b"\xff\xfe", b"\x01\x1b[31m",
    b"x" * 240)]
SELECT = "Select file to be processed? 1, 2, 3, ...: "


def test_every_format_reads_any_name(box):
    for stem in STEMS:
        for form in FORMATS:
            name = stem + ".txt"
            box.write(name, form.data)
            box.expect_run(f"{form.option} {stem}", form.run(box, name),
                           form.reading(name) + WROTE_NOTHING)
            box.path(name).unlink()
    box.expect("files", box.names(), [])


def test_table_is_beside_its_file(box):
    for stem in STEMS:
        for path in (f"./{stem}/{stem}", f"./-{stem}/-{stem}"):
            request, table = path + ".req", path + ".dat"
            box.write(request, REQ)
            box.expect_run(request, box.crv("-r", "0,7", "-fd", request),
                           reading(request) + f'%crv_84-i-wri, Writing "{table}" ...\n\n   \n')
            box.expect(table, box.read(table), TABLE)


def test_printer_command_gets_unquoted_name(box):
    """The shell would interpret the name: here it exits before."""
    for name in (f"{stem}.ps" for stem in STEMS):
        box.expect_run(name, draw(box, name, CRV_PRINTCHAIN="exit 0\n"),
                       drawing(f"exit 0\n {name}"), status=1)
        box.path(name).unlink()
    box.expect("files", box.names(), ["a.req"])


def test_chart_name_may_look_like_option(box):
    for name in ("-", "--", "-5:7.ps", "-q"):
        box.expect_run(name, draw(box, name, CRV_PRINTCHAIN=":"), drawing(f": {name}"), status=1)


def offered(names):
    lines = (f"{number:3} --> {name}\n" for number, name in enumerate(names, 1))
    return SELECTED + " \n" + "".join(lines) + "\n" + SELECT


def reading_picked(name):
    """The messages of a run that reads a file from the list."""
    return f'%crv_05-i-fil, File = "{name}" \n' + reading(name).removeprefix(
        SELECTED + f'%crv_05-i-fil, File to process = "{name}" \n') + WROTE_NOTHING


def test_listed_file_may_have_any_name(box):
    """Except a newline or more than 78 characters: the list shows such a name as several."""
    names = [os.fsdecode(name) for name in sorted(os.fsencode(stem) + b".req" for stem in STEMS)]
    names = [name for name in names if "\n" not in name and len(name) <= 78]
    for name in names:
        box.write(name, REQ)
    for number, name in enumerate(names, 1):
        box.expect_run(name, box.crv("-r", "0,7", "-f", "-w", "x", typed=b"%d\n" % number),
                       offered(names) + reading_picked(name))
    box.crv("-r", "0,7", "-fd", typed=b"a\n")
    tables = [name[:-4] + ".dat" for name in names]
    box.expect("tables", [name for name in tables if box.read(name) != TABLE], [])
    box.expect("files", box.names(), sorted(names + tables))


def test_listed_name_with_newline_is_missing(box):
    box.write("new\nline.req", REQ)
    box.expect_run("second part", box.crv("-r", "0,7", "-f", "-w", "x", typed=b"2\n"),
                   offered(["new", "line.req"]) + '%crv_05-i-fil, File = "line.req" \n'
                   '%crv_83-i-wor, Reading "line.req" ...\n',
                   "    _83-f-fopen: No such file or directory\n", 1)


def test_listing_rejects_name_like_option(box):
    box.write("-a.req", REQ)
    box.write("b.req", REQ)
    result = box.crv("-r", "0,7", "-fd", typed=b"a\n")
    box.expect("several files", (result.stdout.endswith("Selection = 1 through 0 \n"),
                                 result.stderr.startswith("/bin/ls: "), result.status),
               (True, True, 0))
    box.expect_ending("one file", box.crv("-r", "0,7", "-f", "-w", "x", typed=b"1\n"),
                      reading_picked("-a.req"))


main()
