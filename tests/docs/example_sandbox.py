"""A sandbox with the example files, the companions and a printer that does nothing."""
import pathlib
import shutil
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from support import sandbox  # noqa: E402  (found by the path above)

COMPANIONS = ("crv2pdf", "crv2png", "crv2svg")


class ExampleSandbox(sandbox.Sandbox):
    def __init__(self, crv):
        super().__init__()
        self.program = crv

    def __enter__(self):
        self.setUp()
        self.add_tool("lpr", "")
        for name in COMPANIONS:
            (self.bin / name).symlink_to(sandbox.ROOT / "companions" / name)
        shutil.copytree(sandbox.EXAMPLES, self.dir, dirs_exist_ok=True)
        return self

    def __exit__(self, *_):
        self.doCleanups()

    def text(self, name):
        return self.read(name).decode()

    def run(self, *command):
        """Returns the status, and both streams as one text."""
        stdout, _, status = self.run_program(*command, stderr=subprocess.STDOUT)
        return status, stdout
