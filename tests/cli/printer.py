#!/usr/bin/env python3
"""Printer commands that fail, are not there, or are killed. The chart is drawn, and the run ends as if it was printed."""
from harness import CHART, CHART_DONE, main, printing, reading


def run_with(place, chain):
    place.write("a.req")
    got = place.run("-r", "0,7", "-f", "a.req", "-p", environment={"CRV_PRINTCHAIN": chain})
    place.expect("whole chart", place.read("crv.ps").endswith(b"showpage \n"), True)
    return got


def printed_by(chain):
    return reading("a.req") + CHART + printing(chain + " crv.ps") + CHART_DONE


def a_printer_command_that_is_not_there_is_reported_by_the_shell(place):
    chain = "/nowhere/lpr"
    stdout, stderr, status = run_with(place, chain)
    place.expect("run", (stdout, stderr.endswith("/nowhere/lpr: not found\n"), status), (printed_by(chain), True, 1))


def a_printer_command_that_is_killed_is_no_matter(place):
    for signal in ("KILL", "TERM", "SEGV", "PIPE", "INT"):
        chain = f"kill -{signal} $$;"
        place.expect_run(signal, run_with(place, chain), printed_by(chain), status=1)


def a_printer_command_that_is_no_command_is_reported_by_the_shell(place):
    chain = "lpr '"
    stdout, stderr, status = run_with(place, chain)
    place.expect("run", (stdout, "Unterminated quoted string" in stderr or "matching" in stderr, status),
                 (printed_by(chain), True, 1))


main(a_printer_command_that_is_not_there_is_reported_by_the_shell, a_printer_command_that_is_killed_is_no_matter,
     a_printer_command_that_is_no_command_is_reported_by_the_shell)
