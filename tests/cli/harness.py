"""Shared by the command-line scripts: a small file of each format, and the messages of its run."""
import os
import pathlib
import resource
import sys
from typing import NamedTuple

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from support import sandbox  # noqa: E402  (found by the path above)

MEMORY_LIMIT = 2 << 30  # bytes: a faulty run must not use up the memory of the machine
REQ = b"\nrun\n1\n7 1 0 0 0\n1\n10\n2\n20\n3\n30\n"
TABLE = b" 1.0000e+00  1.0000e+01 \n 2.0000e+00  2.0000e+01 \n 3.0000e+00  3.0000e+01 \n"
SELECTED = '%crv_05-i-ids, Request ids   = "0,7" \n'
VOILA = "\n%crv_01-i-fin, voila\n"
WROTE_NOTHING = '%crv_05-i-fil, File to write = "x" \n' + VOILA  # of a run that ends in -w x
CHART = "%crv_05-i-ps , Postscript plotting selected \n"
CHART_DONE = "  \n %crv_05-i-fini, ******** voila\n"


def selecting(selection, path):
    return (f'%crv_05-i-ids, Request ids   = "{selection}" \n'
            f'%crv_05-i-fil, File to process = "{path}" \n')


def stored(points):
    """The number of points as a signed integer of 16 bits."""
    return (points + 32_768) % 65_536 - 32_768


def outside(points, total):
    """The warning for points of the first curve that are not drawn."""
    return "" if points == 0 else (f"%crv_44-w-pts, Curve 1: {points} of {total} points are "
                                   "outside the ranges of the chart and left out\n")


class Format(NamedTuple):
    """A file format with a file of three points."""
    option: str
    selection: str
    data: bytes
    prefix: str  # of its system errors
    status: int  # of a run whose file cannot be read
    first: str   # message, as a format
    last: str

    def run(self, box, path, selection=None, option=None, **options):
        """Reads a file; no chart is drawn."""
        return box.crv("-r", selection or self.selection, option or self.option, path, "-w", "x",
                       **options)

    def wrapped(self, path, points, *labels):
        """The warnings for columns of more points than a count of 16 bits represents."""
        count = stored(points)
        return "" if count == points else "".join(
            f'%crv_{self.prefix[5:7]}-w-cnt, "{label}" of "{path}" has {points} values, counted as '
            f"{count}: its mean is the sum divided by {count}\n" for label in labels)

    def opening(self, path, selection=None):
        """The messages until the file is open."""
        return selecting(selection or self.selection, path) + self.first.format(path)

    def reading(self, path, steps=3, selection=None):
        """The messages until the file is read."""
        return self.opening(path, selection) + self.last.format(path, steps)


REQUEST = Format("-f", "0,7", REQ, "    _83-", 1, '%crv_83-i-wor, Reading "{0}" ...\n',
                 "%crv_83-i-pts, file ({0}) has {1} steps\n")
MADYMO = Format("-fm", "0,1", b"run\n\n1 0\nname\n1\n10\n2\n20\n3\n30\n", "    _88-", 0,
                '%crv_88-i-wor, Reading "{0}" ...\n', "%crv_88-i-pts, file ({0}) has {1} steps\n")
COLUMN = Format("-fp", "1,2", b"time value\n1 10\n2 20\n3 30\n", "    _94-", 0,
                '%crv_94-i-wor, Reading "{0}" ...\n', "%crv_94-i-val, file {0} has  2 columns.\n"
                "%crv_94-i-pts, file {0} has {1} steps\n")
FRAME = Format("-fg", "0", b"%N\n3\n%D\n1 10\n2 20\n3 30\n", "    _85-", 0, "",
               "%crv_85-i-dat, Vandor CRV_FRM_FILE data loaded, number of points = {1} \n")
FORMATS = (REQUEST, MADYMO, COLUMN, FRAME)


def reading(path, steps=3):
    """The messages of a run that reads a request file."""
    return REQUEST.reading(path, steps)


def printing(command):
    return f'%crv_45-i-prt, Printer command = "{command}"\n'


def drawing(command, printed=""):
    """The messages of a run that draws a chart of a.req, with the output of its printer command."""
    return reading("a.req") + CHART + printing(command) + printed + CHART_DONE


def draw(box, *name, **options):
    """Draws a chart of a.req under a name or the default name; it must be complete."""
    box.write("a.req", REQ)
    result = box.crv("-r", "0,7", "-f", "a.req", "-p", *name, **options)
    chart = name[0] if name else "crv.ps"
    box.expect(chart, (box.read(chart) or b"")[-10:], b"showpage \n")
    return result


PROGRAM = os.path.abspath(sandbox.given("--crv"))
IS_SANITIZED = b"__asan_init" in pathlib.Path(PROGRAM).read_bytes()


def expect_small(box, what):
    """No run of this script has used much memory, whatever its input."""
    peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss // 1024
    box.assertLessEqual(peak, 400 if IS_SANITIZED else 64, f"MiB that {what} took")


def main():
    os.umask(0o022)
    sandbox.Sandbox.variables = {"ASAN_OPTIONS": f"hard_rss_limit_mb={MEMORY_LIMIT >> 20}"}
    if not IS_SANITIZED:
        resource.setrlimit(resource.RLIMIT_AS,
                           (MEMORY_LIMIT, resource.getrlimit(resource.RLIMIT_AS)[1]))
    sandbox.main(PROGRAM)
