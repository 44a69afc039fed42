#!/usr/bin/env python3
"""Numbers that say how much there is, or which, at the ends of what they can hold."""
from harness import FORMATS, MAD, POS, REQ, VDR, WROTE_NOTHING, main, selecting

LARGEST = 2_147_483_647


def run_of(place, option, selection, data):
    name = "a.txt"
    place.write(name, data)
    return place.run("-r", selection, option, name, "-w", "x")


def begun(option, selection):
    begin = next(row[5] for row in FORMATS if row[0] == option[:3])
    return selecting(selection, "a.txt") + begin.format("a.txt")


def a_request_count_above_the_file_leaves_no_steps(place):
    """The header goes on to the end of the file."""
    for count in (7, LARGEST, LARGEST + 2**32):
        place.expect_run(count, run_of(place, "-f", "0,7", REQ.replace(b"\n1\n7", b"\n%d\n7" % count, 1)),
                         begun("-f", "0,7"), "%crv_83-e-pts, No data points found for item (0)\n", 1)


def a_request_count_below_zero_is_refused(place):
    for count, read in ((-1, -1), (-LARGEST - 1, -LARGEST - 1), (LARGEST + 1, -LARGEST - 1), (2**32 - 1, -1)):
        place.expect_run(count, run_of(place, "-f", "0,7", REQ.replace(b"\n1\n7", b"\n%d\n7" % count, 1)), begun("-f", "0,7"),
                         f'%crv_83-e-num, Number of requests ({read}) on line 3 of "a.txt" is below 0\n', 1)


def a_request_count_of_zero_leaves_time(place):
    """Every line is then a time line."""
    place.expect_run("zero", run_of(place, "-f", "0,0", b"\nrun\n0\n1\n2\n3\n"),
                     begun("-f", "0,0") + "%crv_83-i-pts, file (a.txt) has 3 steps\n" + WROTE_NOTHING)
    place.expect_run("far too high", run_of(place, "-f", "0,0", b"\nrun\n%d\n1\n2\n3\n" % 2**40),
                     begun("-f", "0,0") + "%crv_83-i-pts, file (a.txt) has 3 steps\n" + WROTE_NOTHING)


def a_madymo_count_above_the_file_leaves_no_steps(place):
    end = "%crv_88-i-pts, file (a.txt) has 0 steps\n" + WROTE_NOTHING
    for counts in (b"%d 0", b"1 %d", b"%d %d"):
        line = counts.replace(b"%d", b"%d" % LARGEST)
        place.expect_run(line, run_of(place, "-fm", "0,1", MAD.replace(b"1 0", line, 1)), begun("-fm", "0,1") + end)


def a_madymo_count_below_zero_is_refused_and_one_of_descriptions_is_none(place):
    place.expect_run("requests", run_of(place, "-fm", "0,1", MAD.replace(b"1 0", b"-1 0", 1)), begun("-fm", "0,1"),
                     '%crv_88-f-num, Number of requests (-1) on line 3 of "a.txt" is below 0\n')
    place.expect_run("descriptions", run_of(place, "-fm", "0,1", MAD.replace(b"1 0", b"1 -1", 1)),
                     begun("-fm", "0,1") + "%crv_88-i-pts, file (a.txt) has 3 steps\n" + WROTE_NOTHING)


def a_frame_file_with_fewer_points_than_it_says_is_warned_of(place):
    for directive in (b"%N", b"%S"):
        data = VDR.replace(b"%N\n3", directive + b"\n%d" % LARGEST)
        place.expect_run(directive, run_of(place, "-fg", "0", data),
                         begun("-fg", "0") + "%crv_85-i-dat, Vandor CRV_FRM_FILE data loaded, number of points = "
                         f"{LARGEST} \n" + WROTE_NOTHING,
                         f'%crv_85-w-cut, "a.txt" ends after 3 of {LARGEST} data points\n')


def a_frame_file_needs_three_points(place):
    for count in (-1, -LARGEST - 1, 0, 2, LARGEST + 1):
        place.expect_run(count, run_of(place, "-fg", "0", VDR.replace(b"3", b"%d" % count, 1)),
                         begun("-fg", "0") + "%crv_85-f-nopts, VDR NUMDATA incorrectly specified!\n")


def a_label_line_beyond_the_file_leaves_no_columns(place):
    for line in (5, LARGEST - 1, LARGEST):
        place.expect_run(line, run_of(place, f"-fp{line}", "0,1", POS),
                         begun("-fp", "0,1") + '%crv_94-i-val, file a.txt has  0 columns.\n'
                         '%crv_94-f-nocol, Column "1" does not exist!\n')


def a_number_that_no_file_holds_is_not_found(place):
    """A number below 0 is shown as the unsigned number that it is kept as."""
    for number, shown in ((-1, 2**32 - 1), (LARGEST, LARGEST), (-LARGEST - 1, LARGEST + 1), (2**32 - 2, 2**32 - 2)):
        selection = f"0,{number}"
        for option, data, status, message in (
                ("-f", REQ, 1, f'%crv_83-e-mis, Request "{shown}" not found! \n'),
                ("-fm", MAD, 0, f'%crv_88-e-mis, Request "{shown}" not found! \n'),
                ("-fp", POS, 0, f'%crv_94-i-val, file a.txt has  2 columns.\n%crv_94-f-nocol, Column "{shown}" does not '
                 "exist!\n")):
            place.expect_run(f"{option} {number}", run_of(place, option, selection, data),
                             begun(option, selection) + message, status=status)


def an_item_that_no_line_holds_has_its_own_end_in_each_format(place):
    for item in (-1, LARGEST, 2**32 - 1):
        selection = f"0,7:{item}"
        stdout, *others = run_of(place, "-f", selection, REQ)
        place.expect("request", (stdout, *others), (begun("-f", selection) +
                     "%crv_83-i-pts, file (a.txt) has 3 steps\n" + WROTE_NOTHING, "", 0))
        place.expect_run("madymo", run_of(place, "-fm", f"0,1:{item}", MAD), begun("-fm", f"0,1:{item}"),
                         "%crv_88-f-col, Exceeded Max number of col to reqest of 31\n")


main(a_request_count_above_the_file_leaves_no_steps, a_request_count_below_zero_is_refused,
     a_request_count_of_zero_leaves_time, a_madymo_count_above_the_file_leaves_no_steps,
     a_madymo_count_below_zero_is_refused_and_one_of_descriptions_is_none,
     a_frame_file_with_fewer_points_than_it_says_is_warned_of, a_frame_file_needs_three_points,
     a_label_line_beyond_the_file_leaves_no_columns, a_number_that_no_file_holds_is_not_found,
     an_item_that_no_line_holds_has_its_own_end_in_each_format)
