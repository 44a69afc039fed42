#!/usr/bin/env python3
"""What fish offers behind crv: asked with its own question, and on a terminal."""
import os
import pathlib
import subprocess
import sys
import tempfile

import questions
import shell_on_terminal

QUESTION = "source $argv[1]; complete -C $argv[2]"
SPY = """function crv; printf '%s\\0' $argv >took.new; command mv took.new took; end
function fish_prompt; printf 'ready> '; end
function fish_right_prompt; end
set -g fish_greeting
set -g fish_autosuggestion_enabled 0
"""


def offered(fish, home, folder, line):
    """The lines that fish answers: what is offered, a tabulator, the help."""
    environment = {"PATH": "/usr/bin:/bin", "HOME": str(home), "LC_ALL": "C.UTF-8"}
    done = subprocess.run([fish, "--no-config", "-c", QUESTION, questions.ROOT / "completions/crv.fish", line], cwd=folder,
                          env=environment, stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60)
    return done.stdout.splitlines() + done.stderr.splitlines()


def faults_of_help(fish, home, folder):
    for line, wanted in (("crv -fm", "-fma\tMadymo table: title, statistics and data"),
                         ("crv -r 0,", "0,38:\tBODY_DISPLACEMENT"), ("crv -r 0,", "0,70:\trequest"),
                         ("crv -r 0,38:", "0,38:3\tZ")):
        got = offered(fish, home, folder, line)
        if wanted not in got:
            yield f"fish: {line!r} has no {wanted!r}: {got}"


def faults_of_keys(shell):
    """What stands on the line after the tabulator."""
    for typed, wanted in (("crv -fm my\t", ["-fm", "my run.mad"]), ("crv -fm my\\ r\t", ["-fm", "my run.mad"]),
                          ("crv -f ru\t-p", ["-f", "run1.req", "-p"]), ("crv -r 0,7\t3", ["-r", "0,70:3"]),
                          ("crv -r 0,38:3=ma\t-f", ["-r", "0,38:3=max", "-f"])):
        got = shell.type(typed)
        if got != wanted:
            yield f"fish: {typed!r} gives {got}, not {wanted}"


def main():
    fish = shell_on_terminal.need("fish")
    with tempfile.TemporaryDirectory() as scratch:
        home = pathlib.Path(scratch, "home")
        (home / ".config/fish").mkdir(parents=True)

        def ask_in(folder):
            return lambda line: [answer.split("\t")[0] for answer in offered(fish, home, folder, line)]

        faults = questions.judge("fish", scratch, ask_in)
        usual = pathlib.Path(scratch, "usual")
        faults += faults_of_help(fish, home, usual)
        (home / ".config/fish/config.fish").write_text(f"source '{questions.ROOT}/completions/crv.fish'\n{SPY}")
        shell = shell_on_terminal.shell_on_terminal(usual, [fish, "-i"], {"HOME": str(home), "USER": os.environ.get("USER", "")})
        shell.wait_for(b"ready> ")
        faults += faults_of_keys(shell)
        shell.close()
        faults += [f"fish: text was run: {path}" for path in pathlib.Path(scratch).rglob("pwned")]
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
