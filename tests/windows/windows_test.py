#!/usr/bin/env python3
"""Only on Windows: CR LF in every file, listings by dir, the numbers of the system, a log that the
command interpreter shows. As everywhere: numbers, under another runtime."""
import pathlib
import random
import re
import subprocess
import sys

import wine

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from support import sandbox  # noqa: E402  (found by the path above)
from support.sandbox import EXAMPLES, ROOT, given  # noqa: E402

SMALL = ROOT / "tests/data/small.req"
WRITE_LOG = given("--write-log")


class WineSandbox(sandbox.Sandbox):
    def setUp(self):
        super().setUp()
        self.environment = wine.environment(pathlib.Path(given("--crv")).resolve(), given("--wine"))

    def start_program(self, *command, **options):
        """Returns the output of a program on both streams, and its exit status."""
        result = self.run_program(self.environment["CRV_WINE"], *command, stderr=subprocess.STDOUT,
                                  **options)
        return result.stdout, result.status

    def prints(self, *arguments, **options):
        """Returns the output of crv, called as a word of the command line."""
        return self.start_program(self.environment["CRV_START_AS"], "crv", *arguments,
                                  **options)[0]


def with_cr(data):
    return data.replace(b"\n", b"\r\n")


def test_written_files_have_cr(box):
    """The chart and the table are those of the cases, with CR LF."""
    box.copy_example("run1.req")
    printed, status = box.start_program(
        box.environment["CRV_START_AS"], "crv", "-r", "0,38:3", "-f", "run1.req", "-p",
        CRV_PRINTCHAIN="echo printing")
    case = ROOT / "tests/cases/chart/request-file-becomes-chart"
    box.expect("chart", box.read("crv.ps"), with_cr((case / "out/crv.ps").read_bytes()))
    end = ('%crv_45-i-prt, Printer command = "echo printing crv.ps"\r\nprinting crv.ps\r\n'
           "  \r\n %crv_05-i-fini, ******** voila\r\n")
    box.expect("the printer command runs in its place", printed[-len(end):], end)
    box.expect("status", status, 1)


def test_input_may_have_cr(box):
    """The tables are the same, and a Ctrl-Z is a character like any other."""
    for source, *arguments in ((SMALL, "-r", "0,38:3,1:2", "-fa"),
                               (EXAMPLES / "sled.mad", "-r", "0,1:2", "-fma")):
        lines = source.read_bytes().replace(b"\r\n", b"\n")
        tables = []
        for data in (lines, with_cr(lines)):
            box.write(source.name, data)
            box.prints(*arguments, source.name)
            tables.append(box.read(source.stem + ".dat"))
        box.expect(f"table of {source.name} with CR LF", tables[1], tables[0])
        box.assertIn(b"Mean    ^^^", tables[0])
    box.write("mark.pos", b"one\r\n1\r\n2 \x1a\r\n3\r\n")
    box.assertIn("has 3 steps", box.prints("-r", "0,1", "-fp", "mark.pos", "-w", "x"))


def test_numbers_are_those_of_python(box):
    source = random.Random(11)
    values = [source.choice([-1, 1]) * source.random() * 10.0 ** source.randint(-300, 300)
              for _ in range(300)]
    values += [5e-324, 2.2250738585072014e-308, 1.7976931348623157e308, 0.0, -0.0, 1.00005,
               100005.0, 0.5, 2.5]
    texts = [repr(value) for value in values]
    texts += ["1d5", "0x1p4", "1e400", "-1e400", "1e-400", "-x", ".5", "5.", "+7", "nan", "inf"]
    values += [1.0, 16.0, float("inf"), float("-inf"), 0.0, 0.0, 0.5, 5.0, 7.0]
    cells = [f"{value:.4e}" for value in values] + ["nan", "inf"]
    box.write("numbers.pos", "one\n" + "\n".join(texts) + "\n")
    dump = box.prints("-r", "1,1", "-fp", "numbers.pos", "-w", "x", "-v", "86")
    shown = dump.split("stddev")[1].split("\r\n", 1)[1].split()[:len(cells)]
    box.assertEqual(len(shown), len(cells))
    wrong = [f"{text}: expected {cell}, got {got}"
             for text, cell, got in zip(texts, cells, shown) if cell != got]
    box.assertEqual(wrong, [])


