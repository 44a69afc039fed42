#!/usr/bin/env python3
"""Long lines from a pipe are read in pieces and in little memory.

CRV_LINE_MIB is their length in MiB. The default is more than the memory that a run may take; with
sanitizers, which are slow, it is 64 MiB.
"""
import fcntl
import os
import threading

from harness import (COLUMN, FRAME, IS_SANITIZED, MADYMO, WROTE_NOTHING, expect_small, main,
                     reading)

BLOCK = b"x" * (1 << 20)
LENGTH = int(os.environ.get("CRV_LINE_MIB", 64 if IS_SANITIZED else 256)) << 20


def feed(path, before, after):
    """Writes a line of LENGTH characters to a pipe, between other text. The reader may close it."""
    try:
        with open(path, "wb", buffering=0) as out:
            if hasattr(fcntl, "F_SETPIPE_SZ"):  # Linux: fewer writes
                fcntl.fcntl(out, fcntl.F_SETPIPE_SZ, len(BLOCK))
            out.write(before)
            for _ in range(LENGTH // len(BLOCK)):
                out.write(BLOCK)
            out.write(b"\n" + after)
    except BrokenPipeError:
        pass


def run_fed(box, before, after, *arguments):
    path = box.path("pipe")
    os.mkfifo(path)
    feeder = threading.Thread(target=feed, args=(path, before, after))
    feeder.start()
    result = box.crv(*arguments, "pipe", "-w", "x")
    feeder.join()
    expect_small(box, "a long line")
    return result


def test_request_lines_have_126_characters(box):
    """Those have no time in the window. The next step is complete when their number is even."""
    lines = (LENGTH + 1 + 125) // 126
    box.expect_run("data", run_fed(box, b"\nrun\n1\n7 1 0 0 0\n5\n10\n", b"",
                                   "-tm", "1:9", "-r", "0,7", "-f"),
                   "%crv_05-i-tra, T range, 1.000000 through 9.000000 \n"
                   + reading("pipe", 1 + lines // 2) + WROTE_NOTHING)


def test_madymo_line_is_rejected(box):
    box.expect_run("data", run_fed(box, b"run\n\n1 0\nname\n1\n", b"", "-r", "0,1", "-fm"),
                   MADYMO.opening("pipe"),
                   '\n%crv_88-f-lon, Current records are too long in "pipe"\n')


def test_column_rows_have_1023_characters(box):
    rows = (LENGTH + 1 + 1022) // 1023
    box.expect_run("data", run_fed(box, b"time value\n1 10\n2 20\n", b"",
                                   "-tm", "1:2", "-r", "0,1", "-fp"),
                   "%crv_05-i-tra, T range, 1.000000 through 2.000000 \n"
                   + COLUMN.reading("pipe", rows + 2, "0,1") + WROTE_NOTHING,
                   '%crv_94-w-mea, Means of "pipe" are sums over the values in 2 rows divided by '
                   f"the number of values in all {rows + 2} rows\n"
                   + COLUMN.wrapped("pipe", rows + 2, "Row Count", "time"))


def test_frame_text_is_skipped(box):
    box.expect_run("text", run_fed(box, b"%T\n", FRAME.data, "-r", "0", "-fg"),
                   FRAME.reading("pipe") + WROTE_NOTHING)


main()
