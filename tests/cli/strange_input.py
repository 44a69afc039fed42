#!/usr/bin/env python3
"""Inputs that are not regular files, and files that change while they are read."""
import fcntl
import os
import threading

from harness import FORMATS, REQ, REQUEST, VOILA, WROTE_NOTHING, expect_small, main, reading

# Forty requests of which one is selected: long steps with short traces.
HEADER = b"\nrun\n40\n" + b"".join(b"%d 1 0 0 0\n" % number for number in range(1, 41))
STEP = b"1\n" + (b"10" + b" " * 97 + b"\n") * 40


def expect_rejected(box, path, reason):
    """No format opens the path."""
    for form in FORMATS:
        box.expect_run(form.option, form.run(box, path), form.opening(path),
                       f"{form.prefix}f-fopen: {reason}\n", form.status)


def test_unbounded_devices_are_rejected(box):
    for path in ("/dev/zero", "/dev/full", "/dev/urandom"):
        expect_rejected(box, path, "Operation not supported")
    box.write("a.req", REQ)
    box.expect_ending("user file", box.crv("-s0", "/dev/zero", "-r", "0,7", "-f", "a.req", "-p",
                                           "zero.ps"),
                      '\n "/dev/zero"\n', "    _46-f-fopen read, : Operation not supported\n")
    expect_small(box, "an unbounded device")


def test_directory_is_rejected(box):
    expect_rejected(box, "../run", "Is a directory")


def test_read_error_is_reported(box):
    expect_rejected(box, "/proc/self/mem", "Input/output error")


def test_empty_device_is_empty_file(box):
    ends = ('%crv_83-e-mis, Request "7" not found! \n',
            "%crv_xx-e-num, Request count or column count incorrect\n"
            '%crv_88-e-mis, Request "1" not found! \n',
            "%crv_94-i-val, file /dev/null has  0 columns.\n"
            '%crv_94-f-nocol, Column "1" does not exist!\n',
            FORMATS[3].last.format("", 0) + WROTE_NOTHING)
    for form, end in zip(FORMATS, ends, strict=True):
        box.expect_run(form.option, form.run(box, "/dev/null"), form.opening("/dev/null") + end,
                       status=form.status)


def feed(path, pieces):
    """Writes the pieces to a pipe, one system call each."""
    with open(path, "wb", buffering=0) as out:
        for piece in pieces:
            out.write(piece)


def test_pieces_of_pipe_make_whole_file(box):
    os.mkfifo(box.path("pipe"))
    for form in FORMATS:
        for pieces in ([form.data], [bytes([byte]) for byte in form.data]):
            feeder = threading.Thread(target=feed, args=(box.path("pipe"), pieces))
            feeder.start()
            box.expect_run(form.option, form.run(box, "pipe"),
                           form.reading("pipe") + WROTE_NOTHING)
            feeder.join()


def test_standard_input_can_be_file(box):
    box.expect_run("pipe", REQUEST.run(box, "/dev/stdin", typed=REQ),
                   reading("/dev/stdin") + WROTE_NOTHING)


def steps_read(box, change):
    """Traces a file of 4 MB into a pipe that is soon full, so that the run blocks early in the
    file. Changes the file, lets the run go on, and returns its message with the steps."""
    path = box.write("long.req", HEADER + STEP * 1000)
    reader, writer = os.pipe()
    fcntl.fcntl(writer, fcntl.F_SETPIPE_SZ, 4096)
    child = box.start("crv", "-v", "83", "-r", "7", "-f", "long.req", "-w", "x", stdout=writer)
    os.close(writer)
    child.stdout = os.fdopen(reader, "rb")
    begun = b""
    while b"rec = " not in begun:
        begun += os.read(reader, 256)
    change(path)
    stdout, *others = box.finish(child)
    return "".join(line for line in stdout.splitlines(True) if " steps\n" in line), *others


def test_shrinking_file_gives_remaining_steps(box):
    for piece in (0, 1, 150):  # bytes of the step that is cut
        size = len(HEADER + STEP * 500) + piece
        box.expect_run(f"{piece} bytes more",
                       steps_read(box, lambda path, size=size: os.truncate(path, size)),
                       "%crv_83-i-pts, file (long.req) has 500 steps\n")


def test_growing_file_is_read_to_new_end(box):
    def grow(path):
        with open(path, "ab") as out:
            out.write(STEP * 7)

    box.expect_run("7 steps more", steps_read(box, grow),
                   "%crv_83-i-pts, file (long.req) has 1007 steps\n")


def test_unterminated_answer_is_empty(box):
    box.write("a.req", REQ)
    for source in ("/dev/zero", "/dev/null"):
        with open(source, "rb") as device:
            box.expect_run(source, box.crv("-w", "x", "-t", stdin=device),
                           '%crv_05-i-fil, File to write = "x" \nEnter Major title: ' + VOILA)
            box.expect_ending(source, box.crv("-r", "0,7", "-f", stdin=device),
                              "Select file to be processed? 1, 2, 3, ...: "
                              '%crv_05-i-fil, File = "a.req" \n'
                              '%crv_83-i-wor, Reading "a.req" ...\n'
                              "%crv_83-i-pts, file (a.req) has 3 steps\n" + VOILA)
            box.expect_ending(source, box.crv("-r", "0,7", "-fd", stdin=device),
                              "%crv_34-i-val, Selection = -10 through -1 \n")


main()
