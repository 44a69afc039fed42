#!/usr/bin/env python3
# cli/pipes - every reader makes the same of a pipe as of the file, to the byte.
import array
import fcntl
import os
import pathlib
import subprocess
import sys
import tempfile
import termios
import threading
import time
import unittest

CRV, ROOT = (pathlib.Path(path).resolve() for path in sys.argv[1:3])
EXAMPLES = ROOT / "examples"

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


def wait_until_read(pipe):
    unread = array.array("i", [1])
    while unread[0] > 0:
        time.sleep(0.001)
        fcntl.ioctl(pipe, termios.FIONREAD, unread)


class Readers(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        self.environment = {"PATH": "/usr/bin:/bin", "TZ": "UTC0", "CRV_PRINTCHAIN": ":"}

    def run_crv(self, arguments, **more):
        done = subprocess.run([CRV, *arguments], cwd=self.folder, env=self.environment, capture_output=True, timeout=120,
                              **({"stdin": subprocess.DEVNULL} | more))
        return done.returncode, done.stdout, done.stderr

    def run_named(self, options, name, **more):
        """Messages with the file's name in them are as if it were called FILE."""
        status, stdout, stderr = self.run_crv([option.format(name) for option in options], **more)
        return status, stdout.replace(name.encode(), b"FILE"), stderr.replace(name.encode(), b"FILE")

    def take(self, name):
        data = (self.folder / name).read_bytes()
        (self.folder / name).unlink()
        return data

    def from_file(self, options, data, made):
        (self.folder / "plain.in").write_bytes(data)
        return self.run_named(options, "plain.in"), self.take(made("plain")).replace(b"plain.in", b"FILE")

    def from_fifo(self, options, data, made, pieces=()):
        """The data come in pieces of the sizes given, each when the one before was read, and the rest."""
        fifo = self.folder / "fifo.in"
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
        came = self.run_named(options, "fifo.in")
        feeder.join(60)
        self.assertFalse(feeder.is_alive(), "the pipe was not read to its end")
        fifo.unlink()
        return came, self.take(made("fifo")).replace(b"fifo.in", b"FILE")

    def from_stdin(self, options, data, made):
        return self.run_named(options, "/dev/stdin", input=data, stdin=None), self.take(made(None)).replace(b"/dev/stdin", b"FILE")

    @staticmethod
    def chart(_):
        return "crv.ps"

    def test_a_chart_from_a_fifo_is_the_chart_from_the_file(self):
        for kind, (name, options) in CHARTS.items():
            with self.subTest(kind=kind):
                data = (EXAMPLES / name).read_bytes()
                wanted = self.from_file(options, data, self.chart)
                self.assertEqual(wanted[0][0], 1, wanted)
                self.assertEqual(self.from_fifo(options, data, self.chart), wanted)

    def test_a_chart_from_standard_input_is_the_chart_from_the_file(self):
        for kind, (name, options) in CHARTS.items():
            with self.subTest(kind=kind):
                data = (EXAMPLES / name).read_bytes()
                self.assertEqual(self.from_stdin(options, data, self.chart), self.from_file(options, data, self.chart))

    def test_a_pipe_that_gives_a_little_at_a_time_changes_nothing(self):
        for kind, (name, options) in CHARTS.items():
            with self.subTest(kind=kind):
                data = (EXAMPLES / name).read_bytes()
                pieces = [1] * 40 + [7, 400, 1, 300, 3]
                self.assertEqual(self.from_fifo(options, data, self.chart, pieces), self.from_file(options, data, self.chart))

    def test_a_file_larger_than_pipe_and_block_comes_through_whole(self):
        header, steps = (EXAMPLES / "run1.req").read_bytes().split(b"  0.0000000000E+00\n", 1)
        data = header + b"  0.0000000000E+00\n" + (steps + b"  0.0000000000E+00\n") * 8 + steps
        self.assertGreater(len(data), 2_000_000)
        options = CHARTS["request"][1]
        wanted = self.from_file(options, data, self.chart)
        self.assertIn(b"has 2709 steps", wanted[0][1])
        self.assertEqual(self.from_fifo(options, data, self.chart), wanted)
        self.assertEqual(self.from_stdin(options, data, self.chart), wanted)

    def test_a_table_from_a_fifo_stands_beside_it_and_is_the_table_from_the_file(self):
        for kind, (name, options) in TABLES.items():
            with self.subTest(kind=kind):
                data = (EXAMPLES / name).read_bytes()

                def table(base):
                    return f"{base}.dat"

                (status, stdout, stderr), wanted = self.from_file(options, data, table)
                self.assertEqual((status, stderr), (0, b""))
                (came_status, came_stdout, came_stderr), came = self.from_fifo(options, data, table)
                self.assertEqual((came_status, came_stderr, came), (status, stderr, wanted))
                self.assertEqual(came_stdout.replace(b"fifo.dat", b"plain.dat"), stdout)

    def test_a_link_to_standard_input_gives_the_table_its_name(self):
        data = (EXAMPLES / "run1.req").read_bytes()
        wanted = self.from_file(TABLES["request"][1], data, lambda base: f"{base}.dat")[1]
        (self.folder / "linked.req").symlink_to("/dev/stdin")
        came = self.run_crv([option.format("linked.req") for option in TABLES["request"][1]], input=data, stdin=None)
        self.assertEqual((came[0], came[2]), (0, b""))
        self.assertEqual(self.take("linked.dat"), wanted)

    def test_a_conditional_value_comes_through_a_pipe(self):
        options = ["-r", "0,40:3=max", "-f", "{}"]
        data = (EXAMPLES / "run1.req").read_bytes()
        (self.folder / "plain.in").write_bytes(data)
        wanted = self.run_named(options, "plain.in")
        self.assertIn(b"0.580000 [Time (sec) ]", wanted[1])
        self.assertEqual(self.run_named(options, "/dev/stdin", input=data, stdin=None), wanted)

    def test_two_files_and_a_pipe_between_them_fill_one_chart(self):
        data = (EXAMPLES / "run1.req").read_bytes()
        (self.folder / "plain.in").write_bytes(data)
        options = ["-r", "0,38:3", "-f", "plain.in", "-r", "52:3", "-f", "{}", "-r", "70:2", "-f", "plain.in", "-p"]
        wanted = self.run_crv([option.format("plain.in") for option in options])
        chart = self.take("crv.ps")
        came = self.run_crv([option.format("/dev/stdin") for option in options], input=data, stdin=None)
        self.assertEqual((came[0], came[1].replace(b"/dev/stdin", b"plain.in"), came[2]), wanted)
        self.assertEqual(self.take("crv.ps"), chart)

    def test_an_empty_pipe_is_as_an_empty_file(self):
        for kind, (_, options) in CHARTS.items():
            with self.subTest(kind=kind):
                (self.folder / "plain.in").write_bytes(b"")
                wanted = self.run_named(options, "plain.in")
                self.assertEqual(self.run_named(options, "/dev/stdin", input=b"", stdin=None), wanted)

    def test_a_closed_standard_input_gives_no_chart(self):
        done = self.run_crv(["-r", "0,38:3", "-f", "/dev/stdin", "-p"], stdin=None, preexec_fn=lambda: os.close(0))
        self.assertEqual(done[0], 1)
        self.assertNotIn(b"fini, ", done[1])
        self.assertFalse((self.folder / "crv.ps").exists())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
