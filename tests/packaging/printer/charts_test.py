#!/usr/bin/env python3
"""Charts that lpr sends to a real print server arrive to the byte. Without a printer or a server
the run prints and returns the same as always."""
import os
import pathlib
import sys

from print_server import PrintServer, arrived, free_port, require_server, sandbox

PRINTED = """%crv_05-i-ids, Request ids   = "0,38:3" 
%crv_05-i-fil, File to process = "run1.req" 
%crv_83-i-wor, Reading "run1.req" ...
%crv_83-i-pts, file (run1.req) has 301 steps
%crv_05-i-ps , Postscript plotting selected 
%crv_45-i-prt, Printer command = "{command}"
  
 %crv_05-i-fini, ******** voila
"""
# The directories of the print server of the machine.
FOREIGN = ["/etc/cups", "/var/spool/cups", "/var/cache/cups", "/var/log/cups", "/run/cups",
           "~/.cups"]


def draw(box, **variables):
    """Draws and prints a chart: whatever lpr does, the run prints and returns the same. Returns the
    chart and the messages of lpr."""
    box.copy_example("run1.req")
    result = box.crv("-r", "0,38:3", "-f", "run1.req", "-p", **variables)
    chain = variables.get("CRV_PRINTCHAIN")
    command = "lpr  crv.ps" if chain is None else f"{chain} crv.ps"
    box.expect("files", box.names(), ["crv.ps", "run1.req"])
    box.expect("what is printed", result.stdout, PRINTED.format(command=command))
    box.expect("status of a finished chart", result.status, 1)
    chart = box.take("crv.ps")
    box.expect("complete chart", (chart[:2], chart[-10:]), (b"%!", b"showpage \n"))
    return chart, result.stderr


def expect_one_error(box, stderr):
    box.expect("lpr prints one line", (stderr[:13], stderr.count("\n")), ("lpr: Error - ", 1))


def test_missing_default_printer(box):
    PrintServer(box)
    expect_one_error(box, draw(box)[1])


def test_default_printer_gets_chart(box):
    """And another one when the printer command in the environment names it."""
    server = PrintServer(box)
    office, lab = server.add_printer("office"), server.add_printer("lab")
    box.output_of("lpadmin", "-d", "office")
    chart, stderr = draw(box)
    box.expect("messages", stderr, "")
    box.expect("jobs", arrived(office), [chart])
    chart, stderr = draw(box, CRV_PRINTCHAIN="lpr -P lab")
    box.expect("messages of the other printer", stderr, "")
    box.expect("jobs of the other printer", arrived(lab), [chart])
    box.expect("further jobs of the default printer", len(arrived(office)), 1)


def test_missing_printer(box):
    PrintServer(box)
    _, stderr = draw(box, CRV_PRINTCHAIN="lpr -P nowhere")
    box.expect("message", stderr, "lpr: Error - The printer or class does not exist.\n")


def test_missing_server(box):
    PrintServer(box)
    expect_one_error(box, draw(box, CUPS_SERVER=f"127.0.0.1:{free_port()}")[1])


def state_of(paths):
    """Names, times and lengths of all files and directories."""
    found = {}
    for path in map(pathlib.Path, map(os.path.expanduser, paths)):
        for entry in [path, *path.rglob("*")] if path.exists() else []:
            status = entry.lstat()
            found[str(entry)] = (status.st_mtime_ns, status.st_size)
    return found


BEFORE = state_of(FOREIGN)


def test_server_of_machine_is_unchanged(box):
    """After all other tests."""
    box.assertEqual(state_of(FOREIGN), BEFORE)


require_server()
sandbox.main(sys.argv[1])
