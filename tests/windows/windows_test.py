#!/usr/bin/env python3
"""What only the program for Windows has: line ends of two characters in all that it reads and writes, listings by dir, numbers
of the system, a log that the interpreter shows; and numbers as they are everywhere, under another runtime."""
import argparse
import pathlib
import random
import re
import subprocess
import sys
import tempfile

import wine

TESTS = pathlib.Path(__file__).resolve().parents[1]
EXAMPLES = TESTS.parent / "examples"
faults = []


class Run:
    """A folder with files, and what a program prints there, to the byte."""

    def __init__(self, given):
        self.environment = wine.environment(pathlib.Path(given.crv).resolve(), given.wine)
        self.scratch = tempfile.TemporaryDirectory()
        self.folder = pathlib.Path(self.scratch.name)

    def put(self, name, data):
        (self.folder / name).write_bytes(data)

    def get(self, name):
        path = self.folder / name
        return path.read_bytes() if path.exists() else b"no file " + name.encode()

    def start(self, *words, typed=b""):
        """Returns what the words print, standard output and standard error together, and keeps the status."""
        done = subprocess.run([self.environment["CRV_WINE"], *words], cwd=self.folder, env=self.environment, input=typed,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60)
        self.status = done.returncode
        return done.stdout

    def crv(self, *arguments, typed=b""):
        return self.start(self.environment["CRV_START_AS"], "crv", *arguments, typed=typed)


def check(what, good):
    if not good:
        faults.append(what)


def same(what, wanted, got):
    check(f"{what}: wanted {wanted!r}, got {got!r}", wanted == got)


def with_cr(data):
    return data.replace(b"\n", b"\r\n")


def check_written_files(run):
    """The chart and the table are those of the cases, with CR LF."""
    run.put("run1.req", (EXAMPLES / "run1.req").read_bytes())
    run.environment["CRV_PRINTCHAIN"] = "echo printing"
    printed = run.crv("-r", "0,38:3", "-f", "run1.req", "-p")
    chart = (TESTS / "cases/chart/request-file-becomes-chart/out/crv.ps").read_bytes()
    check("the chart is not the one of the cases with CR LF", run.get("crv.ps") == with_cr(chart))
    check(f"the printer command did not run in its place: {printed[-300:]!r}", printed.endswith(
        b'%crv_45-i-prt, Printer command = "echo printing crv.ps"\r\nprinting crv.ps\r\n'
        b"  \r\n %crv_05-i-fini, ******** voila\r\n"))
    same("status of a chart", 1, run.status)


def check_input_with_cr(run):
    """Files with CR LF give what those with LF give, and a Ctrl-Z is a character like any other."""
    for name, arguments in (("small.req", ["-r", "0,38:3,1:2", "-fa"]), ("sled.mad", ["-r", "0,1:2", "-fma"])):
        source = next(shelf / name for shelf in (TESTS / "data", EXAMPLES) if (shelf / name).exists())
        plain = source.read_bytes().replace(b"\r\n", b"\n")
        tables = []
        for data in (plain, with_cr(plain)):
            run.put(name, data)
            run.crv(*arguments, name)
            tables.append(run.get(name[:-3] + "dat"))
        check(f"{name} with CR LF gives another table", tables[0] == tables[1] and b"Mean    ^^^" in tables[0])
    run.put("mark.pos", b"one\r\n1\r\n2 \x1a\r\n3\r\n")
    check("reading ends at a Ctrl-Z", b"has 3 steps" in run.crv("-r", "0,1", "-fp", "mark.pos", "-w", "x"))


def check_numbers(run):
    """Numbers are read and written as they are everywhere; the reference is Python's."""
    source = random.Random(11)
    values = [source.choice([-1, 1]) * source.random() * 10.0 ** source.randint(-300, 300) for _ in range(300)]
    values += [5e-324, 2.2250738585072014e-308, 1.7976931348623157e308, 0.0, -0.0, 1.00005, 100005.0, 0.5, 2.5]
    texts = [repr(value) for value in values]
    texts += ["1d5", "0x1p4", "1e400", "-1e400", "1e-400", "-x", ".5", "5.", "+7", "nan", "inf"]
    wanted = values + [1.0, 16.0, float("inf"), float("-inf"), 0.0, 0.0, 0.5, 5.0, 7.0]
    cells = [f"{value:.4e}" for value in wanted] + ["nan", "inf"]
    run.put("numbers.pos", ("one\n" + "\n".join(texts) + "\n").encode())
    dump = run.crv("-r", "1,1", "-fp", "numbers.pos", "-w", "x", "-v", "86").decode()
    shown = dump.split("stddev")[1].split("\r\n", 1)[1].split()[:len(cells)]
    wrong = [f"{text}: wanted {cell}, got {got}" for text, cell, got in zip(texts, cells, shown) if cell != got]
    same("numbers", (len(cells), []), (len(shown), wrong))


