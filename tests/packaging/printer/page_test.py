#!/usr/bin/env python3
"""The commands of docs/install.md that set up a printer, run line by line in one shell with a print
server of the test: the chart arrives at the printer that the page calls printer.example."""
import re
import sys

from print_server import PrintServer, arrived, require_server, sandbox
from support.install_page import commands_of


def run_lines(box, *lines):
    """Runs the lines. crv ends with 1 when its chart is drawn. Returns what they print."""
    address = box.environment["CUPS_SERVER"] + "/printers/street"
    script = "\n".join(line + " || [ $? -eq 1 ]" if line.startswith("crv ") else line
                       for line in lines).replace("printer.example/ipp/print", address)
    box.copy_example("run1.req")
    return box.output_of("bash", "-e", "-c", f"exec 2>&1\n{script}")


def test_page_sets_up_printer(box):
    box.add_tool("sudo", 'exec "$@"\n')
    box.add_tool("apt", 'echo "apt $*"\n')
    lines = commands_of("A printer")
    removal = next(k for k, line in enumerate(lines) if "lpadmin -x" in line)
    chains = [line for line in lines[removal + 1:] if line.startswith("export ")]
    box.expect("lines about the printer command", len(chains), 2)
    jobs = PrintServer(box).add_printer("street")
    printed = run_lines(box, *lines[:removal])
    chart = box.take("crv.ps")
    box.expect("packages of the page", re.findall(r"^apt (.*)$", printed, re.M),
               ["install cups cups-bsd"])
    box.expect("jobs", arrived(jobs), [chart])
    for chain in chains:
        run_lines(box, chain, "crv -r 0,38:3 -f run1.req -p")
        box.expect(f"jobs after {chain}", arrived(jobs, 2), [chart, chart])
    run_lines(box, lines[removal])
    box.expect("printers after the removal", box.output_of("lpstat", "-e"), "street\n")


require_server()
sandbox.main(sys.argv[1])
