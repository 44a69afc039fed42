#!/usr/bin/env python3
"""File names with characters that mean something to a shell, to printf or to a terminal, or nothing to anybody."""
import os

from harness import CHART, CHART_DONE, FORMATS, WROTE_NOTHING, main, printing, reading, selecting

STEMS = (b"two words", b" blanks ", b"it's", b'"quoted"', b"100%", b"%s%n%d", b"$(touch owned)", b"`touch owned`", b"a;b&c|d",
         b"<in>out", b"star*", b"[x]?", b"back\\slash", b"new\nline", b"tab\there", b"~", b"#", b"!", b"=",
         b"k\xc3\xb6rper", b"\xff\xfe", b"\x01\x1b[31m", b"x" * 240)
TABLE = b" 1.0000e+00  1.0000e+01 \n 2.0000e+00  2.0000e+01 \n 3.0000e+00  3.0000e+01 \n"


def any_name_is_read_in_every_format(place):
    for stem in STEMS:
        for option, selection, data, _, _, begin, end in FORMATS:
            name = os.fsdecode(stem) + ".txt"
            path = place.write(name, data)
            place.expect_run(f"{option} {stem}", place.run("-r", selection, option, name, "-w", "x"),
                             selecting(selection, name) + begin.format(name) + end.format(name, 3) + WROTE_NOTHING)
            path.unlink()
    place.expect("files", place.names(), [])


def a_table_lies_beside_a_file_of_any_name_in_a_folder_of_any_name(place):
    for stem in STEMS:
        stem = os.fsdecode(stem)
        for path, table in ((f"{stem}/{stem}.req", f"{stem}/{stem}.dat"), (f"-{stem}/-{stem}.req", f"-{stem}/-{stem}.dat")):
            place.write(path)
            path, table = f"./{path}", f"./{table}"
            place.expect_run(path, place.run("-r", "0,7", "-fd", path),
                             reading(path) + f'%crv_84-i-wri, Writing "{table}" ...\n\n   \n')
            place.expect(table, place.read(table), TABLE)


def a_chart_takes_any_name_and_the_printer_command_gets_it_as_it_is(place):
    """What the shell makes of it is another matter: here it has left before."""
    place.write("a.req")
    for stem in STEMS:
        name = os.fsdecode(stem) + ".ps"
        chain = "exit 0\n"
        place.expect_run(name, place.run("-r", "0,7", "-f", "a.req", "-p", name, environment={"CRV_PRINTCHAIN": chain}),
                         reading("a.req") + CHART + printing(chain + " " + name) + CHART_DONE, status=1)
        place.expect(name, (place.read(name) or b"").endswith(b"showpage \n"), True)
        (place.folder / name).unlink()
    place.expect("files", place.names(), ["a.req"])


def a_chart_name_that_looks_like_an_option_is_a_name(place):
    place.write("a.req")
    for name in ("-", "--", "-5:7.ps", "-q"):
        place.expect_run(name, place.run("-r", "0,7", "-f", "a.req", "-p", name, environment={"CRV_PRINTCHAIN": ":"}),
                         reading("a.req") + CHART + printing(f": {name}") + CHART_DONE, status=1)
        place.expect(name, (place.read(name) or b"").endswith(b"showpage \n"), True)


def offered(names):
    return " \n" + "".join(f"{number:3} --> {name}\n" for number, name in enumerate(names, 1)) + "\n"


def a_picked_file_may_have_any_name_without_a_line_end(place):
    """A name of more than 78 characters or with a line end shows as several, and none of them is a file."""
    names = [os.fsdecode(name) for name in sorted(stem + b".req" for stem in STEMS)]
    names = [name for name in names if "\n" not in name and len(name) <= 78]
    for name in names:
        place.write(name)
    asked = '%crv_05-i-ids, Request ids   = "0,7" \n' + offered(names) + "Select file to be processed? 1, 2, 3, ...: "
    for number, name in enumerate(names, 1):
        place.expect_run(name, place.run("-r", "0,7", "-f", "-w", "x", typed=b"%d\n" % number),
                         asked + f'%crv_05-i-fil, File = "{name}" \n' + reading(name)[len(selecting("0,7", name)):]
                         + WROTE_NOTHING)
    place.run("-r", "0,7", "-fd", typed=b"a\n")
    place.expect("tables", [name for name in names if place.read(name[:-4] + ".dat") != TABLE], [])
    place.expect("files", place.names(), sorted(names + [name[:-4] + ".dat" for name in names]))


def a_listed_name_with_a_line_end_is_no_file(place):
    place.write("new\nline.req")
    place.expect_run("second part", place.run("-r", "0,7", "-f", "-w", "x", typed=b"2\n"),
                     '%crv_05-i-ids, Request ids   = "0,7" \n' + offered(["new", "line.req"])
                     + 'Select file to be processed? 1, 2, 3, ...: %crv_05-i-fil, File = "line.req" \n'
                     '%crv_83-i-wor, Reading "line.req" ...\n', "    _83-f-fopen: No such file or directory\n", 1)


def a_listed_name_that_looks_like_an_option_is_complained_of_by_the_listing_command(place):
    place.write("-a.req")
    place.write("b.req")
    stdout, stderr, status = place.run("-r", "0,7", "-fd", typed=b"a\n")
    place.expect("several files", (stdout.endswith("Selection = 1 through 0 \n"), stderr.startswith("/bin/ls: "), status),
                 (True, True, 0))
    place.expect_ending("one file", place.run("-r", "0,7", "-f", "-w", "x", typed=b"1\n"),
                        '%crv_05-i-fil, File = "-a.req" \n' + reading("-a.req")[len(selecting("0,7", "-a.req")):]
                        + WROTE_NOTHING)


main(any_name_is_read_in_every_format, a_table_lies_beside_a_file_of_any_name_in_a_folder_of_any_name,
     a_chart_takes_any_name_and_the_printer_command_gets_it_as_it_is, a_chart_name_that_looks_like_an_option_is_a_name,
     a_picked_file_may_have_any_name_without_a_line_end, a_listed_name_with_a_line_end_is_no_file,
     a_listed_name_that_looks_like_an_option_is_complained_of_by_the_listing_command)
