# packaging/printer/print_server - a print server of the test's own, on the loopback and with all its files in one folder, and a printer
# that writes each job to a file.
import contextlib
import os
import pathlib
import shutil
import socket
import subprocess
import sys
import tempfile
import time

PATIENCE = 30.0  # seconds that the server may take to start, or a job to arrive
PATH = "/usr/sbin:/usr/bin:/sbin:/bin"
HELPERS = pathlib.Path("/usr/lib/cups")

# A job is there when it has its whole length: it is written under another name.
KEEPER = """#!/bin/sh
if [ $# -eq 0 ]; then echo 'direct keep:/ "Unknown" "keeper"'; exit 0; fi
folder=${DEVICE_URI#keep:}
if [ $# -ge 6 ]; then cat "$6"; else cat; fi >"$folder/.part" && mv "$folder/.part" "$folder/job$1"
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

FOLDERS = """ServerRoot {base}/etc
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
# A server started by root prints as somebody else; one started by a user as that user.
ROOT_ONLY = "User lp\nGroup lp\nSystemGroup root\n"


def missing():
    """The programs that a print server needs and that are not installed."""
    return [name for name in ("cupsd", "lpadmin", "lpstat", "lpr") if not shutil.which(name, path=PATH)]


def free_port():
    with socket.socket() as listener:
        listener.bind(("127.0.0.1", 0))
        return listener.getsockname()[1]


def wait_for(condition):
    end = time.monotonic() + PATIENCE
    while not condition():
        if time.monotonic() > end:
            return False
        time.sleep(0.05)
    return True


class PrintServer:
    def __init__(self, base):
        self.base, self.port = base, free_port()
        for name in ("etc", "lib/backend", "lib/filter", "lib/cgi-bin", "doc", "cache", "state", "spool", "tmp", "keys",
                     "log", "home", "jobs"):
            (base / name).mkdir(parents=True)
        for name in ("daemon", "notifier"):
            (base / "lib" / name).symlink_to(HELPERS / name)
        (base / "lib/backend/ipp").symlink_to(HELPERS / "backend/ipp")
        keeper = base / "lib/backend/keep"
        keeper.write_text(KEEPER)
        keeper.chmod(0o700)  # so the server runs it as itself, which may write to the folder of the jobs
        (base / "etc/cupsd.conf").write_text(SETTINGS.format(port=self.port))
        (base / "etc/cups-files.conf").write_text(FOLDERS.format(base=base) + (ROOT_ONLY if os.geteuid() == 0 else ""))
        self.environment = {"PATH": PATH, "TZ": "UTC0", "LC_ALL": "C", "HOME": str(base / "home"),
                            "CUPS_SERVER": f"127.0.0.1:{self.port}"}
        # Where programs are confined by their path, the one of the system may write to the folders of the system alone.
        shutil.copy(shutil.which("cupsd", path=PATH), base / "cupsd")
        self.process = subprocess.Popen([base / "cupsd", "-f", "-c", base / "etc/cupsd.conf",
                                         "-s", base / "etc/cups-files.conf"], env=self.environment,
                                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        if not wait_for(self.answers):
            log = base / "log/error"
            self.stop()
            sys.exit(f"the print server does not answer: {log.read_text() if log.exists() else 'it has no log'}")

    def answers(self):
        return "is running" in subprocess.run(["lpstat", "-r"], env=self.environment, capture_output=True, text=True).stdout

    def command(self, *words):
        subprocess.run(words, env=self.environment, check=True)

    def add_keeper(self, name):
        """A printer that writes its jobs as files into a folder, which is returned."""
        folder = self.base / "jobs" / name
        folder.mkdir()
        self.command("lpadmin", "-p", name, "-E", "-v", f"keep:{folder}")
        return folder

    def stop(self):
        if self.process.poll() is None:
            self.process.terminate()
            self.process.wait(PATIENCE)


@contextlib.contextmanager
def print_server():
    with tempfile.TemporaryDirectory() as folder:
        os.chmod(folder, 0o755)  # a server started by root gives its jobs to somebody else
        server = PrintServer(pathlib.Path(folder))
        try:
            yield server
        finally:
            server.stop()


def arrived(folder, count=1):
    """The jobs that a printer has got, when it has got so many."""
    wait_for(lambda: len(list(folder.glob("job*"))) >= count)
    return [path.read_bytes() for path in sorted(folder.glob("job*"))]
