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

    page = next(share.glob("man/man1/crv.1*"), None)
    found = answer("man", "-M", share / "man", "-w", "crv")
    if found.strip() != str(page):
        yield f"man finds {found!r}, not {page}"
    found = answer("bash", "--norc", "-c", f"source {LOADER}; __load_completion crv || "
                   "_completion_loader crv; complete -p crv")
    if "-F _crv crv" not in found:
        yield f"bash does not load the completion: {found!r}"
    found = answer("zsh", "-f", "-c", f"fpath=({share}/zsh/{zsh_directory} $fpath); "
                   "autoload -Uz compinit; compinit -D -u; print $_comps[crv]")
    if found.strip() != "_crv":
        yield f"zsh does not load the completion: {found!r}"
    # fish completes only programs that it finds.
    found = answer("fish", "-c", "complete -C 'crv -ab'", path=f"{share.parent}/bin:{PATH}")
    if not found.startswith("-abs\t"):
        yield f"fish does not load the completion: {found!r}"


def test_installed_files_are_found(box):
    cmake, build, zsh_directory = sys.argv[1:4]
    prefix = box.base / "prefix"
    box.output_of(cmake, "--install", build, "--prefix", prefix)
    share = prefix / "share"
    box.assertEqual([*faults_of(share, box.dir, zsh_directory)], [])
    installed = {path.read_bytes() for path in share.rglob("*") if path.is_file()}
    for path in (sandbox.ROOT / "man/crv.1", *(sandbox.ROOT / "completions").iterdir()):
        box.assertIn(path.read_bytes(), installed, path.name)


if __name__ == "__main__":
    sandbox.require("bash", "zsh", "fish", "man")
    if not LOADER.exists():
        sandbox.skip("bash-completion is not installed")
    sandbox.main()
