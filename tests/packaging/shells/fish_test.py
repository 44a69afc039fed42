#!/usr/bin/env python3
"""The words that fish offers after crv: by its own command, and on a terminal."""
import os

import questions
import shell_on_terminal

COMPLETION = questions.ROOT / "completions/crv.fish"
SPY = """function crv; printf '%s\\0' $argv >took.new; command mv took.new took; end
function fish_prompt; printf 'ready> '; end
function fish_right_prompt; end
set -g fish_greeting
set -g fish_autosuggestion_enabled 0
"""


class Fish(shell_on_terminal.Completion):
    shell = "fish"

    def launch(self, directory, settings):
        config = self.base / ".config/fish/config.fish"
        config.parent.mkdir(parents=True)
        config.write_text(f"source '{COMPLETION}'\n{SPY}")
        environment = {"HOME": str(self.base), "USER": os.environ.get("USER", "")}
        return shell_on_terminal.ShellOnTerminal(directory, ["fish", "-i"], environment)

    def answer(self, line, directory):
        """The lines that fish answers: a word, a tab, the help."""
        script = "source $argv[1]; complete -C $argv[2]"
        result = self.run_program("fish", "--no-config", "-c", script, COMPLETION, line,
                                  cwd=directory, LC_ALL="C.UTF-8")
        return result.stdout.splitlines() + result.stderr.splitlines()

    def ask_in(self, directory):
        return lambda line: [word.split("\t")[0] for word in self.answer(line, directory)]


def test_help(box):
    for line, expected in (("crv -fm", "-fma\tMadymo table: title, statistics and data"),
                           ("crv -r 0,", "0,38:\tBODY_DISPLACEMENT"),
                           ("crv -r 0,", "0,70:\trequest"), ("crv -r 0,38:", "0,38:3\tDispl Z")):
        box.assertIn(expected, box.answer(line, box.dir), line)


shell_on_terminal.main(Fish, test_help)
