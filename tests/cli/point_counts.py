#!/usr/bin/env python3
"""Columns of more points than their count of 16 bits with a sign can say."""
from harness import FORMATS, WROTE_NOTHING, main, selecting

COUNTS = (32_767, 32_768, 65_535, 65_536, 65_537, 100_000)


def counted(points):
    """The count that is kept."""
    return (points + 32_768) % 65_536 - 32_768


def mean_of(points):
    """The mean of so many ones."""
    count = counted(points)
    return "inf" if count == 0 else f"{points / count:f}"


def dumped(names, title, points):
    """The headers in the dump of two columns of ones."""
    return "".join("    _86-i-val, ------------------------------------ \n"
                   f'    _86-i-val, coltitle = "{title}" \n    _86-i-val, colname  = "{name}" \n'
                   f'    _86-i-val, numpts   = "{counted(points) % 2**32}" \n'
                   f'    _86-i-val, min      = "1.000000" \n    _86-i-val, max      = "1.000000" \n'
                   f'    _86-i-val, mean     = "{mean_of(points)}" \n    _86-i-val, stddev   = "0.000000" \n'
                   for name in names)


def check(place, option, selection, data, points, names, title):
    """Also the rows of a column file have to lie in the time window."""
    place.write("a.txt", data)
    stdout, stderr, status = place.run("-v", "86", "-tm", "0:1e6", "-r", selection, option, "a.txt", "-w", "x")
    values = " 1.0000e+00 "
    headers = "".join(line for line in stdout.splitlines(True) if not line.startswith((values, " \n")))
    _, _, _, _, _, begin, end = next(row for row in FORMATS if row[0] == option)
    place.expect_run(f"{option} {points}", (headers, stderr, status),
                     "%crv_05-i-DBG, Verbose switch active -v\n    _05-i-DBG, crv_DBG = 86 \n"
                     "%crv_05-i-tra, T range, 0.000000 through 1000000.000000 \n"
                     + selecting(selection, "a.txt") + begin.format("a.txt") + end.format("a.txt", points)
                     + '%crv_05-i-fil, File to write = "x" \n%crv_86-i-dmp, Dumping column data ...\n\n'
                     + dumped(names, title, points) + "\n%crv_01-i-fin, voila\n")
    place.expect(f"{option} {points} values", stdout.count(values), 2 * points)


def a_request_file_counts_32768_points_as_none(place):
    """Also 65,536, and 98,304 and more, up to where the count is above 0 again."""
    for points in COUNTS:
        place.write("a.txt", b"\nrun\n1\n7 1 0 0 0\n" + b"1\n1\n" * points)
        begun = selecting("0,7", "a.txt") + '%crv_83-i-wor, Reading "a.txt" ...\n'
        got = place.run("-r", "0,7", "-f", "a.txt", "-w", "x")
        if counted(points) < 1:
            place.expect_run(points, got, begun, "%crv_83-e-pts, No data points found for item (0)\n", 1)
        else:
            place.expect_run(points, got, begun + f"%crv_83-i-pts, file (a.txt) has {points} steps\n" + WROTE_NOTHING)
    for points in (32_767, 65_537):
        check(place, "-f", "7,7", b"\nrun\n1\n7 1 0 0 0\n" + b"1\n1\n" * points, points, ["Displ 7, X  "] * 2, "run\n")


def a_madymo_file_divides_by_the_count_that_is_kept(place):
    for points in COUNTS:
        check(place, "-fm", "1,1", b"run\n\n1 0\nname\n" + b"1\n1\n" * points, points, ["name, R 1, C 1 "] * 2, "run\n")


def a_column_file_divides_by_the_count_that_is_kept(place):
    for points in COUNTS:
        check(place, "-fp", "1,2", b"a b\n" + b"1 1\n" * points, points, ["a", "b"], "")


def a_frame_file_divides_by_the_count_that_is_kept(place):
    for points in COUNTS:
        check(place, "-fg", "0", b"%%N\n%d\n%%D\n" % points + b"1 1\n" * points, points, ["VDR col_0", "VDR col_1"], "")


main(a_request_file_counts_32768_points_as_none, a_madymo_file_divides_by_the_count_that_is_kept,
     a_column_file_divides_by_the_count_that_is_kept, a_frame_file_divides_by_the_count_that_is_kept)