def test_lists_come_from_dir(box):
    """They are sorted regardless of case, with names unchanged; a listing is removed."""
    for name in ("b.req", "A.REQ", "c d.req", "other.pos"):
        box.write(name, SMALL.read_bytes())
    lines = [f"{number:3} --> {name}\r\n"
             for number, name in enumerate(("A.REQ", "b.req", "c d.req"), 1)]
    shown = box.prints("-v", "34", "-r", "0", "-fd", typed=b"2:3\r\n")
    box.assertIn('command1 = "dir /o /b > crv_temp.tmp *.req" \r\n'
                 '    _34-i-val command2 = "del crv_temp.tmp" \r\n', shown)
    box.assertIn("\r\n \r\n" + "".join(" " + line for line in lines) + "\r\nEnter", shown)
    box.assertIn("_34-i-val, File   1: b.req\r\n    _34-i-val, File   2: c d.req\r\n", shown)
    box.expect("lines of the table with CR LF", box.read("c d.dat").count(b"\r\n"), 3)
    shown = box.prints("-r", "0,38", "-f", "-w", "x", typed=b"3\r\n")
    box.assertIn(" \r\n" + "".join(lines) + "\r\nSelect", shown)
    box.assertIn('File = "c d.req" \r\n', shown)
    box.expect("listings", [name for name in box.names() if name.endswith(".tmp")], [])


def test_numbers_of_system(box):
    """They are those that the command interpreter prints."""
    version, _ = box.start_program("cmd", "/c", "ver")
    major, minor, build = re.search(r"(\d+)\.(\d+)\.(\d+)", version).groups()
    system = f"Windows_NT {major}.{minor} os-{build}.wi-{int(major) * 256 + int(minor)}"
    status = box.prints("-s")
    box.assertIn(f" ! crv  Version: (2003.0.15.0) - ({system})\r\n", status)
    box.assertIn(f" ! Current  sys: {system}\r\n", status)
    box.assertRegex(status, r"Current date: \d{4}-\d\d-\d\d \d\d:\d\d:\d+ \+0000\r\n")


def test_usage_file_and_log(box):
    """They have CR LF, the interpreter shows the log, and backslashes in a path are kept."""
    head = (rb"\d{4}-\d\d-\d\d NT_User    Version: \(2003\.0\.15\.0\) - "
            rb"\(Windows_NT \d+\.\d+ os-\d+\.wi-\d+\)  Command = \(")
    box.prints("-u", "-w", "x")
    box.assertRegex(box.read("crv.use"), rb"\A" + head + rb"-u, -w, x, \)\r\n\Z")
    asked, _ = box.start_program(WRITE_LOG, "1", typed=b"one line\r\nanother\r\n\r\n")
    box.expect("comment dialogue", asked, "\r\n      Enter comment in the product log, <return> "
               "when finished:\r\n  crv >   crv >   crv > "
               "%utl_501-s-fin, Completed entry in log file crv.log\r\n")
    log = box.read("crv.log")
    entry = rb"Log Entry\)\r\n > one line\r\n > another\r\n > \r\n"
    box.assertRegex(log, rb"\A\r\n" + head + entry + rb"\Z")
    box.expect("shown log", box.start_program(WRITE_LOG, "0")[0], log.decode())
    path = "Z:" + str(box.dir).replace("/", "\\") + "\\plot.exe"
    box.start_program(box.environment["CRV_START_AS"], path, "-u", "-w", "x")
    box.assertRegex(box.read("plot.exe.use"), rb"-u, -w, x, \)\r\n\Z")


sandbox.main(None, WineSandbox)
