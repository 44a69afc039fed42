"""Shared by the package tests: the packages, and charts of a program from them."""
import os
import pathlib
import shutil
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2]))
from support import sandbox  # noqa: E402  (found by the path above)
from support.sandbox import ROOT, require  # noqa: E402

# dpkg needs programs in directories that only root has in its path.
PATH = f"{os.environ.get('PATH', '')}:/usr/sbin:/usr/bin:/sbin:/bin"
CHART = ("-t", "Quarter car over a bump", "-r", "0,38:3,52:3,70:2", "-f", "run1.req", "-p")
CHART_STATUS = 1  # of a finished chart
DATABASE = "var/lib/dpkg"


class Sandbox(sandbox.Sandbox):
    def setUp(self):
        super().setUp()
        self.environment = {"PATH": PATH, "TZ": "UTC0", "LC_ALL": "C", "HOME": str(self.base)}

    def run_command(self, *command, status=0, **options):
        """Runs a command that must end with a status; returns what it printed on both streams."""
        printed, _, got = self.run_program(*command, stderr=subprocess.STDOUT, timeout=1500,
                                           **options)
        self.assertEqual(got, status, f"{' '.join(map(str, command))}:\n{printed}")
        return printed

    def copy_source(self, name):
        """Copies the source like a source archive: without git, with the time of the commit."""
        ignore = shutil.ignore_patterns(".git", "build", "dist", "demo", "__pycache__")
        copy = shutil.copytree(ROOT, self.base / name, ignore=ignore)
        if (ROOT / ".git").exists():
            time = self.output_of("git", "-c", f"safe.directory={ROOT}", "-C", ROOT, "log", "-1",
                                  "--format=%ct")
            (copy / "cmake/commit_time.txt").write_text(time)
        return copy

    def unpack(self, archive):
        """Unpacks an archive with one directory, which is returned."""
        target = self.base / "unpacked"
        target.mkdir()
        self.run_command("tar", "-xpf", archive, "-C", target)
        self.expect("one directory", listing(target, "*"),
                    [archive.name.removesuffix(".tar.gz")])
        return next(target.iterdir())

    def make_root(self):
        """A root directory with the database of a system that has only the C library."""
        root = self.base / "root"
        database = root / DATABASE
        for name in ("info", "updates", "triggers"):
            (database / name).mkdir(parents=True)
        for name in ("available", "diversions", "statoverride", "info/format"):
            (database / name).write_text("1\n" if name == "info/format" else "")
        # The dependencies of the C library do not matter here.
        status = [line for line in self.output_of("dpkg-query", "--status", "libc6").splitlines()
                  if not line.startswith(("Depends:", "Recommends:", "Breaks:"))]
        (database / "status").write_text("\n".join(status) + "\n")
        processor = self.output_of("dpkg", "--print-architecture").strip()
        (database / f"info/libc6:{processor}.list").write_text("/.\n")
        return root

    def draw(self, program, request_file=ROOT / "examples/run1.req"):
        """The chart that a program draws of the example, and what it prints."""
        shutil.copy(request_file, self.path("run1.req"))
        self.path("crv.ps").unlink(missing_ok=True)
        printed = self.run_command(program, *CHART, status=CHART_STATUS, CRV_PRINTCHAIN=":")
        return self.read("crv.ps"), printed

    def expect_same_chart(self, name, program, request_file):
        """A packaged program draws and prints the same as the one of all other tests."""
        expected_chart, expected_text = self.draw(BUILT)
        chart, text = self.draw(program, request_file)
        self.expect(f"{name}: what is printed", text, expected_text)
        self.assertEqual(expected_chart[:2], b"%!", f"{name}: a chart is drawn")
        self.expect(f"{name}: the chart is that of the built program", chart, expected_chart)


def require_to_build():
    """Requires the packages that scripts/package.sh would install."""
    require("dpkg-shlibdeps", "fakeroot", "file", "lintian", "unzip", "zip", path=PATH)


def package(ending):
    found = sorted(PACKAGES.glob(f"crv[-_]*{ending}"))
    if len(found) != 1:
        sys.exit(f"not one package *{ending}: {[path.name for path in found]}")
    return found[0]


def as_root(*command):
    return command if os.geteuid() == 0 else ("fakeroot", *command)


def listing(directory, pattern="**/*"):
    """The names of all files and directories below."""
    return sorted(str(path.relative_to(directory)) for path in directory.glob(pattern))


PACKAGES = pathlib.Path(sys.argv[1]).resolve()
BUILT = pathlib.Path(sys.argv[2]).resolve() if len(sys.argv) > 2 else None


def main(*programs):
    """Runs the tests of the script, which need the packages and some programs."""
    require(*programs, path=PATH)
    if not PACKAGES.is_dir():
        sandbox.skip("the packages were not made")
    sandbox.main(BUILT, Sandbox)
