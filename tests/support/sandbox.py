"""A sandbox for each test: a temporary directory, a bare environment, runs of programs, checks.

A test is a function test_*(box) of a script. `box` is a Sandbox, and thus a unittest.TestCase.
The script ends with main(), which runs its tests in their order, or with "-k WORD" those with
the word in their names. The exit status is 0 when all passed, 1 when one failed or there is
none, and 77 when none failed and one was skipped.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest
from typing import NamedTuple

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXAMPLES = ROOT / "examples"
SKIPPED = 77  # the exit status that ctest takes for a skipped test
TIME_LIMIT = 100  # seconds until a run counts as hanging, also on a busy machine
LPR = 'for word in "$@"; do echo "[$word]"; done > printed\n'
SYSTEM_PATH = "/usr/bin:/bin"


class Result(NamedTuple):
    """Output and exit status of a run; a signal is a negative status."""
    stdout: str
    stderr: str
    status: int


def programs_beside(program):
    """Paths by name: "crv" is the program, and each "crv-NAME" is one that was built with it."""
    others = pathlib.Path(program).parent.glob("crv-*")
    return {"crv": program} | {path.name: path for path in others if path.name[4:].isalpha()}


class Sandbox(unittest.TestCase):
    """Programs run in `dir`; `bin` is the first directory of PATH, and has crv, the other programs
    and a stand-in for lpr, which writes its arguments to the file "printed"."""
    program = None
    variables = {}  # of the environment, for all tests of a script
    maxDiff = None

    def __init__(self, test=None):
        super().__init__()
        self.test = test

    def __str__(self):
        return self.test.__name__

    def runTest(self):
        self.test(self)

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.base = pathlib.Path(scratch.name)
        self.base.chmod(0o755)
        self.dir, self.bin = self.base / "run", self.base / "bin"
        self.dir.mkdir()
        self.bin.mkdir()
        self.add_tool("lpr", LPR)
        if self.program:
            for name, path in programs_beside(self.program).items():
                (self.bin / name).symlink_to(path)
        suppressions = f"suppressions={ROOT}/tests/unit/leaks.supp:print_suppressions=0"
        self.environment = {"PATH": f"{self.bin}:{SYSTEM_PATH}", "TZ": "UTC0", "LC_ALL": "C",
                            "HOME": str(self.base), "LSAN_OPTIONS": suppressions, **self.variables}

    def add_tool(self, name, script):
        """Puts a shell script on the path."""
        (self.bin / name).unlink(missing_ok=True)
        (self.bin / name).write_text("#!/bin/sh\n" + script)
        (self.bin / name).chmod(0o755)

    def path(self, name):
        return self.dir / os.fsdecode(name)

    def write(self, name, data):
        path = self.path(name)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data.encode() if isinstance(data, str) else data)
        return path

    def read(self, name):
        """The bytes of a file; None when it is missing."""
        path = self.path(name)
        return path.read_bytes() if path.exists() else None

    def take(self, name):
        """The bytes of a file, which is removed."""
        data = self.read(name)
        self.path(name).unlink()
        return data

    def names(self, directory="."):
        """All entries of a directory, hidden ones too."""
        return sorted(os.listdir(self.path(directory)))

    def copy_example(self, name, target="."):
        shutil.copy(EXAMPLES / name, self.path(target))

    def start(self, *command, **options):
        """Starts a program. Options in capitals are environment variables, others are Popen's."""
        changes = {name: options.pop(name) for name in list(options) if name.isupper()}
        options = {"cwd": self.dir, "env": self.environment | changes, "stdin": subprocess.DEVNULL,
                   "stdout": subprocess.PIPE, "stderr": subprocess.PIPE} | options
        return subprocess.Popen(command, **options)

    def finish(self, child, typed=None, timeout=TIME_LIMIT):
        """Waits for the end of a run that was started."""
        try:
            stdout, stderr = child.communicate(typed, timeout)
        except subprocess.TimeoutExpired:
            child.kill()
            child.communicate()
            raise
        return Result(os.fsdecode(stdout or b""), os.fsdecode(stderr or b""), child.returncode)

    def run_program(self, *command, typed=None, timeout=TIME_LIMIT, **options):
        """Runs a program to its end, with `typed` as standard input."""
        if typed is not None:
            options["stdin"] = subprocess.PIPE
        return self.finish(self.start(*command, **options), typed, timeout)

    def crv(self, *arguments, **options):
        return self.run_program("crv", *arguments, **options)

    def shell(self, command, **options):
        return self.run_program("sh", "-c", command, **options)

    def output_of(self, *command, **options):
        """Standard output of a program that must succeed."""
        result = self.run_program(*command, **options)
        self.assertEqual(result.status, 0, f"{command}: {result.stderr}")
        return result.stdout

    def expect(self, what, got, expected):
        """Reports a difference; the test goes on."""
        with self.subTest(what):
            if got != expected:
                expected, got = repr(expected), repr(got)
                same = len(os.path.commonprefix([expected, got]))
                self.fail(f"\n  expected {shorten(expected, same)}\n"
                          f"  got      {shorten(got, same)}")

    def expect_run(self, what, got, stdout="", stderr="", status=0):
        self.expect(what, tuple(got), (stdout, stderr, status))

    def expect_ending(self, what, got, stdout="", stderr="", status=0):
        """The same, but only the end of standard output counts."""
        ending = got.stdout[max(len(got.stdout) - len(stdout), 0):]
        self.expect_run(what, (ending, got.stderr, got.status), stdout, stderr, status)

    def require(self, *programs, path=None):
        """Skips the test when a program is missing; returns the paths of the programs."""
        found, missing = find_programs(programs, path)
        if missing:
            self.skipTest(missing)
        return found

    def mount(self, size):
        """Mounts a file system of `size` at `dir`; skips the test when this user may not."""
        command = ["mount", "-t", "tmpfs", "-o", f"size={size}", "tmpfs", str(self.dir)]
        if os.geteuid() != 0 or subprocess.run(command, capture_output=True).returncode != 0:
            self.skipTest("this user may not mount a file system")
        self.addCleanup(subprocess.run, ["umount", self.dir], check=True)


