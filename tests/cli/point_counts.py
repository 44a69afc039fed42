#!/usr/bin/env python3
"""Columns of more points than the stored count, a signed integer of 16 bits, can represent."""
from harness import COLUMN, FRAME, MADYMO, REQUEST, VOILA, WROTE_NOTHING, main, stored

COUNTS = (32_767, 32_768, 65_535, 65_536, 65_537, 100_000)


def mean_of(points):
    """The mean of so many ones."""
    count = stored(points)
    return "inf" if count == 0 else f"{points / count:f}"


def dumped(names, title, points):
    """The headers in the dump of two columns of ones."""
    return "".join("    _86-i-val, ------------------------------------ \n"
                   f'    _86-i-val, coltitle = "{title}" \n'
                   f'    _86-i-val, colname  = "{name}" \n'
                   f'    _86-i-val, numpts   = "{stored(points) % 2**32}" \n'
                   '    _86-i-val, min      = "1.000000" \n'
                   '    _86-i-val, max      = "1.000000" \n'
                   f'    _86-i-val, mean     = "{mean_of(points)}" \n'
                   '    _86-i-val, stddev   = "0.000000" \n' for name in names)


def expect_dump(box, form, selection, data, points, names, title):
    """The rows of a column file too must be in the time window."""
    box.write("a.txt", data)
    result = box.crv("-v", "86", "-tm", "0:1e6", "-r", selection, form.option, "a.txt", "-w", "x")
    values = " 1.0000e+00 "
    headers = "".join(line for line in result.stdout.splitlines(True)
                      if not line.startswith((values, " \n")))
    box.expect_run(f"{form.option} {points}", (headers, result.stderr, result.status),
                   "%crv_05-i-DBG, Verbose switch active -v\n    _05-i-DBG, crv_DBG = 86 \n"
                   "%crv_05-i-tra, T range, 0.000000 through 1000000.000000 \n"
                   + form.reading("a.txt", points, selection) + '%crv_05-i-fil, File to write = '
                   '"x" \n%crv_86-i-dmp, Dumping column data ...\n\n'
                   + dumped(names, title, points) + VOILA,
                   form.wrapped("a.txt", points, *(name.strip() for name in names)))
    box.expect(f"{form.option} {points} values", result.stdout.count(values), 2 * points)


def test_request_count_below_one_is_no_data(box):
    """32,768 points, and 65,536, and 98,304 and more, up to where the count is above 0 again."""
    header = b"\nrun\n1\n7 1 0 0 0\n"
    for points in COUNTS:
        box.write("a.txt", header + b"1\n1\n" * points)
        result = REQUEST.run(box, "a.txt")
        if stored(points) < 1:
            box.expect_run(points, result, REQUEST.opening("a.txt"),
                           "%crv_83-e-pts, No data points found for item (0)\n", 1)
        else:
            box.expect_run(points, result, REQUEST.reading("a.txt", points) + WROTE_NOTHING,
                           REQUEST.wrapped("a.txt", points, "Time (sec)", "Displ 7, X"))
    for points in (32_767, 65_537):
        expect_dump(box, REQUEST, "7,7", header + b"1\n1\n" * points, points,
                    ["Displ 7, X  "] * 2, "run\n")


def test_other_formats_divide_by_stored_count(box):
    for points in COUNTS:
        expect_dump(box, MADYMO, "1,1", b"run\n\n1 0\nname\n" + b"1\n1\n" * points, points,
                    ["name, R 1, C 1 "] * 2, "run\n")
        expect_dump(box, COLUMN, "1,2", b"a b\n" + b"1 1\n" * points, points, ["a", "b"], "")
        expect_dump(box, FRAME, "0", b"%%N\n%d\n%%D\n" % points + b"1 1\n" * points, points,
                    ["VDR col_0", "VDR col_1"], "")


main()
