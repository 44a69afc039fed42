#!/usr/bin/env python3
"""Disks that are full, for everything that the program writes."""
from harness import CHART, CHART_DONE, REQ, WROTE_NOTHING, Mounted, main, printing, reading

LONG_REQ = b"\nrun\n1\n7 1 0 0 0\n" + b"1\n10\n" * 2000  # makes a table of 50 kB
LOST = "%crv_01-e-out, Standard output could not be written, messages are lost\n"


def fill(place, name="rest"):
    """Leaves no room on the disk."""
    with open(place.folder / name, "wb", buffering=0) as out:
        try:
            while True:
                out.write(bytes(4096))
        except OSError:
            pass


def a_table_on_a_full_disk_is_reported_and_removed(place):
    with Mounted(place.folder, "32k") as disk:
        if not disk:
            return
        place.write("a.req", LONG_REQ)
        place.expect_run("table", place.run("-r", "0,7", "-fd", "a.req"),
                         reading("a.req", 2000) + '%crv_84-i-wri, Writing "a.dat" ...\n\n',
                         " crv_84-f-fwrite, in crv_writecols() : No space left on device\n")
        place.expect("files", place.names(), ["a.req"])


def the_tables_before_the_full_disk_stay(place):
    with Mounted(place.folder, "32k") as disk:
        if not disk:
            return
        place.write("a.req", REQ)
        place.write("b.req", LONG_REQ)
        place.expect_ending("tables", place.run("-r", "7", "-fd", typed=b"a\n"),
                            '%crv_84-i-wri, Writing "b.dat" ...\n\n',
                            " crv_84-f-fwrite, in crv_writecols() : No space left on device\n")
        place.expect("files", place.names(), ["a.dat", "a.req", "b.req"])
        place.expect("whole table", place.read("a.dat"), b" 1.0000e+01 \n 2.0000e+01 \n 3.0000e+01 \n")


def a_chart_on_a_full_disk_is_printed_all_the_same(place):
    with Mounted(place.folder, "8k") as disk:
        if not disk:
            return
        place.write("a.req")
        place.expect_run("chart", place.run("-r", "0,7", "-f", "a.req", "-p", environment={"CRV_PRINTCHAIN": "wc -c"}),
                         reading("a.req") + CHART + printing("wc -c crv.ps") + "4096 crv.ps\n" + CHART_DONE, status=1)


def a_usage_line_without_room_is_no_matter(place):
    place.write("a.req")
    (place.folder / "crv.use").symlink_to("/dev/full")
    place.expect_run("device", place.run("-u", "-r", "0,7", "-f", "a.req", "-w", "x"),
                     reading("a.req") + WROTE_NOTHING)
    (place.folder / "crv.use").unlink()
    with Mounted(place.folder, "8k") as disk:
        if not disk:
            return
        place.write("crv.use", b"what was there\n" * 273 + b"\n")
        fill(place)
        place.expect_run("disk", place.run("-u", "-w", "x"), WROTE_NOTHING)
        place.expect("what was there", place.read("crv.use"), b"what was there\n" * 273 + b"\n")


def a_listing_without_room_is_reported(place):
    with Mounted(place.folder, "8k") as disk:
        if not disk:
            return
        place.write("a.req")
        fill(place)
        before = place.names()
        place.expect_run("one file", place.run("-r", "0,7", "-f", typed=b"1\n"),
                         '%crv_05-i-ids, Request ids   = "0,7" \n',
                         "    _33-e-fopen, utl_lstfile(): No space left on device\n", 1)
        place.expect_ending("several files", place.run("-r", "0,7", "-fd", typed=b"1\n"),
                            "%crv_34-f-fil, Improper file selection, num too high \n"
                            "%crv_34-i-val, Selection = -10 through 1 \n",
                            "/bin/ls: write error: No space left on device\n")
        place.expect("files", place.names(), before)


def what_standard_output_has_no_room_for_is_told_of(place):
    place.write("a.req")
    with open("/dev/full", "wb") as full:
        tell_of_lost_output(place, {"stdout": full})
    place.expect("the chart is drawn", place.read("crv.ps").endswith(b"showpage \n"), True)
    place.expect("and printed", place.read("printed"), b"[crv.ps]\n")


def tell_of_lost_output(place, full):
    place.expect_run("value", place.run("-r", "0,7=2", "-f", "a.req", **full), stderr=LOST)
    place.expect_run("text", place.run("-h", **full), stderr=LOST, status=1)
    place.expect_run("plain end", place.run("-w", "x", **full), stderr=LOST)
    place.expect_run("chart", place.run("-r", "0,7", "-f", "a.req", "-p", **full), stderr=LOST, status=1)


main(a_table_on_a_full_disk_is_reported_and_removed, the_tables_before_the_full_disk_stay,
     a_chart_on_a_full_disk_is_printed_all_the_same, a_usage_line_without_room_is_no_matter,
     a_listing_without_room_is_reported, what_standard_output_has_no_room_for_is_told_of)
