"""The files that the lint checks read, and how a check ends."""
import fnmatch
import pathlib
import shutil
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))
from support.sandbox import skip  # noqa: E402  (found by the path above)

ROOT = pathlib.Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else HERE.parents[1]
NOT_SOURCE = {".git", "build", "dist", "demo", "__pycache__"}
# Inputs, and output to the byte.
DATA = ("tests/cases/*", "tests/fuzz/seeds/*", "tests/fuzz/bugs/*")
SHELL = ("*.sh", "*.bash", ".ci/run", "companions/*")
CODE = ("*.cpp", "*.h")
PYTHON = ("*.py",)
CMAKE = ("CMakeLists.txt", "*/CMakeLists.txt", "*.cmake")
WEB = ("*.js", "*.css", "*.html")
PROSE = ("*.md",)
TEXT = (*CODE, *PYTHON, *SHELL, *CMAKE, *WEB, *PROSE)


def all_files():
    """Paths below ROOT: those that git knows, or in a source archive all but what a build made."""
    if (ROOT / ".git").exists() and shutil.which("git"):
        command = ["git", "-C", str(ROOT), "-c", f"safe.directory={ROOT}",
                   "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
        done = subprocess.run(command, capture_output=True, check=False)
        if done.returncode == 0:
            names = set(done.stdout.decode().split("\0")) - {""}
            return sorted(name for name in names if (ROOT / name).is_file())
    return sorted(path.relative_to(ROOT).as_posix() for path in ROOT.rglob("*")
                  if path.is_file() and not NOT_SOURCE.intersection(path.relative_to(ROOT).parts))


def files(*patterns):
    """Paths below ROOT that match a pattern and are no data."""
    def matches(name, some):
        return any(fnmatch.fnmatchcase(name, pattern) for pattern in some)
    return [name for name in all_files() if matches(name, patterns) and not matches(name, DATA)]


def require(program, tier):
    if not shutil.which(program):
        skip(f"{program} is not installed; scripts/setup.sh {tier} installs it")


def run_over(names, *command):
    """Ends the check as the command does that is given the files."""
    if not names:
        sys.exit("no files to check: the check itself is broken")
    sys.exit(subprocess.run([*command, *names], cwd=ROOT, check=False).returncode)


def finish(faults):
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)
