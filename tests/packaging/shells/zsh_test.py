#!/usr/bin/env python3
"""The words that zsh offers after crv, on a terminal."""
import questions
from shell_on_terminal import (KEYS, QUOTES, SPY, Completion, ShellOnTerminal, main,
                               test_strict_settings)

EVERY = "\x18a"  # the key that inserts all words
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


class Zsh(Completion):
    shell = "zsh"
    strict_settings = "setopt sh_word_split ksh_arrays no_unset no_glob\n"
    keys = (*KEYS, *QUOTES, ('crv -r "0,7\t3"', ["-r", "0,70:3"]))
    lists = (("crv -fm\t", ["-fm -- read a Madymo file",
                            "-fma -- Madymo table: title, statistics and data"]),
             ("crv -r 0,\t", ["38: -- BODY_DISPLACEMENT", "70: -- request"]))

    def launch(self, directory, settings):
        (self.base / ".zshrc").write_text(SETTINGS % questions.ROOT + SPY + settings)
        return ShellOnTerminal(directory, ["zsh", "-d", "-i"],
                               {"HOME": str(self.base), "ZDOTDIR": str(self.base)})

    def offered(self, shell, line):
        *before, current = line.split(" ")[1:]
        got = shell.run(line + EVERY)[len(before):]
        return [] if got in ([], [current]) else got


main(Zsh, test_strict_settings)
