#!/usr/bin/env python3
# packaging/printer/page_test - the commands that docs/install.md shows for setting up a printer, run line by line in one shell with a
# print server of the test's own: the chart comes out of the printer that the page calls printer.example.
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

from print_server import PATH, arrived, missing, print_server

TESTS = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(TESTS))
from page_commands import commands_of  # noqa: E402

EXAMPLE = TESTS.parent / "examples/run1.req"
SKIPPED = 77

faults = []


def expect(name, got, wanted):
    if got != wanted:
        faults.append(f"{name}:\n  wanted {wanted!r}\n  got    {got!r}")


def write_tool(folder, name, text):
    (folder / name).write_text("#!/bin/sh\n" + text)
    (folder / name).chmod(0o755)


def run_page(crv, server, lines):
    """Runs the lines, the program's too, which ends with 1 when it has drawn its chart. Returns the chart and what was said."""
    address = server.environment["CUPS_SERVER"] + "/printers/street"
    script = "\n".join(line + " || [ $? -eq 1 ]" if line.startswith("crv ") else line for line in lines)
    with tempfile.TemporaryDirectory() as scratch:
        folder, tools = pathlib.Path(scratch, "run"), pathlib.Path(scratch, "bin")
        folder.mkdir()
        tools.mkdir()
        (tools / "crv").symlink_to(crv)
        write_tool(tools, "sudo", 'exec "$@"\n')
        write_tool(tools, "apt", 'echo "apt $*"\n')
        shutil.copy(EXAMPLE, folder)
        done = subprocess.run(["bash", "-e", "-c", script.replace("printer.example/ipp/print", address)], cwd=folder,
                              env={**server.environment, "PATH": f"{tools}:{PATH}"}, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=60)
        chart = folder / "crv.ps"
        expect("status of the last line", (done.returncode, done.stdout if done.returncode else ""), (0, ""))
        return chart.read_bytes() if chart.exists() else b"", done.stdout


def main():
    crv = os.path.abspath(sys.argv[1])
    if missing():
        print(f"SKIPPED: not installed: {' '.join(missing())}; scripts/test.sh installs what is missing when it may")
        sys.exit(SKIPPED)
    lines = commands_of("A printer")
    removal = next(k for k, line in enumerate(lines) if "lpadmin -x" in line)
    chains = [line for line in lines[removal + 1:] if line.startswith("export ")]
    expect("lines about the printer command", len(chains), 2)
    with print_server() as server:
        jobs = server.add_keeper("street")
        chart, said = run_page(crv, server, lines[:removal])
        expect("packages that the page names", re.findall(r"^apt (.*)$", said, re.M), ["install cups cups-bsd"])
        expect("what came out of the printer", [job == chart for job in arrived(jobs)], [True])
        for chain in chains:
            run_page(crv, server, [chain, "crv -r 0,38:3 -f run1.req -p"])
            expect(f"jobs after {chain}", [job == chart for job in arrived(jobs, 2)], [True, True])
        run_page(crv, server, [lines[removal]])
        printers = subprocess.run(["lpstat", "-e"], env=server.environment, capture_output=True, text=True).stdout
        expect("printers after the removal", printers, "street\n")
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
