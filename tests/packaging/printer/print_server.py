"""A print server on the loopback interface with all its files in a sandbox, and printers that write
each job to a file."""
import os
import pathlib
import shutil
import socket
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2]))
from support import sandbox  # noqa: E402  (found by the path above)

PATIENCE = 30.0  # seconds for the server to start, or a job to arrive
PATH = "/usr/sbin:/usr/bin:/sbin:/bin"
HELPERS = pathlib.Path("/usr/lib/cups")

# A job gets its name when it is complete.
BACKEND = """#!/bin/sh
if [ $# -eq 0 ]; then echo 'direct keep:/ "Unknown" "keeper"'; exit 0; fi
directory=${DEVICE_URI#keep:}
if [ $# -ge 6 ]; then cat "$6"; else cat; fi >"$directory/.part" &&
    mv "$directory/.part" "$directory/job$1"
"""

SETTINGS = """Listen 127.0.0.1:{port}
LogLevel warn
Browsing No
WebInterface No
DefaultAuthType None
<Location />
  Order allow,deny
  Allow from 127.0.0.1
</Location>
<Policy default>
  <Limit All>
    Order allow,deny
    Allow from 127.0.0.1
  </Limit>
</Policy>
"""

DIRECTORIES = """ServerRoot {base}/etc
ServerBin {base}/lib
DataDir /usr/share/cups
DocumentRoot {base}/doc
CacheDir {base}/cache
StateDir {base}/state
RequestRoot {base}/spool
TempDir {base}/tmp
ServerKeychain {base}/keys
AccessLog {base}/log/access
ErrorLog {base}/log/error
PageLog {base}/log/page
"""
# A server started by root prints as another user.
ROOT_ONLY = "User lp\nGroup lp\nSystemGroup root\n"


def require_server():
    sandbox.require("cupsd", "lpadmin", "lpstat", "lpr", path=PATH)


def free_port():
    with socket.socket() as listener:
        listener.bind(("127.0.0.1", 0))
        return listener.getsockname()[1]


def wait_for(condition):
    end = time.monotonic() + PATIENCE
    while not condition() and time.monotonic() < end:
        time.sleep(0.05)
    return condition()


class PrintServer:
    """A server that runs until the end of the test; the sandbox has its environment and lpr."""

    def __init__(self, box):
        self.box, self.base, port = box, box.base / "server", free_port()
        for name in ("etc", "lib/backend", "lib/filter", "lib/cgi-bin", "doc", "cache", "state",
                     "spool", "tmp", "keys", "log", "home", "jobs"):
            (self.base / name).mkdir(parents=True)
        for name in ("daemon", "notifier", "backend/ipp"):
            (self.base / "lib" / name).symlink_to(HELPERS / name)
        backend = self.base / "lib/backend/keep"
        backend.write_text(BACKEND)
        backend.chmod(0o700)  # so the server runs it as itself, which may write the jobs
        settings, files = self.base / "etc/cupsd.conf", self.base / "etc/cups-files.conf"
        settings.write_text(SETTINGS.format(port=port))
        user = ROOT_ONLY if os.geteuid() == 0 else ""
        files.write_text(DIRECTORIES.format(base=self.base) + user)
        (box.bin / "lpr").unlink()
        box.environment = {"PATH": f"{box.bin}:{PATH}", "TZ": "UTC0", "LC_ALL": "C",
                           "HOME": str(self.base / "home"), "CUPS_SERVER": f"127.0.0.1:{port}"}
        # Security modules that confine programs by path allow the installed program to write only
        # to the directories of the system.
        program = shutil.copy(shutil.which("cupsd", path=PATH), self.base / "cupsd")
        self.process = box.start(program, "-f", "-c", settings, "-s", files,
                                 stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        box.addCleanup(self.stop)
        if not wait_for(lambda: "is running" in box.run_program("lpstat", "-r").stdout):
            log = self.base / "log/error"
            box.fail(f"no answer; the log: {log.read_text() if log.exists() else 'missing'}")

    def add_printer(self, name):
        """A printer that writes its jobs as files into a directory, which is returned."""
        directory = self.base / "jobs" / name
        directory.mkdir()
        self.box.output_of("lpadmin", "-p", name, "-E", "-v", f"keep:{directory}")
        return directory

    def stop(self):
        if self.process.poll() is None:
            self.process.terminate()
            self.process.wait(PATIENCE)


def arrived(directory, count=1):
    """The jobs that a printer has got, after waiting for so many."""
    wait_for(lambda: len(list(directory.glob("job*"))) >= count)
    return [path.read_bytes() for path in sorted(directory.glob("job*"))]
