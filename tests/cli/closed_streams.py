#!/usr/bin/env python3
"""Closed standard streams, and readers that close the pipe of the output."""
import os
import signal

from harness import CHART, CHART_DONE, REQ, TABLE, VOILA, main, outside, printing, reading

OUT_OF_RANGE = '%crv_44-w-out, Curve "1" is out of Plot range \n'
UNBALANCED = ('%crv_47-e-bal, Unbalanced parens found in string while writing "crv.ps"\n'
              '    _47-e-bal,  "("\n' + outside(3, 3))
CLOSED = (">&-", "2>&-", "<&-", "<&- >&- 2>&-")


def test_chart_has_no_messages(box):
    """The run has a message for each stream while the chart is open."""
    box.write("a.req", REQ)
    command = "crv -t '(' -r 0,7 -f a.req -x 100:200 -p crv.ps"
    stdout = (reading("a.req") + "%crv_05-i-yra, X axis range, 100.000000 through 200.000000 \n"
              + CHART + OUT_OF_RANGE + printing("lpr  crv.ps") + CHART_DONE)
    box.expect_run("open streams", box.shell(command), stdout, UNBALANCED, 1)
    chart = box.read("crv.ps")
    box.expect("whole chart", chart[-10:], b"showpage \n")
    shown = (("", UNBALANCED), (stdout, ""), (stdout, UNBALANCED), ("", ""))
    for closed, streams in zip(CLOSED, shown, strict=True):
        box.path("crv.ps").unlink()
        box.path("printed").unlink()
        box.expect_run(closed, box.shell(f"{command} {closed}"), *streams, status=1)
        box.expect(f"chart with {closed}", box.read("crv.ps"), chart)
        box.expect(f"printed with {closed}", box.read("printed"), b"[crv.ps]\n")


def test_table_has_no_messages(box):
    box.write("a.req", REQ)
    for closed in CLOSED:
        result = box.shell(f"crv -r 0,7 -fd a.req {closed}")
        box.expect(f"table with {closed}", (box.take("a.dat"), result.status), (TABLE, 0))


def test_conventional_status_tells_that_result_is_lost(box):
    """A text or value is lost with standard output; a table or chart is whole, and "never met" is
    told by the status itself. The traditional status and messages stay."""
    box.write("a.req", REQ)
    lost = "%crv_05-e-out, Standard output is closed, the text or value is lost\n"
    for arguments, statuses in (("-h", (1, 1)), ("-s", (1, 1)), ("-r 0,7=2 -f a.req", (0, 1)),
                                ("-r 0,7=99 -f a.req", (0, 3)), ("-r 0,7 -fd a.req", (0, 0)),
                                ("-r 0,7 -f a.req -p", (1, 0)), ("-w x", (0, 0))):
        command = f"crv {arguments} >&-"
        traditional, conventional = statuses
        box.expect_run(command, box.shell(command), status=traditional)
        box.expect_run(f"conventional {command}",
                       box.shell(command, CRV_STATUS="conventional"),
                       stderr=lost if conventional == 1 else "", status=conventional)
    box.expect_run("open", box.shell("crv -h | head -n 0; crv -h >/dev/null",
                                     CRV_STATUS="conventional"))


def test_missing_standard_input_is_empty_answer(box):
    box.write("a.req", REQ)
    box.expect_ending("pick", box.shell("crv -r 0,7 -f <&-"),
                      "%crv_83-i-pts, file (a.req) has 3 steps\n" + VOILA)


def test_missing_reader_ends_run_before_writing(box):
    box.write("a.req", REQ)
    for name, arguments in (("crv.ps", ("-f", "a.req", "-p")), ("a.dat", ("-fd", "a.req"))):
        box.write(name, b"old\n")
        reader, writer = os.pipe()
        os.close(reader)
        result = box.crv("-r", "0,7", *arguments, stdout=writer, restore_signals=True)
        box.expect_run(name, result, status=-signal.SIGPIPE)
        os.close(writer)
        box.expect(name, box.read(name), b"old\n")


def test_reader_that_closes_ends_run(box):
    box.write("long.req", b"\nrun\n1\n7 1 0 0 0\n" + b"1\n10\n" * 20000)
    box.expect_run("head", box.shell("crv -v 83 -r 0,7 -f long.req -w x | head -n 1"),
                   "%crv_05-i-DBG, Verbose switch active -v\n")


main()
