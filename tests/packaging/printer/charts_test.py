#!/usr/bin/env python3
# packaging/printer/charts_test - charts that go through lpr to a real print server: a plain run's chart arrives to the byte, and when there
# is no such printer, no default one or no server, the run says and returns what it always does.
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

from print_server import arrived, free_port, missing, print_server

EXAMPLE = pathlib.Path(__file__).resolve().parents[3] / "examples/run1.req"
SKIPPED = 77
PRINTED = """%crv_05-i-ids, Request ids   = "0,38:3" 
%crv_05-i-fil, File to process = "run1.req" 
%crv_83-i-wor, Reading "run1.req" ...
%crv_83-i-pts, file (run1.req) has 301 steps
%crv_05-i-ps , Postscript plotting selected 
%crv_45-i-prt, Printer command = "{command}"
  
 %crv_05-i-fini, ******** voila
"""
# What belongs to the print server of the machine.
FOREIGN = ["/etc/cups", "/var/spool/cups", "/var/cache/cups", "/var/log/cups", "/run/cups", "~/.cups"]

faults = []


def expect(name, got, wanted):
    if got != wanted:
        faults.append(f"{name}:\n  wanted {wanted!r}\n  got    {got!r}")


def plain_run(name, crv, environment, chain=None):
    """Draws and prints a chart; whatever becomes of the print, the run must print and return what it always does. Returns the
    chart and what came on standard error."""
    environment = dict(environment) if chain is None else {**environment, "CRV_PRINTCHAIN": chain}
    with tempfile.TemporaryDirectory() as folder:
        shutil.copy(EXAMPLE, folder)
        done = subprocess.run([crv, "-r", "0,38:3", "-f", "run1.req", "-p"], cwd=folder, env=environment,
                              stdin=subprocess.DEVNULL, capture_output=True, timeout=60)
        chart = pathlib.Path(folder, "crv.ps").read_bytes()
        expect(f"{name}: files", sorted(os.listdir(folder)), ["crv.ps", "run1.req"])
    command = "lpr  crv.ps" if chain is None else f"{chain} crv.ps"
    expect(f"{name}: what is printed", done.stdout.decode(), PRINTED.format(command=command))
    expect(f"{name}: the status of a finished chart", done.returncode, 1)
    expect(f"{name}: the chart is whole", (chart[:2], chart[-10:]), (b"%!", b"showpage \n"))
    return chart, done.stderr.decode()


def test_a_plain_chart_arrives_at_the_default_printer_byte_for_byte(crv, server):
    jobs = server.add_keeper("office")
    server.command("lpadmin", "-d", "office")
    chart, said = plain_run("default printer", crv, server.environment)
    expect("default printer: what lpr says", said, "")
    expect("default printer: jobs", [job == chart for job in arrived(jobs)], [True])


def test_the_printer_command_of_the_environment_chooses_another_printer(crv, server):
    jobs = server.add_keeper("lab")
    chart, said = plain_run("another printer", crv, server.environment, chain="lpr -P lab")
    expect("another printer: what lpr says", said, "")
    expect("another printer: jobs", [job == chart for job in arrived(jobs)], [True])
    expect("another printer: the default one got no more", len(list((server.base / "jobs/office").iterdir())), 1)


def test_a_printer_that_does_not_exist_is_no_fault_of_the_run(crv, server):
    _, said = plain_run("no such printer", crv, server.environment, chain="lpr -P nowhere")
    expect("no such printer: what lpr says", said, "lpr: Error - The printer or class does not exist.\n")


def test_without_a_default_printer_lpr_complains_and_the_run_is_as_always(crv, server):
    _, said = plain_run("no default", crv, server.environment)
    expect("no default: lpr says one line", (said[:13], said.count("\n")), ("lpr: Error - ", 1))


def test_a_server_that_is_down_is_no_fault_of_the_run(crv, server):
    environment = {**server.environment, "CUPS_SERVER": f"127.0.0.1:{free_port()}"}
    _, said = plain_run("no server", crv, environment)
    expect("no server: lpr says one line", (said[:13], said.count("\n")), ("lpr: Error - ", 1))


def state_of(paths):
    """Names, times and lengths of all that lies there."""
    found = {}
    for path in map(pathlib.Path, map(os.path.expanduser, paths)):
        for entry in [path, *path.rglob("*")] if path.exists() else []:
            status = entry.lstat()
            found[str(entry)] = (status.st_mtime_ns, status.st_size)
    return found


def main():
    crv = os.path.abspath(sys.argv[1])
    if missing():
        print(f"SKIPPED: not installed: {' '.join(missing())}; scripts/test.sh installs what is missing when it may")
        sys.exit(SKIPPED)
    before = state_of(FOREIGN)
    with print_server() as server:
        test_without_a_default_printer_lpr_complains_and_the_run_is_as_always(crv, server)
        test_a_plain_chart_arrives_at_the_default_printer_byte_for_byte(crv, server)
        test_the_printer_command_of_the_environment_chooses_another_printer(crv, server)
        test_a_printer_that_does_not_exist_is_no_fault_of_the_run(crv, server)
        test_a_server_that_is_down_is_no_fault_of_the_run(crv, server)
    expect("the print server of the machine is as it was", state_of(FOREIGN), before)
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
