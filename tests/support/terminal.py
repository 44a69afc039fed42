"""A program on a pseudo-terminal: reads its output and types keys."""
import fcntl
import os
import pty
import select
import signal
import struct
import termios
import time

PATIENCE = 30.0  # seconds to wait for an answer


class Terminal:
    def __init__(self, command, directory, environment, columns=0, rows=0):
        """The terminal has this size; 0 means that it does not know it."""
        self.screen = b""
        self.child, self.descriptor = pty.fork()
        if self.child == 0:
            fcntl.ioctl(1, termios.TIOCSWINSZ, struct.pack("4H", rows, columns, 0, 0))
            os.chdir(directory)
            signal.signal(signal.SIGINT, signal.SIG_DFL)  # ignored by a run in the background
            os.execvpe(command[0], command, environment)

    def read_until(self, done, patience=PATIENCE):
        """Reads until done() is true, the program has ended or patience is over; returns done()."""
        end = time.monotonic() + patience
        while not done() and time.monotonic() < end:
            if select.select([self.descriptor], [], [], 0.05)[0]:
                try:
                    data = os.read(self.descriptor, 65536)
                except OSError:  # the program has ended
                    break
                if not data:
                    break
                self.screen += data
        return done()

    def wait_for(self, done):
        if not self.read_until(done):
            raise TimeoutError(f"no answer; the screen shows {self.screen.decode()!r}")

    def text(self):
        """The screen with plain newlines."""
        return self.screen.decode(errors="replace").replace("\r\n", "\n")

    def type(self, keys):
        os.write(self.descriptor, keys.encode())

    def finish(self):
        """Reads to the end of the program; returns its exit status."""
        self.read_until(lambda: False)
        _, status = os.waitpid(self.child, 0)
        os.close(self.descriptor)
        return os.waitstatus_to_exitcode(status)

    def kill(self):
        os.kill(self.child, signal.SIGKILL)
        os.waitpid(self.child, 0)
        os.close(self.descriptor)


def rendered(screen):
    """The text that a terminal without escape sequences then shows, without blanks at line ends."""
    lines, column = [""], 0
    for character in screen.decode(errors="replace"):
        if character == "\r":
            column = 0
        elif character == "\n":
            lines.append("")
            column = 0
        else:
            lines[-1] = lines[-1][:column] + character + lines[-1][column + 1:]
            column += 1
    return "\n".join(line.rstrip() for line in lines)