def check_pickers(run):
    """Both lists come from dir: sorted regardless of case, names as they are; a listing does not stay."""
    for name in ("b.req", "A.REQ", "c d.req", "other.pos"):
        run.put(name, (TESTS / "data/small.req").read_bytes())
    names = [b"A.REQ", b"b.req", b"c d.req"]
    shown = run.crv("-v", "34", "-r", "0", "-fd", typed=b"2:3\r\n")
    check(f"the commands of the list of several are not shown: {shown!r}",
          b'command1 = "dir /o /b > crv_temp.tmp *.req" \r\n    _34-i-val command2 = "del crv_temp.tmp" \r\n' in shown)
    check(f"the list of several is another: {shown!r}",
          b"\r\n \r\n" + b"".join(b" %3d --> %s\r\n" % item for item in enumerate(names, 1)) + b"\r\nEnter" in shown)
    check(f"the range is not taken: {shown!r}",
          b"_34-i-val, File   1: b.req\r\n    _34-i-val, File   2: c d.req\r\n" in shown)
    check("the table of the picked file has no CR LF", run.get("c d.dat").count(b"\r\n") == 3)
    shown = run.crv("-r", "0,38", "-f", "-w", "x", typed=b"3\r\n")
    check(f"the list of one is another: {shown!r}",
          b" \r\n" + b"".join(b"%3d --> %s\r\n" % item for item in enumerate(names, 1)) + b"\r\nSelect" in shown)
    check(f"the file is not taken: {shown!r}", b'File = "c d.req" \r\n' in shown)
    check("a listing stays", not list(run.folder.glob("*.tmp")))


def check_system(run):
    """The numbers of the system are those that the interpreter knows."""
    ver = run.start("cmd", "/c", "ver").decode()
    major, minor, build = re.search(r"(\d+)\.(\d+)\.(\d+)", ver).groups()
    system = f"Windows_NT {major}.{minor} os-{build}.wi-{int(major) * 256 + int(minor)}"
    status = run.crv("-s").decode()
    check(f"not {system} in {status}", f" ! crv  Version: (2003.0.15.0) - ({system})\r\n" in status)
    check(f"not {system} in {status}", f" ! Current  sys: {system}\r\n" in status)
    check(f"the date is missing in {status}", re.search(r"Current date: \d{4}-\d\d-\d\d \d\d:\d\d:\d+ \+0000\r\n", status))


def check_log(run, program):
    """Usage file and log have CR LF; the interpreter shows the log; a path with backslashes is kept whole."""
    head = rb"\d{4}-\d\d-\d\d NT_User    Version: \(2003\.0\.15\.0\) - \(Windows_NT \d+\.\d+ os-\d+\.wi-\d+\)  Command = \("
    run.crv("-u", "-w", "x")
    check(f"the usage line is another: {run.get('crv.use')!r}",
          re.fullmatch(head + rb"-u, -w, x, \)\r\n", run.get("crv.use")))
    asked = run.start(program, "1", typed=b"one line\r\nanother\r\n\r\n")
    same("the comment dialogue", b"\r\n      Enter comment in the product log, <return> when finished:\r\n"
         b"  crv >   crv >   crv > %utl_501-s-fin, Completed entry in log file crv.log\r\n", asked)
    log = run.get("crv.log")
    check(f"the log entry is another: {log!r}",
          re.fullmatch(rb"\r\n" + head + rb"Log Entry\)\r\n > one line\r\n > another\r\n > \r\n", log))
    same("the log as it is shown", log, run.start(program, "0"))
    here = "Z:" + str(run.folder).replace("/", "\\") + "\\plot.exe"
    run.start(run.environment["CRV_START_AS"], here, "-u", "-w", "x")
    check("a path with backslashes is not kept whole", run.get("plot.exe.use").endswith(b"-u, -w, x, )\r\n"))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--crv", required=True)
    parser.add_argument("--wine", required=True)
    parser.add_argument("--write-log", required=True)
    given = parser.parse_args()
    for part in (check_written_files, check_input_with_cr, check_numbers, check_pickers, check_system):
        part(Run(given))
    check_log(Run(given), given.write_log)
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
