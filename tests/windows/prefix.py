#!/usr/bin/env python3
"""Makes the prefix of Wine, and keeps its server running for the tests.

    prefix.py PROGRAM WINE start                   makes a missing prefix, and starts the server
    prefix.py PROGRAM WINE run OTHER [ARGUMENT]    runs another program with the prefix
    prefix.py PROGRAM WINE stop                    stops the server
"""
import pathlib
import shutil
import subprocess
import sys

import wine


def main():
    program, loader = (pathlib.Path(path) for path in sys.argv[1:3])
    environment = wine.environment(program.resolve(), loader)
    beside = [loader.parent / name for name in ("wineserver64", "wineserver")]
    server = next((path for path in beside if path.exists()), shutil.which("wineserver"))

    def run(*command, output=subprocess.DEVNULL):
        return subprocess.call(command, env=environment, stdout=output, stderr=output,
                               stdin=subprocess.DEVNULL, timeout=240)

    if sys.argv[3] == "run":
        sys.exit(run(loader, *sys.argv[4:], output=None))
    if sys.argv[3] == "stop":
        run(server, "-k")
        sys.exit(0)
    prefix = pathlib.Path(environment["WINEPREFIX"])
    if not (prefix / "system.reg").exists() and run(loader, "wineboot", "-i") != 0:
        sys.exit("Wine did not make its prefix")
    run(server, "-w")  # the first start must be complete before the tests
    run(server, "-p60")
    sys.exit(run(loader, "cmd", "/c", "ver"))


main()
