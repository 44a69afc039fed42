#!/usr/bin/env python3
"""The manual page and the completions are found, by those who look for them, where they are installed.

    installed_test.py CMAKE BUILD ZSH_FOLDER
"""
import pathlib
import subprocess
import sys
import tempfile

import questions
import shell_on_terminal

PATH = "/usr/bin:/bin"
LOADER = pathlib.Path("/usr/share/bash-completion/bash_completion")


def answer(command, folder, **environment):
    done = subprocess.run(command, cwd=folder, env={"PATH": PATH, "LC_ALL": "C.UTF-8", **environment},
                          stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60)
    return done.stdout


def faults_of_man(man, share):
    page = next(share.glob("man/man1/crv.1*"), None)
    found = answer([man, "-M", share / "man", "-w", "crv"], share)
    if found.strip() != str(page):
        yield f"man finds {found!r}, not {page}"


def faults_of_bash(bash, share, home):
    ask = f"source {LOADER}; __load_completion crv || _completion_loader crv; complete -p crv"
    found = answer([bash, "--norc", "-c", ask], home, HOME=str(home), XDG_DATA_DIRS=str(share))
    if "-F _crv crv" not in found:
        yield f"bash does not load the completion: {found!r}"


def faults_of_zsh(zsh, share, home, folder):
    ask = f"fpath=({share}/zsh/{folder} $fpath); autoload -Uz compinit; compinit -D -u; print $_comps[crv]"
    found = answer([zsh, "-f", "-c", ask], home, HOME=str(home))
    if found.strip() != "_crv":
        yield f"zsh does not load the completion: {found!r}"


def faults_of_fish(fish, share, home):
    found = answer([fish, "-c", "complete -C 'crv -ab'"], home, HOME=str(home), XDG_DATA_DIRS=str(share),
                   PATH=f"{share.parent}/bin:{PATH}")  # fish asks for the completion of programs that are there only
    if not found.startswith("-abs\t"):
        yield f"fish does not load the completion: {found!r}"


def main():
    cmake, build, folder = sys.argv[1:]
    bash, zsh, fish, man = (shell_on_terminal.need(name) for name in ("bash", "zsh", "fish", "man"))
    if not LOADER.exists():
        print("skipped: bash-completion is not installed, so it was not asked for the completion")
        sys.exit(shell_on_terminal.SKIPPED)
    with tempfile.TemporaryDirectory() as scratch:
        home, prefix = pathlib.Path(scratch, "home"), pathlib.Path(scratch, "prefix")
        home.mkdir()
        subprocess.run([cmake, "--install", build, "--prefix", prefix], stdout=subprocess.DEVNULL, check=True)
        share = prefix / "share"
        faults = [*faults_of_man(man, share), *faults_of_bash(bash, share, home), *faults_of_zsh(zsh, share, home, folder),
                  *faults_of_fish(fish, share, home)]
        installed = {path.read_bytes() for path in share.rglob("*") if path.is_file()}
        sources = [questions.ROOT / "man/crv.1", *sorted((questions.ROOT / "completions").iterdir())]
        faults += [f"{path.name} is not installed" for path in sources if path.read_bytes() not in installed]
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
