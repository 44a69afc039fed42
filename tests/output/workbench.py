# output/workbench - a folder with a chart, and the companions on the path, for each test.
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

CRV, ROOT, BUILD = (pathlib.Path(path).resolve() for path in sys.argv[1:4])
COMPANIONS = ROOT / "companions"
SUFFIXES = ("pdf", "png", "svg")


class Workbench(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name, "run")
        self.tools = pathlib.Path(scratch.name, "bin")
        self.folder.mkdir()
        self.tools.mkdir()
        (self.tools / "crv").symlink_to(CRV)
        for suffix in SUFFIXES:
            (self.tools / f"crv2{suffix}").symlink_to(COMPANIONS / f"crv2{suffix}")
        shutil.copy(ROOT / "examples/run1.req", self.folder)
        self.environment = {"PATH": f"{self.tools}:/usr/bin:/bin", "TZ": "UTC0", "HOME": scratch.name}

    def run_program(self, *command, **more):
        """Runs a program in the folder; PATH and the like can be given as more."""
        return subprocess.run(command, cwd=self.folder, env={**self.environment, **more}, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, errors="surrogateescape", timeout=120)

    def draw_chart(self, name="crv.ps", chain=":"):
        """The chart of the quarter car; what was printed on the way."""
        done = self.run_program("crv", "-t", "Quarter car over a bump", "-r", "0,38:3,52:3,70:2", "-f", "run1.req",
                                "-p", name, CRV_PRINTCHAIN=chain)
        self.assertEqual(done.returncode, 1, done.stdout + done.stderr)
        return done

    def assert_done(self, done):
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))

    def assert_failed(self, done, status, *lines):
        self.assertEqual((done.returncode, done.stdout), (status, ""))
        self.assertEqual(done.stderr, "".join(f"{line}\n" for line in lines))

    def names(self, folder=None):
        """All that lies in a folder, hidden files too."""
        return sorted(os.listdir(folder or self.folder))

    def output_of(self, *command):
        done = self.run_program(*command)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout


def main():
    unittest.main(argv=sys.argv[:1] + sys.argv[4:])
