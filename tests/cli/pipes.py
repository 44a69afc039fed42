#!/usr/bin/env python3
"""Every reader gives the same output for a pipe as for the file, to the byte."""
import array
import fcntl
import os
import pathlib
import sys
import termios
import threading
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from support.sandbox import EXAMPLES, main  # noqa: E402  (found by the path above)

# format: the file, and the options of a chart
CHARTS = {
    "request": ("run1.req", ["-r", "0,38:3,52:3,70:2", "-f", "{}", "-p"]),
    "madymo": ("sled.mad", ["-r", "0,1:2,2:2,3:2", "-fm", "{}", "-p"]),
    "column": ("sensors.pos", ["-r", "1,2,3", "-fp", "{}", "-p"]),
    "column without labels": ("sensors.pos", ["-r", "1,2,3", "-fp0", "{}", "-p"]),
    "frame": ("bumper.vdr", ["-r", "0", "-fg", "{}", "-p"]),
}
TABLES = {
    "request": ("run1.req", ["-all", "-r", "0,38:3,61:3", "-fa", "{}"]),
    "madymo": ("sled.mad", ["-all", "-r", "0,1:2,2:2", "-fma", "{}"]),
}
RUN1 = (EXAMPLES / "run1.req").read_bytes()


def each(box, commands):
    for kind, (name, options) in commands.items():
        with box.subTest(kind=kind):
            yield options, (EXAMPLES / name).read_bytes()


def run_named(box, options, name, **more):
    """Messages with the name of the file are as if its name were FILE."""
    result = box.crv(*(option.format(name) for option in options), CRV_PRINTCHAIN=":", **more)
    return (result.stdout.replace(name, "FILE"), result.stderr.replace(name, "FILE"),
            result.status)


def take(box, output, name):
    return box.take(output.format(name[:-3])).replace(name.encode(), b"FILE")


def from_file(box, options, data, output="crv.ps"):
    """Returns the output of a run on a file, and its output file."""
    box.write("plain.in", data)
    return run_named(box, options, "plain.in"), take(box, output, "plain.in")


def wait_until_read(pipe):
    unread = array.array("i", [1])
    while unread[0] > 0:
        time.sleep(0.001)
        fcntl.ioctl(pipe, termios.FIONREAD, unread)


def from_fifo(box, options, data, output="crv.ps", pieces=()):
    """The data come in pieces of the given sizes, each after the last was read; then the rest."""
    fifo = box.path("fifo.in")
    os.mkfifo(fifo)

    def feed():
        with open(fifo, "wb", buffering=0) as out:
            begin = 0
            for size in pieces:
                out.write(data[begin:begin + size])
                begin += size
                wait_until_read(out)
            for at in range(begin, len(data), 65536):
                out.write(data[at:at + 65536])

    feeder = threading.Thread(target=feed, daemon=True)
    feeder.start()
    printed = run_named(box, options, "fifo.in")
    feeder.join(60)
    box.assertFalse(feeder.is_alive(), "the pipe was not read to its end")
    fifo.unlink()
    return printed, take(box, output, "fifo.in")


def from_stdin(box, options, data):
    return run_named(box, options, "/dev/stdin", typed=data), take(box, "crv.ps", "/dev/stdin")


def test_fifo_gives_same_chart(box):
    for options, data in each(box, CHARTS):
        expected = from_file(box, options, data)
        box.assertEqual(expected[0][2], 1, expected)
        box.assertEqual(from_fifo(box, options, data), expected)


def test_standard_input_gives_same_chart(box):
    for options, data in each(box, CHARTS):
        box.assertEqual(from_stdin(box, options, data), from_file(box, options, data))


def test_small_pieces_give_same_chart(box):
    for options, data in each(box, CHARTS):
        pieces = [1] * 40 + [7, 400, 1, 300, 3]
        box.assertEqual(from_fifo(box, options, data, pieces=pieces),
                        from_file(box, options, data))


def test_large_file_gives_same_chart(box):
    """It is larger than a pipe and than a block."""
    first = b"  0.0000000000E+00\n"
    header, steps = RUN1.split(first, 1)
    data = header + first + (steps + first) * 8 + steps
    box.assertGreater(len(data), 2_000_000)
    options = CHARTS["request"][1]
    expected = from_file(box, options, data)
    box.assertIn("has 2709 steps", expected[0][0])
    box.assertEqual(from_fifo(box, options, data), expected)
    box.assertEqual(from_stdin(box, options, data), expected)


def test_fifo_gives_same_table_beside_it(box):
    for options, data in each(box, TABLES):
        (stdout, stderr, status), expected = from_file(box, options, data, "{}.dat")
        box.assertEqual((status, stderr), (0, ""))
        (fifo_stdout, *others), table = from_fifo(box, options, data, "{}.dat")
        box.assertEqual((*others, table), (stderr, status, expected))
        box.assertEqual(fifo_stdout.replace("fifo.dat", "plain.dat"), stdout)


def test_link_to_standard_input_names_table(box):
    options = TABLES["request"][1]
    expected = from_file(box, options, RUN1, "{}.dat")[1]
    box.path("linked.req").symlink_to("/dev/stdin")
    result = box.crv(*(option.format("linked.req") for option in options), typed=RUN1)
    box.assertEqual((result.status, result.stderr), (0, ""))
    box.assertEqual(box.take("linked.dat"), expected)


def test_pipe_gives_same_conditional_value(box):
    options = ["-r", "0,40:3=max", "-f", "{}"]
    box.write("plain.in", RUN1)
    expected = run_named(box, options, "plain.in")
    box.assertIn("0.580000 [Time (sec) ]", expected[0])
    box.assertEqual(run_named(box, options, "/dev/stdin", typed=RUN1), expected)


def test_pipe_between_files_gives_same_chart(box):
    options = ["-r", "0,38:3", "-f", "plain.in", "-r", "52:3", "-f", "{}", "-r", "70:2", "-f",
               "plain.in", "-p"]
    expected, chart = from_file(box, options, RUN1)
    printed, from_pipe = from_stdin(box, options, RUN1)
    box.assertEqual((printed[0].replace("plain.in", "FILE"), *printed[1:]), expected)
    box.assertEqual(from_pipe, chart)


def test_empty_pipe_is_empty_file(box):
    for options, _ in each(box, CHARTS):
        box.write("plain.in", b"")
        expected = run_named(box, options, "plain.in")
        box.assertEqual(run_named(box, options, "/dev/stdin", typed=b""), expected)


def test_closed_standard_input_gives_no_chart(box):
    result = box.crv("-r", "0,38:3", "-f", "/dev/stdin", "-p", stdin=None,
                     preexec_fn=lambda: os.close(0))
    box.assertEqual(result.status, 1)
    box.assertNotIn("fini, ", result.stdout)
    box.assertIsNone(box.read("crv.ps"))


main(sys.argv[1])
