#!/usr/bin/env python3
"""Makes the folder that Wine needs, and keeps its server ready for the tests that follow.

    prefix.py PROGRAM WINE start                   makes the folder unless it is there, and starts the server
    prefix.py PROGRAM WINE run OTHER [ARGUMENT]    runs another program there
    prefix.py PROGRAM WINE stop                    stops the server
"""
import pathlib
import shutil
import subprocess
import sys

import wine


def main():
    program, loader, action = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]), sys.argv[3]
    environment = wine.environment(program, loader)
    beside = [loader.parent / name for name in ("wineserver64", "wineserver")]
    server = next((path for path in beside if path.exists()), shutil.which("wineserver"))

    if action == "run":
        sys.exit(subprocess.run([loader, *sys.argv[4:]], env=environment, stdin=subprocess.DEVNULL, timeout=240).returncode)

    def run(*command):
        return subprocess.run(command, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              stdin=subprocess.DEVNULL, timeout=240).returncode

    if action == "stop":
        run(server, "-k")
        sys.exit(0)
    prefix = pathlib.Path(environment["WINEPREFIX"])
    if not (prefix / "system.reg").exists() and run(loader, "wineboot", "-i") != 0:
        sys.exit("Wine did not make its folder")
    run(server, "-w")  # nothing of the first start goes on while the tests run
    run(server, "-p60")
    sys.exit(run(loader, "cmd", "/c", "ver"))


if __name__ == "__main__":
    main()
