#!/usr/bin/env python3
"""The line of progress on a pseudo-terminal: it is shown while a slow file is read, and nothing of
it is left when something else is printed, asked or run. Pipes and files get nothing of it."""
import fcntl
import os
import re
import signal
import struct
import termios
import threading
import time

from harness import (CHART, CHART_DONE, COLUMN, FORMATS, FRAME, MADYMO, REQ, REQUEST,
                     WROTE_NOTHING, main, printing, reading, selecting)
from support.terminal import Terminal, rendered  # noqa: E402

PIPE_LINE = r"\r\d+\.\d MB  \S"
FILE_LINE = r"\r *\d+ %  \d+\.\d MB/s  \d+ s left  \S"
SLOW = 1.2  # seconds without data, more than a run reads in silence


class Fed:
    """A run on a terminal that reads a FIFO, which the test feeds."""

    def __init__(self, box, name, arguments, program="crv"):
        os.mkfifo(box.path(name))
        environment = box.environment | {"CRV_PRINTCHAIN": "echo got"}
        self.box = box
        self.terminal = Terminal([program, *arguments], box.dir, environment)
        self.writer = os.open(box.path(name), os.O_WRONLY)

    def feed(self, data):
        os.write(self.writer, data)

    def wait_for(self, line):
        """Waits until the line is shown after everything that is shown now."""
        seen = len(self.terminal.screen)
        found = self.terminal.read_until(
            lambda: re.search(line.encode(), self.terminal.screen[seen:]))
        self.box.assertTrue(found, f"no progress; the screen has {self.terminal.screen!r}")

    def end(self):
        """Ends the input and the run. Returns what the screen then shows, and the status."""
        os.close(self.writer)
        status = self.terminal.finish()
        return rendered(self.terminal.screen), status


def stripped(text):
    """The text as rendered() gives it."""
    return "\n".join(line.rstrip() for line in text.split("\n"))


def test_first_second_shows_nothing(box):
    begin = time.monotonic()
    run = Fed(box, "in.req", ["-r", "0,7", "-f", "in.req", "-w", "x"])
    run.wait_for(PIPE_LINE)
    box.assertGreaterEqual(time.monotonic() - begin, 1)
    run.end()


def test_line_is_erased_before_results_of_other_programs(box):
    """Messages and results stand on the same terminal as the line."""
    box.write("whole", REQ)
    box.environment["NO_COLOR"] = "1"
    for program, arguments in (("crv-term", ["-r", "0,7", "-f"]), ("crv-csv", ["-r", "0,7", "-f"]),
                               ("crv-html", ["-p", "crv.html", "-r", "0,7", "-f"]),
                               ("crv-info", ["-f"])):
        plain = box.shell(f"{program} {' '.join(arguments)} whole 2>&1")
        name = f"in-{program}"
        run = Fed(box, name, [*arguments, name], program)
        run.wait_for(PIPE_LINE)
        run.feed(REQ[:-3])
        run.wait_for(PIPE_LINE)
        run.feed(REQ[-3:])
        screen, status = run.end()
        box.expect(program, (screen.replace(name, "whole"), status),
                   (stripped(plain.stdout), plain.status))


def test_line_is_erased_before_messages_of_each_format(box):
    for file in FORMATS:
        name = f"in{file.option}"
        run = Fed(box, name, ["-r", file.selection, file.option, name, "-w", "x"])
        run.wait_for(PIPE_LINE)
        for part in (file.data[:3], file.data[3:-3], file.data[-3:]):
            run.feed(part)
            run.wait_for(PIPE_LINE)
        box.expect(file.option, run.end(),
                   (stripped(file.reading(name) + WROTE_NOTHING), 0))


