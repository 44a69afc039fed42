"""A shell on a pseudo-terminal, in a folder of its own, where crv is a function that writes down its arguments.

So a test sees what the shell would have handed to the program, quotes taken away, after the keys were typed."""
import os
import pathlib
import pty
import select
import shutil
import signal
import sys
import time

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
