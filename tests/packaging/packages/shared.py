"""Shared by the package tests: the packages, and charts of a program from them."""
import os
import pathlib
import platform
import re
import shutil
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2]))
from support import sandbox  # noqa: E402  (found by the path above)
from support.sandbox import ROOT, require  # noqa: E402

# dpkg needs programs in directories that only root has in its path.
PATH = f"{os.environ.get('PATH', '')}:/usr/sbin:/usr/bin:/sbin:/bin"
SERIES = ("-t", "Quarter car over a bump", "-r", "0,38:3,52:3,70:2", "-f", "run1.req")
CHART = (*SERIES, "-p")
CHART_STATUS = 1  # of a finished chart
# What the viewers of a package are asked for, in a directory with the example, and the file that
# they write.
VIEWS = {"crv-csv": (SERIES, None), "crv-html": ((*SERIES, "-p", "page.html"), "page.html"),
         "crv-info": (("run1.req",), None), "crv-term": (SERIES, None)}
DATABASE = "var/lib/dpkg"
# Processors of the packages: Debian's name, and the emulator with which programs run here that are
# linked statically.
DEBIAN_NAMES = {"x86_64": "amd64", "aarch64": "arm64"}
NATIVE = platform.machine()
EMULATORS = {name: [] if name == NATIVE else [f"qemu-{name}-static"] for name in DEBIAN_NAMES}
VERSION = re.search(r"project\(crv VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text())[1]
# crv is main.cpp; crv-NAME is main_NAME.cpp.
PROGRAMS = sorted(path.stem.replace("main", "crv").replace("_", "-")
                  for path in (ROOT / "src/app").glob("main*.cpp"))


class Sandbox(sandbox.Sandbox):
    def setUp(self):
        super().setUp()
        self.environment = {"PATH": PATH, "TZ": "UTC0", "LC_ALL": "C", "HOME": str(self.base)}

    def run_command(self, *command, status=0, **options):
        """Runs a command that must end with a status; returns what it printed on both streams."""
        options = {"stderr": subprocess.STDOUT, "timeout": 1500} | options
        printed, _, got = self.run_program(*command, **options)
        self.assertEqual(got, status, f"{' '.join(map(str, command))}:\n{printed}")
        return printed

    def path_without(self, *hidden):
        """A path on which all programs of the system are except some."""
        directory = self.base / "programs"
        directory.mkdir()
        for path in pathlib.Path("/usr/bin").iterdir():
            if path.name not in hidden:
                (directory / path.name).symlink_to(path)
        return str(directory)

    def unpack_source(self):
        """Unpacks the source archive; returns its directory."""
        return self.unpack(package(f"crv-{VERSION}.tar.gz"))

    def unpack(self, archive):
        """Unpacks an archive with one directory, which is returned."""
        target = self.base / "unpacked" / archive.name
        target.mkdir(parents=True)
        self.run_command("tar", "-xpf", archive, "-C", target)
        self.expect("one directory", listing(target, "*"),
                    [archive.name.removesuffix(".tar.gz")])
        return next(target.iterdir())

    def make_root(self, processor=NATIVE):
        """A root directory with the database of a system that has only the C library."""
        root = self.base / f"root-{processor}"
        database, name = root / DATABASE, DEBIAN_NAMES[processor]
        for directory in ("info", "updates", "triggers"):
            (database / directory).mkdir(parents=True)
        for file in ("available", "diversions", "statoverride", "info/format"):
            (database / file).write_text("1\n" if file == "info/format" else "")
        # dpkg itself stays that of this machine, so another processor is a foreign one to it.
        native = DEBIAN_NAMES[NATIVE]
        (database / "arch").write_text("".join(f"{one}\n" for one in dict.fromkeys([native, name])))
        # The dependencies of the C library do not matter here.
        status = [line for line in self.output_of("dpkg-query", "--status", "libc6").splitlines()
                  if not line.startswith(("Depends:", "Recommends:", "Breaks:"))]
        text = "\n".join(status).replace(f"Architecture: {native}", f"Architecture: {name}")
        (database / "status").write_text(text + "\n")
        (database / f"info/libc6:{name}.list").write_text("/.\n")
        return root

    def enter(self, root, *command, **options):
        """Runs a program in another root directory, which has nothing but what the test put there;
        skips the test where no user may do this."""
        for enter in (("chroot",), ("unshare", "--map-root-user", "chroot")):
            if subprocess.run([*enter, "/", "true"], capture_output=True).returncode == 0:
                return self.run_program(*enter, root, *command, **options)
        return self.skipTest("no program may be run in another root directory here")

    def expect_programs_work(self, name, run, directory):
        """Each program prints the help of the built one, and each viewer shows the same of the
        example in `directory`. run(PROGRAM, ARGUMENT...) runs the program of the package there and
        returns what it printed, and its status."""
        self.expect("programs", sorted(["crv", *VIEWS]), PROGRAMS)
        for program in PROGRAMS:
            self.expect(f"{name}: help of {program}", run(program, "-h"),
                        self.run_program(BUILT.parent / program, "-h"))
        shutil.copy(ROOT / "examples/run1.req", self.dir)
        for program, (arguments, file) in VIEWS.items():
            expected = self.run_program(BUILT.parent / program, *arguments)
            self.expect(f"status of {program}", expected.status, 0)
            written = take_file(self.dir, file)
            self.expect(f"{name}: {program}", run(program, *arguments), expected)
            self.expect(f"{name}: {file} of {program}", take_file(directory, file), written)

    def draw(self, *program, request_file=ROOT / "examples/run1.req"):
        """The chart that a program draws of the example, and what it prints."""
        shutil.copy(request_file, self.path("run1.req"))
        self.path("crv.ps").unlink(missing_ok=True)
        printed = self.run_command(*program, *CHART, status=CHART_STATUS, CRV_PRINTCHAIN=":")
        return self.read("crv.ps"), printed

    def expect_same_chart(self, name, *program, **options):
        """A packaged program draws and prints the same as the one of all other tests."""
        expected_chart, expected_text = self.draw(BUILT)
        chart, text = self.draw(*program, **options)
        self.expect(f"{name}: what is printed", text, expected_text)
        self.assertEqual(expected_chart[:2], b"%!", f"{name}: a chart is drawn")
        self.expect(f"{name}: the chart is that of the built program", chart, expected_chart)


def take_file(directory, name):
    """Removes a file that a program was to write; returns its contents."""
    if name is None:
        return None
    contents = (directory / name).read_bytes()
    (directory / name).unlink()
    return contents


def make_checkout(box):
    """The source as a git checkout without changes; returns its directory."""
    source = box.unpack_source()
    box.run_command("git", "init", "--quiet", cwd=source)
    commit(box, source)
    return source


def commit(box, source):
    """Commits all changes. The commit has the time of the packages, which comes from the source."""
    time = (source / "cmake/commit_time.txt").read_text().strip()
    box.run_command("git", "add", "--all", cwd=source)
    box.run_command("git", "-c", "user.name=crv", "-c", "user.email=crv@crv.invalid", "commit",
                    "--quiet", "--message", "all", cwd=source, GIT_COMMITTER_DATE=f"{time} +0000")


def require_to_build():
    """Requires the packages that scripts/package.sh would install."""
    require("dpkg-shlibdeps", "fakeroot", "file", "rpmbuild", "zip", "aarch64-linux-gnu-g++",
            "x86_64-w64-mingw32-g++-posix", path=PATH)


def package(pattern):
    found = sorted(PACKAGES.glob(pattern))
    if len(found) != 1:
        sys.exit(f"not one package {pattern}: {[path.name for path in found]}")
    return found[0]


def deb(processor=NATIVE):
    return package(f"crv_*_{DEBIAN_NAMES[processor]}.deb")


def rpm(processor=NATIVE):
    return package(f"crv-*.{processor}.rpm")


def archive(processor=NATIVE):
    return package(f"crv-*-linux-{processor}.tar.gz")


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
