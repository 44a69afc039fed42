#!/usr/bin/env python3
"""Lines of 4 GiB, fed through a pipe: read in pieces, in little memory. The sanitizers are slow: they get 64 MiB."""
import fcntl
import os
import threading

from harness import WROTE_NOTHING, main, reading, selecting

BLOCK = b"x" * (1 << 20)


def length(place):
    return (64 << 20) if place.is_sanitized else (4 << 30)


def feed(path, before, size, after):
    """Writes a line of `size` characters to a pipe, between other text. The reader may have gone."""
    try:
        with open(path, "wb", buffering=0) as out:
            fcntl.fcntl(out, fcntl.F_SETPIPE_SZ, len(BLOCK))
            out.write(before)
            for _ in range(size // len(BLOCK)):
                out.write(BLOCK)
            out.write(b"\n" + after)
    except BrokenPipeError:
        pass


def run_fed(place, before, after, *arguments):
    path = place.folder / "pipe"
    os.mkfifo(path)
    feeder = threading.Thread(target=feed, args=(path, before, length(place), after))
    feeder.start()
    got = place.run(*arguments, "pipe", "-w", "x")
    feeder.join()
    path.unlink()
    place.expect_small("a long line")
    return got


def a_request_file_takes_it_as_lines_of_126_characters(place):
    """Those have no time in the window. The step that follows is complete when they are even in number."""
    lines = (length(place) + 1 + 125) // 126
    place.expect_run("data", run_fed(place, b"\nrun\n1\n7 1 0 0 0\n5\n10\n", b"", "-tm", "1:9", "-r", "0,7", "-f"),
                     "%crv_05-i-tra, T range, 1.000000 through 9.000000 \n" + reading("pipe", 1 + lines // 2)
                     + WROTE_NOTHING)


def a_madymo_file_is_refused(place):
    place.expect_run("data", run_fed(place, b"run\n\n1 0\nname\n1\n", b"", "-r", "0,1", "-fm"),
                     selecting("0,1", "pipe") + '%crv_88-i-wor, Reading "pipe" ...\n',
                     '\n%crv_88-f-lon, Current records are too long in "pipe"\n')


def a_column_file_takes_it_as_rows_of_1023_characters(place):
    rows = (length(place) + 1 + 1022) // 1023
    place.expect_run("data", run_fed(place, b"time value\n1 10\n2 20\n", b"", "-tm", "1:2", "-r", "0,1", "-fp"),
                     "%crv_05-i-tra, T range, 1.000000 through 2.000000 \n" + selecting("0,1", "pipe")
                     + '%crv_94-i-wor, Reading "pipe" ...\n%crv_94-i-val, file pipe has  2 columns.\n'
                     f"%crv_94-i-pts, file pipe has {rows + 2} steps\n" + WROTE_NOTHING)


def a_frame_file_passes_over_it(place):
    place.expect_run("text", run_fed(place, b"%T\n", b"%N\n3\n%D\n1 10\n2 20\n3 30\n", "-r", "0", "-fg"),
                     selecting("0", "pipe")
                     + "%crv_85-i-dat, Vandor CRV_FRM_FILE data loaded, number of points = 3 \n" + WROTE_NOTHING)


main(a_request_file_takes_it_as_lines_of_126_characters, a_madymo_file_is_refused,
     a_column_file_takes_it_as_rows_of_1023_characters, a_frame_file_passes_over_it)