def shorten(text, same):
    """The part of a long text around the first difference, after `same` characters."""
    begin = max(same - 200, 0)
    cut = text[begin:same + 400]
    return ("... " if begin else "") + cut + (" ..." if len(text) > same + 400 else "")


def given(option):
    """The value of an option of the script, None without it."""
    return sys.argv[sys.argv.index(option) + 1] if option in sys.argv else None


def find_programs(programs, path):
    """The paths of the programs, and a message if one is missing."""
    found = [shutil.which(name, path=path) for name in programs]
    missing = " ".join(name for name, where in zip(programs, found) if not where)
    return found, missing and f"not installed: {missing}; scripts/setup.sh installs what is missing"


def require(*programs, path=None):
    """Skips the script when a program is missing."""
    _, missing = find_programs(programs, path)
    if missing:
        skip(missing)


def skip(reason):
    print(f"skipped: {reason}")
    sys.exit(SKIPPED)


def report(faults):
    """Ends a script that collects its faults."""
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


def main(program=None, kind=Sandbox, tests=None):
    """Runs tests, by default those of the script, in sandboxes of a kind with `program` as crv."""
    Sandbox.program = program and os.path.abspath(program)
    if tests is None:
        tests = [function for name, function in vars(sys.modules["__main__"]).items()
                 if name.startswith("test_")]
    word = given("-k") or ""
    suite = unittest.TestSuite(kind(test) for test in tests if word in test.__name__)
    result = unittest.TextTestRunner(stream=sys.stdout).run(suite)
    for test, reason in result.skipped:
        print(f"skipped {test}: {reason}")
    failed = not result.wasSuccessful() or not result.testsRun
    sys.exit(1 if failed else SKIPPED if result.skipped else 0)
