#!/usr/bin/env python3
"""man and the shells find the manual page and the completions where they are installed.

    installed_test.py CMAKE BUILD ZSH_DIRECTORY
"""
import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2]))
from support import sandbox  # noqa: E402  (found by the path above)

PATH = sandbox.SYSTEM_PATH
LOADER = pathlib.Path("/usr/share/bash-completion/bash_completion")


def faults_of(share, home, zsh_directory):
    """Every program prints a line that shows that it has found the file."""
    def answer(*command, path=PATH):
        environment = {"PATH": path, "LC_ALL": "C.UTF-8", "HOME": str(home),
                       "XDG_DATA_DIRS": str(share)}
        return subprocess.run(command, cwd=home, env=environment, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, timeout=60).stdout

    for program, option in (("crv", "-abs"), ("crv-csv", "-tm"), ("crv-info", "-fp")):
        page = next(share.glob(f"man/man1/{program}.1*"), None)
        found = answer("man", "-M", share / "man", "-w", program)
        if found.strip() != str(page):
            yield f"man finds {found!r}, not {page}"
        found = answer("bash", "--norc", "-c", f"source {LOADER}; __load_completion {program} || "
                       f"_completion_loader {program}; complete -p {program}")
        function = "_crv_info" if program == "crv-info" else "_crv"
        if f"-F {function} {program}" not in found:
            yield f"bash does not load the completion of {program}: {found!r}"
        found = answer("zsh", "-f", "-c", f"fpath=({share}/zsh/{zsh_directory} $fpath); "
                       f"autoload -Uz compinit; compinit -D -u; print $_comps[{program}]")
        if found.strip() != "_crv":
            yield f"zsh does not load the completion of {program}: {found!r}"
        # fish completes only programs that it finds.
        found = answer("fish", "-c", f"complete -C '{program} {option[:-1]}'",
                       path=f"{share.parent}/bin:{PATH}")
        if f"\n{option}\t" not in f"\n{found}":
            yield f"fish does not load the completion of {program}: {found!r}"


def test_installed_files_are_found(box):
    cmake, build, zsh_directory = sys.argv[1:4]
    prefix = box.base / "prefix"
    box.output_of(cmake, "--install", build, "--prefix", prefix)
    share = prefix / "share"
    box.assertEqual([*faults_of(share, box.dir, zsh_directory)], [])
    installed = {path.read_bytes() for path in share.rglob("*") if path.is_file()}
    for path in (*sandbox.ROOT.glob("man/crv*.1"), *(sandbox.ROOT / "completions").iterdir()):
        box.assertIn(path.read_bytes(), installed, path.name)


if __name__ == "__main__":
    sandbox.require("bash", "zsh", "fish", "man")
    if not LOADER.exists():
        sandbox.skip("bash-completion is not installed")
    sandbox.main()
