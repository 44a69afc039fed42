#!/usr/bin/env python3
"""The words that bash offers after crv, on a terminal."""
import questions
from shell_on_terminal import (KEYS, QUOTES, SPY, Completion, ShellOnTerminal, main,
                               test_strict_settings)

EVERY = "\x1b*"  # the key that inserts all words
INPUTRC = """set show-all-if-ambiguous on
set completion-query-items 0
set page-completions off
set bell-style none
set enable-bracketed-paste off
"""


class Bash(Completion):
    shell = "bash"
    strict_settings = "set -u -f; shopt -s failglob nullglob nocaseglob; IFS=,"
    keys = (*KEYS, *QUOTES, ('crv -r "0,7\t3', ["-r", "0,70:3"]))
    lists = (("crv -fm\t", ["-fm (read a Madymo file)",
                            "-fma (Madymo table: title, statistics and data)"]),)

    def launch(self, directory, settings):
        rc = self.base / "rc"
        rc.write_text(f"source '{questions.ROOT}/completions/crv.bash'\nPS1='ready> '\n"
                      f"HISTFILE=\n{settings}\n{SPY}")
        (self.base / "inputrc").write_text(INPUTRC)
        return ShellOnTerminal(directory, ["bash", "--noprofile", "--rcfile", str(rc), "-i"],
                               {"HOME": str(self.base), "INPUTRC": f"{self.base}/inputrc"})

    def offered(self, shell, line):
        *before, current = line.split(" ")[1:]
        got = shell.run(line + EVERY)[len(before):]
        if got in ([], [current]):
            return []
        # The words of the shell itself begin after a colon or an equals sign.
        prefix = current[:max(current.rfind(":"), current.rfind("=")) + 1]
        return [got[0], *(prefix + word for word in got[1:])]


main(Bash, test_strict_settings)
