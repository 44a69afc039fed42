# packaging/packages/shared - what the tests of the packages have in common: the packages, a run of a program from them, skipping.
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[3]
SKIPPED = 77
# dpkg wants its own tools, which lie where only root has them in its path.
TOOLS = {"PATH": f"{os.environ.get('PATH', '')}:/usr/sbin:/usr/bin:/sbin:/bin", "TZ": "UTC0", "LC_ALL": "C"}
CHART = ["-t", "Quarter car over a bump", "-r", "0,38:3,52:3,70:2", "-f", "run1.req", "-p"]
CHART_STATUS = 1  # of a finished chart

DATABASE = "var/lib/dpkg"

faults = []


def expect(name, got, wanted):
    if got != wanted:
        faults.append(f"{name}:\n  wanted {wanted!r}\n  got    {got!r}")


def skip(reason):
    print(f"SKIPPED: {reason}")
    sys.exit(SKIPPED)


def finish(left_out=None):
    """Ends the test; with a reason why something was left out it counts as skipped, unless it has failed."""
    print(*faults, sep="\n")
    if left_out and not faults:
        skip(left_out)
    sys.exit(1 if faults else 0)


def need(*programs):
    missing = [name for name in programs if not shutil.which(name, path=TOOLS["PATH"])]
    if missing:
        skip(f"not installed: {' '.join(missing)}; scripts/test.sh installs what is missing when it may")


def need_to_build():
    """What scripts/package.sh would install."""
    need("dpkg-shlibdeps", "fakeroot", "file", "lintian", "unzip", "zip")


def given():
    """The folder of the packages and the program as it was built for the other tests."""
    if not pathlib.Path(sys.argv[1]).is_dir():
        skip("the packages were not made")
    return pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()


def package(folder, ending):
    found = sorted(folder.glob(f"crv[-_]*{ending}"))
    if len(found) != 1:
        sys.exit(f"one package *{ending} was wanted, there are {[path.name for path in found]}")
    return found[0]


def run(*command, status=0, **rest):
    """Runs a command and returns what it printed on both streams; another status than wanted is a fault."""
    rest.setdefault("env", TOOLS)
    done = subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, timeout=1500, **rest)
    printed = done.stdout.decode("utf-8", "backslashreplace")
    if done.returncode != status:
        faults.append(f"{' '.join(map(str, command))}: status {done.returncode}, wanted {status}\n{printed}")
    return printed


def as_root(*command):
    """The command as root, or as what takes itself for root."""
    return command if os.geteuid() == 0 else ("fakeroot", *command)


def copy_source(target):
    shutil.copytree(ROOT, target, ignore=shutil.ignore_patterns(".git", "build", "dist", "demo", "__pycache__"))


def listing(folder):
    """Every file and folder below, without what it holds."""
    return sorted(str(path.relative_to(folder)) for path in folder.rglob("*"))


def fresh_root(folder):
    """A root folder with the package database of a system on which only the C library is installed."""
    database = folder / DATABASE
    for name in ("info", "updates", "triggers"):
        (database / name).mkdir(parents=True)
    for name in ("available", "diversions", "statoverride", "info/format"):
        (database / name).write_text("1\n" if name == "info/format" else "")
    done = subprocess.run(["dpkg-query", "--status", "libc6"], capture_output=True, text=True, env=TOOLS, check=True)
    # What the C library needs itself is not the question here.
    kept = [line for line in done.stdout.splitlines() if not line.startswith(("Depends:", "Recommends:", "Breaks:"))]
    (database / "status").write_text("\n".join(kept) + "\n")
    processor = run("dpkg", "--print-architecture").strip()
    (database / f"info/libc6:{processor}.list").write_text("/.\n")


def draw(program, request_file):
    """The chart that a program draws of the example, and what it prints."""
    with tempfile.TemporaryDirectory() as folder:
        shutil.copy(request_file, pathlib.Path(folder, "run1.req"))
        printed = run(program, *CHART, status=CHART_STATUS, cwd=folder, env={**TOOLS, "CRV_PRINTCHAIN": ":"})
        chart = pathlib.Path(folder, "crv.ps")
        return chart.read_bytes() if chart.exists() else b"", printed


def expect_same_chart(name, program, request_file, built):
    """A packaged program draws and says what the one does that all other tests were run with."""
    wanted_chart, wanted_words = draw(built, ROOT / "examples/run1.req")
    chart, words = draw(program, request_file)
    expect(f"{name}: what is printed", words, wanted_words)
    expect(f"{name}: a chart is drawn", wanted_chart.startswith(b"%!"), True)
    expect(f"{name}: the chart is that of the built program", chart == wanted_chart, True)
