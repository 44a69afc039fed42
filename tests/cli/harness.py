"""What the fault and bounds tests share: a fresh folder, the program run in it within limits, comparisons to the byte.

A test file holds one function per sentence; each is given a Place of its own. `main` runs them and tells what differs.
"""
import argparse
import os
import pathlib
import resource
import shutil
import subprocess
import sys
import tempfile

TIME_LIMIT = 100  # seconds a run may take before it counts as hanging, also on a busy machine
MEMORY_LIMIT = 2 << 30  # bytes: a run that takes more does not spoil the machine
NOBODY = 65534
STATUS_SKIPPED = 77
SUPPRESSIONS = pathlib.Path(__file__).resolve().parent.parent / "unit/leaks.supp"

REQ = b"\nrun\n1\n7 1 0 0 0\n1\n10\n2\n20\n3\n30\n"
MAD = b"run\n\n1 0\nname\n1\n10\n2\n20\n3\n30\n"
POS = b"time value\n1 10\n2 20\n3 30\n"
VDR = b"%N\n3\n%D\n1 10\n2 20\n3 30\n"

# Option, selection, file, its prefix of system errors, the status that its failure ends with, what reading begins with
# and ends with.
FORMATS = (
    ("-f", "0,7", REQ, "    _83-", 1, '%crv_83-i-wor, Reading "{0}" ...\n', "%crv_83-i-pts, file ({0}) has {1} steps\n"),
    ("-fm", "0,1", MAD, "    _88-", 0, '%crv_88-i-wor, Reading "{0}" ...\n', "%crv_88-i-pts, file ({0}) has {1} steps\n"),
    ("-fp", "1,2", POS, "    _94-", 0, '%crv_94-i-wor, Reading "{0}" ...\n',
     "%crv_94-i-val, file {0} has  2 columns.\n%crv_94-i-pts, file {0} has {1} steps\n"),
    ("-fg", "0", VDR, "    _85-", 0, "",
     "%crv_85-i-dat, Vandor CRV_FRM_FILE data loaded, number of points = {1} \n"),
)
WROTE_NOTHING = '%crv_05-i-fil, File to write = "x" \n\n%crv_01-i-fin, voila\n'  # of a run that ends in -w x
CHART = "%crv_05-i-ps , Postscript plotting selected \n"
CHART_DONE = "  \n %crv_05-i-fini, ******** voila\n"


def selecting(selection, path):
    return f'%crv_05-i-ids, Request ids   = "{selection}" \n%crv_05-i-fil, File to process = "{path}" \n'


def reading(path, steps=3, selection="0,7"):
    """What a run prints that reads a request file."""
    begin, end = FORMATS[0][5:]
    return selecting(selection, path) + begin.format(path) + end.format(path, steps)


def printing(command):
    return f'%crv_45-i-prt, Printer command = "{command}"\n'


def is_sanitized(crv):
    return b"__asan_init" in pathlib.Path(crv).read_bytes()


