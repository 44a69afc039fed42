#!/usr/bin/env python3
"""Inputs that are no ordinary files, and files that change while they are read."""
import fcntl
import os
import threading

from harness import FORMATS, REQ, WROTE_NOTHING, main, reading, selecting

# Forty requests of which one is wanted: long steps with short traces.
HEADER = b"\nrun\n40\n" + b"".join(b"%d 1 0 0 0\n" % number for number in range(1, 41))
STEP = b"1\n" + (b"10" + b" " * 97 + b"\n") * 40


def every_format(place, path, reason):
    """All four refuse to open it, each in its way."""
    for option, selection, _, prefix, status, begin, _ in FORMATS:
        place.expect_run(option, place.run("-r", selection, option, path, "-w", "x"),
                         selecting(selection, path) + begin.format(path), f"{prefix}f-fopen: {reason}\n", status)


def a_device_that_never_ends_is_no_result_file(place):
    for path in ("/dev/zero", "/dev/full", "/dev/urandom"):
        every_format(place, path, "Operation not supported")
    place.write("a.req")
    place.expect_ending("pasted", place.run("-s0", "/dev/zero", "-r", "0,7", "-f", "a.req", "-p", "zero.ps"),
                        '\n "/dev/zero"\n', "    _46-f-fopen read, : Operation not supported\n")
    place.expect_small("an endless device")


def a_folder_is_no_result_file(place):
    every_format(place, "../run", "Is a directory")


def a_file_that_cannot_be_read_is_reported(place):
    every_format(place, "/proc/self/mem", "Input/output error")


def an_empty_device_is_an_empty_file(place):
    ends = ('%crv_83-e-mis, Request "7" not found! \n',
            '%crv_xx-e-num, Request count or column count incorrect\n%crv_88-e-mis, Request "1" not found! \n',
            '%crv_94-i-val, file /dev/null has  0 columns.\n%crv_94-f-nocol, Column "1" does not exist!\n',
            "%crv_85-i-dat, Vandor CRV_FRM_FILE data loaded, number of points = 0 \n" + WROTE_NOTHING)
    for (option, selection, _, _, status, begin, _), end in zip(FORMATS, ends):
        place.expect_run(option, place.run("-r", selection, option, "/dev/null", "-w", "x"),
                         selecting(selection, "/dev/null") + begin.format("/dev/null") + end, status=status)


def feed(path, pieces):
    """Writes the pieces to a pipe, one system call each."""
    with open(path, "wb", buffering=0) as out:
        for piece in pieces:
            out.write(piece)


def a_pipe_is_read_to_its_end_however_it_is_fed(place):
    os.mkfifo(place.folder / "pipe")
    for option, selection, data, _, _, begin, end in FORMATS:
        for pieces in ([data], [bytes([byte]) for byte in data]):
            feeder = threading.Thread(target=feed, args=(place.folder / "pipe", pieces))
            feeder.start()
            place.expect_run(option, place.run("-r", selection, option, "pipe", "-w", "x"),
                             selecting(selection, "pipe") + begin.format("pipe") + end.format("pipe", 3) + WROTE_NOTHING)
            feeder.join()


def standard_input_can_be_the_file(place):
    place.expect_run("pipe", place.run("-r", "0,7", "-f", "/dev/stdin", "-w", "x", typed=REQ),
                     reading("/dev/stdin") + WROTE_NOTHING)


def steps_read(place, change):
    """Traces a file of 4 MB into a pipe that is soon full, so that the run stands still early in the file. Changes the
    file, lets the run go on, and returns what it says of the steps that it read."""
    path = place.write("long.req", HEADER + STEP * 1000)
    reader, writer = os.pipe()
    fcntl.fcntl(writer, fcntl.F_SETPIPE_SZ, 4096)
    child = place.start("-v", "83", "-r", "7", "-f", "long.req", "-w", "x", stdout=writer)
    os.close(writer)
    child.stdout = os.fdopen(reader, "rb")
    begun = b""
    while b"rec = " not in begun:
        begun += os.read(reader, 256)
    change(path)
    stdout, stderr, status = place.finish(child)
    return "".join(line for line in stdout.splitlines(True) if " steps\n" in line), stderr, status


def a_file_that_shrinks_while_it_is_read_has_what_is_left(place):
    for piece in (0, 1, 150):  # bytes of the step that is cut
        size = len(HEADER + STEP * 500) + piece
        place.expect_run(f"{piece} bytes more", steps_read(place, lambda path: os.truncate(path, size)),
                         "%crv_83-i-pts, file (long.req) has 500 steps\n")


def a_file_that_grows_while_it_is_read_is_read_to_its_new_end(place):
    def grow(path):
        with open(path, "ab") as out:
            out.write(STEP * 7)

    place.expect_run("7 steps more", steps_read(place, grow), "%crv_83-i-pts, file (long.req) has 1007 steps\n")


def an_answer_without_an_end_is_an_empty_answer(place):
    place.write("a.req")
    asked = "%crv_05-i-fil, File to write = \"x\" \nEnter Major title: "
    for source in ("/dev/zero", "/dev/null"):
        with open(source, "rb") as endless:
            place.expect_run(source, place.run("-w", "x", "-t", stdin=endless), asked + "\n%crv_01-i-fin, voila\n")
            place.expect_ending(source, place.run("-r", "0,7", "-f", stdin=endless),
                                "Select file to be processed? 1, 2, 3, ...: %crv_05-i-fil, File = \"a.req\" \n"
                                '%crv_83-i-wor, Reading "a.req" ...\n%crv_83-i-pts, file (a.req) has 3 steps\n'
                                "\n%crv_01-i-fin, voila\n")
            place.expect_ending(source, place.run("-r", "0,7", "-fd", stdin=endless),
                                "%crv_34-i-val, Selection = -10 through -1 \n")


main(a_device_that_never_ends_is_no_result_file, a_folder_is_no_result_file, a_file_that_cannot_be_read_is_reported,
     an_empty_device_is_an_empty_file, a_pipe_is_read_to_its_end_however_it_is_fed, standard_input_can_be_the_file,
     a_file_that_shrinks_while_it_is_read_has_what_is_left, a_file_that_grows_while_it_is_read_is_read_to_its_new_end,
     an_answer_without_an_end_is_an_empty_answer)
