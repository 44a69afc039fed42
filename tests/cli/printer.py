#!/usr/bin/env python3
"""Printer commands that fail, are missing or killed: the chart and the run are as if printed."""
from harness import CHART, CHART_DONE, REQ, expect_whole_chart, main, printing, reading


def run_with(box, chain):
    box.write("a.req", REQ)
    result = box.crv("-r", "0,7", "-f", "a.req", "-p", CRV_PRINTCHAIN=chain)
    expect_whole_chart(box)
    return result


def printed_by(chain):
    return reading("a.req") + CHART + printing(chain + " crv.ps") + CHART_DONE


def test_shell_reports_missing_command(box):
    chain = "/nowhere/lpr"
    stdout, stderr, status = run_with(box, chain)
    box.expect("run", (stdout, stderr.endswith("/nowhere/lpr: not found\n"), status),
               (printed_by(chain), True, 1))


def test_killed_command_is_ignored(box):
    for signal in ("KILL", "TERM", "SEGV", "PIPE", "INT"):
        chain = f"kill -{signal} $$;"
        box.expect_run(signal, run_with(box, chain), printed_by(chain), status=1)


def test_shell_reports_syntax_error(box):
    chain = "lpr '"
    stdout, stderr, status = run_with(box, chain)
    box.expect("run", (stdout, "Unterminated quoted string" in stderr or "matching" in stderr,
                       status), (printed_by(chain), True, 1))


main()
