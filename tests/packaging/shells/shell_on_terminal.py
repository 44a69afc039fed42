"""A shell on a pseudo-terminal, in a folder of its own, where crv is a function that writes down its arguments.

So a test sees what the shell would have handed to the program, quotes taken away, after the keys were typed."""
import os
import pathlib
import pty
import select
import shutil
import signal
import sys
import tempfile
import time

import questions

PATIENCE = 30.0
SKIPPED = 77
SPY = 'crv() { printf "%s\\0" "$@" >took.new; command mv took.new took; }\n'


def need(shell):
    """The path of the shell; without it the test says so and is skipped."""
    path = shutil.which(shell)
    if path is None:
        print(f"skipped: {shell} is not installed, so its completion was not tried")
        sys.exit(SKIPPED)
    return path


class shell_on_terminal:
    def __init__(self, folder, command, environment):
        self.took = pathlib.Path(folder, "took")
        self.screen = b""
        self.child, self.terminal = pty.fork()
        if self.child == 0:
            os.chdir(folder)
            os.execve(command[0], command, {"PATH": "/usr/bin:/bin", "TERM": "dumb", "LC_ALL": "C.UTF-8", **environment})

    def read_until(self, done):
        end = time.monotonic() + PATIENCE
        while not done():
            if time.monotonic() > end:
                raise TimeoutError(f"the shell does not answer; the screen shows {self.screen.decode()!r}")
            if select.select([self.terminal], [], [], 0.05)[0]:
                self.screen += os.read(self.terminal, 65536)

    def wait_for(self, text):
        self.read_until(lambda: text in self.screen)

    def type(self, keys):
        """Types the keys and return; gives the arguments that crv was called with."""
        self.screen = b""
        os.write(self.terminal, keys.encode() + b"\r")
        self.read_until(self.took.exists)
        arguments = self.took.read_bytes().decode().split("\0")[:-1]
        self.took.unlink()
        self.wait_for(b"ready> ")
        return arguments

    def lines(self):
        """The lines of the screen, with single blanks."""
        return [" ".join(line.split()) for line in self.screen.decode(errors="replace").splitlines()]

    def faults_of_list(self, keys, wanted):
        """Types the keys and waits for the lines on the screen."""
        self.screen = b""
        os.write(self.terminal, keys.encode())
        try:
            self.read_until(lambda: set(wanted) <= set(self.lines()))
        except TimeoutError:
            yield f"{keys!r} does not show {wanted}: {self.lines()}"
        os.write(self.terminal, b"\x15crv shown\r")
        self.read_until(self.took.exists)
        self.took.unlink()
        self.wait_for(b"ready> ")

    def close(self):
        os.kill(self.child, signal.SIGKILL)
        os.waitpid(self.child, 0)
        os.close(self.terminal)


def judge(name, start, ask, faults_of_keys, strict_settings):
    """Asks the shell all questions, in folders and with settings of many kinds, and ends the test with what was wrong.

    start(program, home, folder, settings) gives a shell, ask(shell, line) what it offers behind the line, and
    faults_of_keys(shell, home) what is wrong with the keys of a user."""
    program = need(name)
    with tempfile.TemporaryDirectory() as scratch:
        home = pathlib.Path(scratch, "home")
        home.mkdir()
        (home / "home.req").write_text("")
        shells = []

        def ask_in(folder, settings=""):
            shells.append(start(program, home, folder, settings))
            return lambda line: ask(shells[-1], line)

        faults = questions.judge(name, scratch, ask_in)
        usual = pathlib.Path(scratch, "usual")
        shells.append(start(program, home, usual))
        faults += faults_of_keys(shells[-1], home)
        if (usual / "no").exists():
            faults.append(f"{name}: the file behind > was not completed")
        strict = ask_in(usual, strict_settings)
        if strict("crv -r ") != ["0,", *questions.REQUESTS]:
            faults.append(f"{name}: strict settings are in the way")
        for shell in shells:
            shell.close()
        faults += [f"{name}: text was run: {path}" for path in pathlib.Path(scratch).rglob("pwned")]
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)
