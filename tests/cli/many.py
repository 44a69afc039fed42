#!/usr/bin/env python3
"""Many pairs in a selection, many options on a command line, many fields in a row."""
from harness import (COLUMN, FORMATS, REQ, REQUEST, WROTE_NOTHING, expect_small, main, reading,
                     selecting)

SLOTS = 31


def test_31_pairs_fill_table(box):
    for form in FORMATS[:3]:
        box.write("a.txt", form.data)
        selection = ",".join(["7" if form is REQUEST else "1"] * SLOTS)
        box.expect_run(form.option, form.run(box, "a.txt", selection),
                       form.reading("a.txt", 3, selection) + WROTE_NOTHING)


def test_excess_pairs_are_rejected(box):
    """65,535 pairs are the longest selection that a command line takes."""
    box.write("a.txt", REQ)
    for count in (SLOTS + 1, 1000, 65_535):
        selection = ",".join(["7"] * count)
        for option in ("-f", "-fm", "-fp", "-fa", "-fma"):
            box.expect_run(f"{option} {count}", box.crv("-r", selection, option, "a.txt"),
                           selecting(selection, "a.txt"), f'%crv_05-f-col, "a.txt" would need '
                           f"{count} columns, 31 of 31 are free\n")
    box.expect("files", box.names(), ["a.txt"])


def test_1000_files_fill_table(box):
    box.write("a.req", REQ)
    selected, file = reading("a.req").split("\n", 1)
    box.expect_run("request files", box.crv("-r", "0,7", *["-f", "a.req"] * 1000),
                   f"{selected}\n{file}%crv_05-i-tim, Redundant time specification ignored.\n"
                   + file * (SLOTS - 2) + '%crv_05-i-fil, File to process = "a.req" \n',
                   '%crv_05-f-col, "a.req" would need 1 columns, 0 of 31 are free\n')


def test_1000_options_are_processed(box):
    selected = '%crv_05-i-ids, Request ids   = "7" \n'
    box.expect_run("short names", box.crv("-r", "7", *["-f", "ab"] * 1000, "-w", "x"),
                   selected + '%crv_05-i-fil, File to process = "ab" \n' * 1000 + WROTE_NOTHING)
    box.expect_run("unknown letters", box.crv("-r", "7", *["-fz", "a.req"] * 1000, "-w", "x"),
                   selected + WROTE_NOTHING)
    box.expect_run("titles", box.crv(*["-t", "title"] * 1000, "-w", "x"), WROTE_NOTHING)


def test_row_is_read_in_pieces(box):
    """The pieces of a row of 10,000,000 fields have 1023 characters. The first has 512 fields, and
    that is the number of columns; each piece is a row."""
    with open(box.path("wide.pos"), "wb") as out:
        for _ in range(100):
            out.write(b"1 " * 100_000)
        out.write(b"\n")
    pieces = 20_000_001 // 1023 + 1
    for column in (512, 513, 10_000_000):
        end, warnings = f'%crv_94-f-nocol, Column "{column}" does not exist!\n', ""
        if column == 512:
            end = f"%crv_94-i-pts, file wide.pos has {pieces} steps\n" + WROTE_NOTHING
            warnings = (f'%crv_94-w-win, {pieces - 10_000} of {pieces} points of "wide.pos" are '
                        "outside the default time window -100:10000 and left out, see -tm\n"
                        '%crv_94-w-mea, Means of "wide.pos" are sums over the values in 10000 '
                        f"rows divided by the number of values in all {pieces} rows\n")
        selection = f"0,{column}"
        box.expect_run(column, COLUMN.run(box, "wide.pos", selection, "-fp0"),
                       COLUMN.opening("wide.pos", selection)
                       + "%crv_94-i-val, file wide.pos has 512 columns.\n" + end, warnings)
    expect_small(box, "ten million columns")


main()
