#!/usr/bin/env python3
"""What bash offers behind crv, on a terminal."""
import questions
import shell_on_terminal

EVERY = "\x1b*"  # the key that puts all that is offered on the line
KEYS = """set show-all-if-ambiguous on
set completion-query-items 0
set page-completions off
set bell-style none
set enable-bracketed-paste off
"""


def start(bash, home, folder, settings=""):
    (home / "rc").write_text(f"source '{questions.ROOT}/completions/crv.bash'\nPS1='ready> '\nHISTFILE=\n{settings}\n"
                             + shell_on_terminal.SPY)
    (home / "keys").write_text(KEYS)
    shell = shell_on_terminal.shell_on_terminal(folder, [bash, "--noprofile", "--rcfile", str(home / "rc"), "-i"],
                                                {"HOME": str(home), "INPUTRC": str(home / "keys")})
    shell.wait_for(b"ready> ")
    return shell


def ask(shell, line):
    """All that is offered for the last word of the line."""
    *before, current = line.split(" ")[1:]
    got = shell.type(line + EVERY)[len(before):]
    if got in ([], [current]):
        return []
    glue = current[:max(current.rfind(":"), current.rfind("=")) + 1]  # the shell's own words begin behind it
    return [got[0], *(glue + word for word in got[1:])]


def faults_of_keys(shell, home):
    """What stands on the line after the tabulator."""
    for typed, wanted in (("crv -fm my\t", ["-fm", "my run.mad"]), ("crv -fm my\\ r\t", ["-fm", "my run.mad"]),
                          ('crv -fm "my r\t', ["-fm", "my run.mad"]), ("crv -fm '$\t", ["-fm", "$(touch pwned).mad"]),
                          ("crv -f ru\t-p", ["-f", "run1.req", "-p"]), ("crv -r 0,7\t3", ["-r", "0,70:3"]),
                          ('crv -r "0,7\t3', ["-r", "0,70:3"]), ("crv -r 0,38:3=ma\t-f", ["-r", "0,38:3=max", "-f"]),
                          ("crv -fm x:\t", ["-fm", "x:y.mad"]), ("crv -fm x\t", ["-fm", "x:y.mad"]),
                          ("crv -f ~/ho\t", ["-f", str(home / "home.req")]),
                          ("crv -r 0 -f run1.req >no\t", ["-r", "0", "-f", "run1.req"])):
        got = shell.type(typed)
        if got != wanted:
            yield f"bash: {typed!r} gives {got}, not {wanted}"
    yield from shell.faults_of_list("crv -fm\t", ["-fm (read a Madymo file)",
                                                  "-fma (Madymo table: title, statistics and data)"])


if __name__ == "__main__":
    shell_on_terminal.judge("bash", start, ask, faults_of_keys,
                            "set -u -f; shopt -s failglob nullglob nocaseglob; IFS=,")
