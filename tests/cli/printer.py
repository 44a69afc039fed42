#!/usr/bin/env python3
"""Printer commands that fail, are missing or killed: the chart and the run are as if printed."""
from harness import draw, drawing, main


def test_shell_reports_missing_command(box):
    stdout, stderr, status = draw(box, CRV_PRINTCHAIN="/nowhere/lpr")
    box.expect("run", (stdout, stderr.endswith("/nowhere/lpr: not found\n"), status),
               (drawing("/nowhere/lpr crv.ps"), True, 1))


def test_killed_command_is_ignored(box):
    for signal in ("KILL", "TERM", "SEGV", "PIPE", "INT"):
        chain = f"kill -{signal} $$;"
        box.expect_run(signal, draw(box, CRV_PRINTCHAIN=chain), drawing(f"{chain} crv.ps"),
                       status=1)


def test_shell_reports_syntax_error(box):
    stdout, stderr, status = draw(box, CRV_PRINTCHAIN="lpr '")
    box.expect("run", (stdout, "Unterminated quoted string" in stderr or "matching" in stderr,
                       status), (drawing("lpr ' crv.ps"), True, 1))


main()