class Place:
    """A folder, and the program to be run in it."""

    differences = []
    left_out = []  # reasons

    def __init__(self, sentence, crv, scratch):
        self.sentence = sentence
        self.crv = crv
        self.folder = scratch / "run"
        self.tools = scratch / "bin"
        self.folder.mkdir()
        self.tools.mkdir()
        (self.tools / "lpr").write_text('#!/bin/sh\nfor word in "$@"; do echo "[$word]"; done > printed\n')
        (self.tools / "lpr").chmod(0o755)

        self.is_sanitized = is_sanitized(crv)

    def write(self, name, data=REQ):
        path = self.folder / os.fsdecode(name)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)
        return path

    def read(self, name):
        path = self.folder / os.fsdecode(name)
        return path.read_bytes() if path.exists() else None

    def names(self):
        return sorted(os.listdir(self.folder))

    def environment(self, **changes):
        plain = {"PATH": f"{self.tools}:/usr/bin:/bin", "TZ": "UTC0", "LC_ALL": "C",
                 "ASAN_OPTIONS": f"hard_rss_limit_mb={MEMORY_LIMIT >> 20}",
                 "LSAN_OPTIONS": f"suppressions={SUPPRESSIONS}:print_suppressions=0"}
        return plain | changes

    def start(self, *arguments, environment=None, memory=None, **options):
        """Starts a run. `memory` limits its address space, in bytes."""
        if memory:
            options["preexec_fn"] = lambda: resource.setrlimit(resource.RLIMIT_AS, (memory, memory))
        options.setdefault("stdin", subprocess.DEVNULL)
        options.setdefault("stdout", subprocess.PIPE)
        options.setdefault("stderr", subprocess.PIPE)
        options.setdefault("cwd", self.folder)
        return subprocess.Popen(["crv", *arguments], executable=self.crv, env=self.environment(**(environment or {})),
                                **options)

    def run(self, *arguments, typed=None, **options):
        """Runs to the end: stdout, stderr, status. A signal that ended the run is a status below 0."""
        if typed is not None:
            options["stdin"] = subprocess.PIPE
        return self.finish(self.start(*arguments, **options), typed)

    def shell(self, command, typed=b"", **options):
        """The same for a command of the shell, in which $CRV is the program."""
        child = subprocess.Popen(["sh", "-c", command], cwd=self.folder, env=self.environment(CRV=self.crv),
                                 stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE, **options)
        return self.finish(child, typed)

    def finish(self, child, typed=None):
        try:
            stdout, stderr = child.communicate(typed, timeout=TIME_LIMIT)
        except subprocess.TimeoutExpired:
            child.kill()
            child.communicate()
            return "", f"still running after {TIME_LIMIT} s", None
        return os.fsdecode(stdout or b""), os.fsdecode(stderr or b""), child.returncode

    def expect(self, what, got, wanted):
        if got != wanted:
            self.differences.append(f"{self.sentence}: {what}\n    wanted {short(wanted)}\n    got    {short(got)}")

    def expect_run(self, what, got, stdout="", stderr="", status=0):
        self.expect(what, got, (stdout, stderr, status))

    def expect_ending(self, what, got, stdout="", stderr="", status=0):
        """The same, but of standard output only the end counts."""
        printed, *others = got
        self.expect_run(what, (printed[max(len(printed) - len(stdout), 0):], *others), stdout, stderr, status)

    def expect_small(self, what):
        """No run of this test file so far took much memory, whatever it was fed with."""
        peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss // 1024
        limit = 400 if self.is_sanitized else 64
        if peak > limit:
            self.differences.append(f"{self.sentence}: {what} took {peak} MiB")


def short(thing):
    text = repr(thing)
    return text if len(text) < 1200 else text[:600] + " ... " + text[-600:]


class Mounted:
    """A small file system of its own at `folder`; false when this user may not mount one."""

    def __init__(self, folder, size):
        self.folder = folder
        self.size = size
        self.mounted = False

    def __enter__(self):
        self.folder.mkdir(exist_ok=True)
        if os.geteuid() == 0 and shutil.which("mount"):
            done = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={self.size}", "tmpfs", self.folder],
                                  capture_output=True, check=False)
            self.mounted = done.returncode == 0
        if not self.mounted:
            Place.left_out.append("this user may not mount a file system")
        return self

    def __exit__(self, *_):
        if self.mounted:
            subprocess.run(["umount", self.folder], check=True)

    def __bool__(self):
        return self.mounted


def main(*tests):
    parser = argparse.ArgumentParser()
    parser.add_argument("--crv", required=True)
    crv = os.path.abspath(parser.parse_args().crv)
    os.umask(0o022)
    if not is_sanitized(crv):
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, resource.getrlimit(resource.RLIMIT_AS)[1]))
    for test in tests:
        with tempfile.TemporaryDirectory() as scratch:
            os.chmod(scratch, 0o755)
            test(Place(test.__name__.replace("_", " "), crv, pathlib.Path(scratch)))
    print(*Place.differences, sep="\n")
    if Place.left_out and not Place.differences:
        print(f"skipped in part: {Place.left_out[0]}; the rest has passed")
        sys.exit(STATUS_SKIPPED)
    sys.exit(1 if Place.differences else 0)
