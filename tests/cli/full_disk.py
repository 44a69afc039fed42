#!/usr/bin/env python3
"""Full disks, for everything that the program writes."""
from harness import REQ, SELECTED, WROTE_NOTHING, draw, drawing, main, reading

LONG_REQ = b"\nrun\n1\n7 1 0 0 0\n" + b"1\n10\n" * 2000  # makes a table of 50 kB
LOST = "%crv_01-e-out, Standard output could not be written, messages are lost\n"
NO_SPACE = " crv_84-f-fwrite, in crv_writecols() : No space left on device\n"


def fill(box):
    """Uses up the disk."""
    with open(box.path("rest"), "wb", buffering=0) as out:
        try:
            while True:
                out.write(bytes(4096))
        except OSError:
            pass


def test_incomplete_table_is_removed(box):
    box.mount("32k")
    box.write("a.req", LONG_REQ)
    box.expect_run("table", box.crv("-r", "0,7", "-fd", "a.req"),
                   reading("a.req", 2000) + '%crv_84-i-wri, Writing "a.dat" ...\n\n', NO_SPACE)
    box.expect("files", box.names(), ["a.req"])


def test_complete_tables_stay(box):
    box.mount("32k")
    box.write("a.req", REQ)
    box.write("b.req", LONG_REQ)
    box.expect_ending("tables", box.crv("-r", "7", "-fd", typed=b"a\n"),
                      '%crv_84-i-wri, Writing "b.dat" ...\n\n', NO_SPACE)
    box.expect("files", box.names(), ["a.dat", "a.req", "b.req"])
    box.expect("table", box.read("a.dat"), b" 1.0000e+01 \n 2.0000e+01 \n 3.0000e+01 \n")


def test_incomplete_chart_is_printed(box):
    box.mount("8k")
    box.write("a.req", REQ)
    box.expect_run("chart", box.crv("-r", "0,7", "-f", "a.req", "-p", CRV_PRINTCHAIN="wc -c"),
                   drawing("wc -c crv.ps", "4096 crv.ps\n"), status=1)


def test_lost_usage_line_is_ignored(box):
    box.write("a.req", REQ)
    box.path("crv.use").symlink_to("/dev/full")
    box.expect_run("device", box.crv("-u", "-r", "0,7", "-f", "a.req", "-w", "x"),
                   reading("a.req") + WROTE_NOTHING)
    box.path("crv.use").unlink()
    box.mount("8k")
    box.write("crv.use", b"what was there\n" * 273 + b"\n")
    fill(box)
    box.expect_run("disk", box.crv("-u", "-w", "x"), WROTE_NOTHING)
    box.expect("usage file", box.read("crv.use"), b"what was there\n" * 273 + b"\n")


def test_lost_listing_is_reported(box):
    box.mount("8k")
    box.write("a.req", REQ)
    fill(box)
    before = box.names()
    box.expect_run("one file", box.crv("-r", "0,7", "-f", typed=b"1\n"), SELECTED,
                   "    _33-e-fopen, utl_lstfile(): No space left on device\n", 1)
    box.expect_ending("several files", box.crv("-r", "0,7", "-fd", typed=b"1\n"),
                      "%crv_34-f-fil, Improper file selection, num too high \n"
                      "%crv_34-i-val, Selection = -10 through 1 \n",
                      "/bin/ls: write error: No space left on device\n")
    box.expect("files", box.names(), before)


def test_lost_standard_output_is_reported(box):
    box.write("a.req", REQ)
    with open("/dev/full", "wb") as full:
        box.expect_run("value", box.crv("-r", "0,7=2", "-f", "a.req", stdout=full), stderr=LOST)
        box.expect_run("text", box.crv("-h", stdout=full), stderr=LOST, status=1)
        box.expect_run("scan", box.crv("-w", "x", stdout=full), stderr=LOST)
        box.expect_run("chart", draw(box, stdout=full), stderr=LOST, status=1)
    box.expect("printed", box.read("printed"), b"[crv.ps]\n")


main()