def test_line_is_erased_before_messages_amid_a_file(box):
    """Messages on both streams, while reading goes on after them."""
    parts = {
        MADYMO: (b"run\n\n", b"1\nname\n1\n", b"10\n2\n"),
        FRAME: (b"%XR 5\n", b"1\n%N\n3\n%XY\n", b"%D\n1 10\n2\n3 30\n"),
        COLUMN: (b"time value\n", b"1 10\n", b"2 20\n"),
        REQUEST: (b"\nrun\n1\n7 1 0 0 0\n", b"1\n10\n2\n\n", b"3\n30\n<++>\n"),
    }
    for file, data in parts.items():
        box.write("whole", b"".join(data))
        plain = box.shell(f"crv -r {file.selection} {file.option} whole -w x 2>&1")
        name = f"in{file.option}"
        run = Fed(box, name, ["-r", file.selection, file.option, name, "-w", "x"])
        for part in data:
            run.wait_for(PIPE_LINE)
            run.feed(part)
        screen, status = run.end()
        box.expect(file.option, (screen.replace(name, "whole"), status),
                   (stripped(plain.stdout), plain.status))


def test_line_is_erased_before_failure(box):
    run = Fed(box, "in.mad", ["-r", "0,1:32", "-fm", "in.mad"])
    run.feed(b"run\n\n1 0\nname\n1\n")
    run.wait_for(PIPE_LINE)
    run.feed(b"10\n")
    box.expect("run", run.end(),
               (stripped(selecting("0,1:32", "in.mad") + MADYMO.first.format("in.mad")
                         + "%crv_88-f-col, Exceeded Max number of col to reqest of 31\n"), 0))


def test_line_is_erased_before_command_and_prompt(box):
    run = Fed(box, "in.req", ["-r", "0,7", "-f", "in.req", "-p", "-t"])
    run.feed(REQ[:-3])
    run.wait_for(PIPE_LINE)
    run.feed(REQ[-3:])
    os.close(run.writer)
    run.terminal.wait_for(lambda: run.terminal.text().endswith("title: "))
    run.terminal.type("A\n")
    status = run.terminal.finish()
    box.expect("screen", rendered(run.terminal.screen),
               stripped(reading("in.req") + CHART + "Enter Major title: A\n"
                        + printing("echo got -t") + "got -t\n" + CHART_DONE))
    box.expect("status", status, 1)


def test_regular_file_shows_share_rate_and_time_left(box):
    """The run is slow because nobody reads its traces at first: they fill a pipe."""
    box.write("big.req", b"\nrun\n1\n7 1 0 0 0\n" + b"1\n10\n" * 200_000)
    os.mkfifo(box.path("traces"))
    command = ["sh", "-c", "exec crv -v 83 -r 7 -f big.req -w x >traces"]
    terminal = Terminal(command, box.dir, box.environment)
    traces = os.open(box.path("traces"), os.O_RDONLY)
    time.sleep(SLOW)
    drain = threading.Thread(target=lambda: read_all(traces))
    drain.start()
    status = terminal.finish()
    drain.join()
    os.close(traces)
    box.expect("status", status, 0)
    box.assertRegex(terminal.screen.decode(), FILE_LINE + "ig.req")
    box.expect("screen", rendered(terminal.screen),
               REQUEST.wrapped("big.req", 200_000, "Displ 7, X"))


def read_all(descriptor):
    while os.read(descriptor, 1 << 20):
        pass


def test_line_is_cut_to_width(box):
    """The name loses its start; characters that a terminal would obey are replaced."""
    name = os.fsdecode(b"long/\x1b[31mname\xff-of-a-file.req")
    box.path("long").mkdir()
    run = Fed(box, name, ["-r", "0,7", "-f", name, "-w", "x"])
    fcntl.ioctl(run.terminal.descriptor, termios.TIOCSWINSZ, struct.pack("HHHH", 24, 30, 0, 0))
    run.wait_for(PIPE_LINE)
    begin = len(run.terminal.screen)
    run.feed(REQ[:10])
    run.wait_for(PIPE_LINE)
    fcntl.ioctl(run.terminal.descriptor, termios.TIOCSWINSZ, struct.pack("HHHH", 24, 60, 0, 0))
    run.feed(REQ[10:20])
    run.wait_for(PIPE_LINE + ".*long")
    shown = run.terminal.screen[begin:].decode().split("\r")
    run.feed(REQ[20:])
    run.end()
    box.assertIn("0.0 MB  mname\ufffd-of-a-file.req", {line.rstrip() for line in shown})
    box.assertIn("0.0 MB  long/\ufffd[31mname\ufffd-of-a-file.req",
                 {line.rstrip() for line in shown})
    box.assertNotIn("\x1b", "".join(shown))


