#!/usr/bin/env python3
"""What zsh offers behind crv, on a terminal."""
import questions
import shell_on_terminal

EVERY = "\x18a"  # the key that puts all that is offered on the line
SETTINGS = """fpath=('%s/completions' $fpath)
autoload -Uz compinit; compinit -C -u -d "$HOME/dump"
PS1='ready> '; PROMPT_EOL_MARK=
unset zle_bracketed_paste
bindkey -e
LISTMAX=1000
every() { _main_complete; compstate[insert]=all; compstate[list]= }
zle -C every complete-word every
bindkey '^Xa' every
"""


def start(zsh, home, folder, settings=""):
    (home / ".zshrc").write_text(SETTINGS % questions.ROOT + shell_on_terminal.SPY + settings)
    shell = shell_on_terminal.shell_on_terminal(folder, [zsh, "-d", "-i"], {"HOME": str(home), "ZDOTDIR": str(home)})
    shell.wait_for(b"ready> ")
    return shell


def ask(shell, line):
    """All that is offered for the last word of the line."""
    *before, current = line.split(" ")[1:]
    got = shell.type(line + EVERY)[len(before):]
    return [] if got in ([], [current]) else got


def faults_of_keys(shell, home):
    """What stands on the line after the tabulator."""
    for typed, wanted in (("crv -fm my\t", ["-fm", "my run.mad"]), ("crv -fm my\\ r\t", ["-fm", "my run.mad"]),
                          ('crv -fm "my r\t', ["-fm", "my run.mad"]), ("crv -fm '$\t", ["-fm", "$(touch pwned).mad"]),
                          ("crv -f ru\t-p", ["-f", "run1.req", "-p"]), ("crv -r 0,7\t3", ["-r", "0,70:3"]),
                          ('crv -r "0,7\t3"', ["-r", "0,70:3"]), ("crv -r 0,38:3=ma\t-f", ["-r", "0,38:3=max", "-f"]),
                          ("crv -fm x:\t", ["-fm", "x:y.mad"]), ("crv -fm x\t", ["-fm", "x:y.mad"]),
                          ("crv -f ~/ho\t", ["-f", str(home / "home.req")]),
                          ("crv -r 0 -f run1.req >no\t", ["-r", "0", "-f", "run1.req"])):
        got = shell.type(typed)
        if got != wanted:
            yield f"zsh: {typed!r} gives {got}, not {wanted}"
    for typed, lines in (("crv -fm\t", ["-fm -- read a Madymo file", "-fma -- Madymo table: title, statistics and data"]),
                         ("crv -r 0,\t", ["38: -- BODY_DISPLACEMENT", "70: -- request"])):
        yield from shell.faults_of_list(typed, lines)


if __name__ == "__main__":
    shell_on_terminal.judge("zsh", start, ask, faults_of_keys,
                            "setopt sh_word_split ksh_arrays no_unset no_glob\n")
