#!/usr/bin/env python3
"""Counts and numbers in files and selections, at the limits of their types and beyond."""
from harness import COLUMN, FRAME, MADYMO, REQUEST, WROTE_NOTHING, main

LARGEST = 2_147_483_647
STEPS = "%crv_83-i-pts, file (a.txt) has 3 steps\n" + WROTE_NOTHING


def expect_read(box, what, form, data, *ending, selection=None, option=None):
    """Runs on data of a format; what it prints ends as given, and then come stderr and status."""
    box.write("a.txt", data)
    stdout, *others = ending
    box.expect_run(what, form.run(box, "a.txt", selection, option),
                   form.opening("a.txt", selection) + stdout, *others)


def request_data(count):
    return REQUEST.data.replace(b"\n1\n7", b"\n%d\n7" % count, 1)


def test_high_request_count_leaves_no_steps(box):
    """The header goes on to the end of the file."""
    for count in (7, LARGEST, LARGEST + 2**32):
        expect_read(box, count, REQUEST, request_data(count), "",
                    "%crv_83-e-pts, No data points found for item (0)\n", 1)


def test_negative_request_count_is_rejected(box):
    for count, shown in ((-1, -1), (-LARGEST - 1, -LARGEST - 1), (LARGEST + 1, -LARGEST - 1),
                         (2**32 - 1, -1)):
        expect_read(box, count, REQUEST, request_data(count), "", "%crv_83-e-num, Number of "
                    f'requests ({shown}) on line 3 of "a.txt" is below 0\n', 1)


def test_request_count_zero_leaves_time(box):
    """Every line is then a time line."""
    for what, count in (("zero", 0), ("far too high", 2**40)):
        expect_read(box, what, REQUEST, b"\nrun\n%d\n1\n2\n3\n" % count, STEPS, selection="0,0")


def test_high_madymo_count_leaves_no_steps(box):
    for counts in (b"%d 0", b"1 %d", b"%d %d"):
        line = counts.replace(b"%d", b"%d" % LARGEST)
        expect_read(box, line, MADYMO, MADYMO.data.replace(b"1 0", line, 1),
                    "%crv_88-i-pts, file (a.txt) has 0 steps\n" + WROTE_NOTHING)


def test_negative_madymo_counts(box):
    expect_read(box, "requests", MADYMO, MADYMO.data.replace(b"1 0", b"-1 0", 1), "",
                '%crv_88-f-num, Number of requests (-1) on line 3 of "a.txt" is below 0\n')
    expect_read(box, "descriptions", MADYMO, MADYMO.data.replace(b"1 0", b"1 -1", 1),
                "%crv_88-i-pts, file (a.txt) has 3 steps\n" + WROTE_NOTHING)


def test_high_frame_count_is_warned_of(box):
    for directive in (b"%N", b"%S"):
        data = FRAME.data.replace(b"%N\n3", directive + b"\n%d" % LARGEST)
        expect_read(box, directive, FRAME, data,
                    FRAME.last.format("", LARGEST) + WROTE_NOTHING,
                    f'%crv_85-w-cut, "a.txt" ends after 3 of {LARGEST} data points\n')


def test_frame_file_needs_three_points(box):
    for count in (-1, -LARGEST - 1, 0, 2, LARGEST + 1):
        expect_read(box, count, FRAME, FRAME.data.replace(b"3", b"%d" % count, 1),
                    "%crv_85-f-nopts, VDR NUMDATA incorrectly specified!\n")


def test_label_line_after_end_leaves_no_columns(box):
    for line in (5, LARGEST - 1, LARGEST):
        expect_read(box, line, COLUMN, COLUMN.data, "%crv_94-i-val, file a.txt has  0 columns.\n"
                    '%crv_94-f-nocol, Column "1" does not exist!\n', selection="0,1",
                    option=f"-fp{line}")


def test_missing_number_is_shown_unsigned(box):
    """A number below 0 is shown as the unsigned number that is stored."""
    for number, shown in ((-1, 2**32 - 1), (LARGEST, LARGEST), (-LARGEST - 1, LARGEST + 1),
                          (2**32 - 2, 2**32 - 2)):
        for form, status, message in (
                (REQUEST, 1, f'%crv_83-e-mis, Request "{shown}" not found! \n'),
                (MADYMO, 0, f'%crv_88-e-mis, Request "{shown}" not found! \n'),
                (COLUMN, 0, "%crv_94-i-val, file a.txt has  2 columns.\n"
                 f'%crv_94-f-nocol, Column "{shown}" does not exist!\n')):
            expect_read(box, f"{form.option} {number}", form, form.data, message, "", status,
                        selection=f"0,{number}")


def test_missing_item_differs_by_format(box):
    for item in (-1, LARGEST, 2**32 - 1):
        expect_read(box, "request", REQUEST, REQUEST.data, STEPS, selection=f"0,7:{item}")
        expect_read(box, "madymo", MADYMO, MADYMO.data, "",
                    "%crv_88-f-col, Exceeded Max number of col to reqest of 31\n",
                    selection=f"0,1:{item}")


main()