def test_terminal_of_unknown_size_has_80_columns(box):
    """The last of them stays free."""
    name = "x" * 100 + ".req"
    run = Fed(box, name, ["-r", "0,7", "-f", name, "-w", "x"])
    run.wait_for(PIPE_LINE + r"*\.req")
    run.feed(REQ)
    screen = run.terminal.screen.decode()
    run.end()
    box.assertIn("\r0.0 MB  " + "x" * (79 - 8 - 4) + ".req", screen)
    box.assertNotIn("\r0.0 MB  " + "x" * (79 - 8 - 3), screen)


def test_line_is_renewed_ten_times_a_second_at_most(box):
    run = Fed(box, "in.req", ["-r", "0,7", "-f", "in.req", "-w", "x"])
    run.feed(REQ)
    run.wait_for(PIPE_LINE)
    before, begin = len(run.terminal.screen), time.monotonic()
    for _ in range(200):
        run.feed(b"1\n10\n")
        run.terminal.read_until(lambda: False, 0.001)
    run.wait_for(PIPE_LINE)
    tenths = 10 * (time.monotonic() - begin)
    lines = re.findall(PIPE_LINE.encode(), run.terminal.screen[before:])
    box.assertGreater(len(lines), 1)
    box.assertLess(len(lines), tenths + 2)
    run.end()


def test_interrupt_erases_line(box):
    run = Fed(box, "in.req", ["-r", "0,7", "-f", "in.req"])
    run.wait_for(PIPE_LINE)
    os.kill(run.terminal.child, signal.SIGINT)
    status = run.terminal.finish()
    box.expect("run", (rendered(run.terminal.screen), status),
               (stripped(REQUEST.opening("in.req")), -signal.SIGINT))
    os.close(run.writer)


def test_typed_input_shows_nothing(box):
    terminal = Terminal(["crv", "-r", "0,7", "-f", "/dev/stdin", "-w", "x"], box.dir,
                        box.environment)
    terminal.wait_for(lambda: b"Reading" in terminal.screen)
    time.sleep(SLOW)
    terminal.type(REQ.decode() + "\x04")
    status = terminal.finish()
    box.expect("status", status, 0)
    box.assertNotIn(" MB", terminal.text())


def test_background_shows_nothing(box):
    """The shell has job control: it gives the terminal to the job that it waits for."""
    os.mkfifo(box.path("in.req"))
    script = ("set -m; crv -r 0,7 -f in.req -w x & exec 3>in.req; sleep 1.2; "
              "printf '\\nrun\\n1\\n7 1 0 0 0\\n1\\n' >&3; sleep 0.3; printf '10\\n' >&3; "
              "exec 3>&-; wait $!")
    terminal = Terminal(["bash", "-c", script], box.dir, box.environment)
    box.expect("status", terminal.finish(), 0)
    box.assertIn("has 1 steps", terminal.text())
    box.assertNotIn(" MB", terminal.text())


def test_pipes_and_files_get_nothing(box):
    os.mkfifo(box.path("in.req"))
    errors = box.path("err").open("wb")
    box.addCleanup(errors.close)
    for what, errors in (("pipe", {}), ("file", {"stderr": errors})):
        child = box.start("crv", "-r", "0,7", "-f", "in.req", "-w", "x", **errors)
        with open(box.path("in.req"), "wb", buffering=0) as writer:
            writer.write(REQ[:10])
            time.sleep(SLOW)
            writer.write(REQ[10:])
        box.expect_run(what, box.finish(child), reading("in.req") + WROTE_NOTHING)
    box.expect("file", box.read("err"), b"")


main()
