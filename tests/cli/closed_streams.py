#!/usr/bin/env python3
"""Standard streams that are closed, and readers of the output that go away."""
import os
import signal

from harness import CHART, CHART_DONE, main, printing, reading

OUT_OF_RANGE = '%crv_44-w-out, Curve "1" is out of Plot range \n'
UNBALANCED = ('%crv_47-e-bal, Unbalanced parens found in string while writing "crv.ps"\n'
              '    _47-e-bal,  "("\n')
TABLE = b" 1.0000e+00  1.0000e+01 \n 2.0000e+00  2.0000e+01 \n 3.0000e+00  3.0000e+01 \n"


def a_closed_stream_does_not_put_messages_into_a_chart(place):
    """The run has a message for each stream while the chart is open."""
    place.write("a.req")
    arguments = ("-t '(' -r 0,7 -f a.req -x 100:200", "-p crv.ps")
    given = "%crv_05-i-yra, X axis range, 100.000000 through 200.000000 \n"
    stdout = reading("a.req") + given + CHART + OUT_OF_RANGE + printing("lpr  crv.ps") + CHART_DONE
    place.expect_run("open streams", place.shell("\"$CRV\" " + " ".join(arguments)), stdout, UNBALANCED, 1)
    chart = place.read("crv.ps")
    place.expect("whole chart", chart.endswith(b"showpage \n"), True)
    for closed, seen in ((">&-", ("", UNBALANCED)), ("2>&-", (stdout, "")), ("<&-", (stdout, UNBALANCED)),
                         ("<&- >&- 2>&-", ("", ""))):
        for name in ("crv.ps", "printed"):
            (place.folder / name).unlink()
        place.expect_run(closed, place.shell(f"\"$CRV\" {' '.join(arguments)} {closed}"), *seen, status=1)
        place.expect(f"chart with {closed}", place.read("crv.ps"), chart)
        place.expect(f"printed with {closed}", place.read("printed"), b"[crv.ps]\n")


def a_closed_stream_does_not_put_messages_into_a_table(place):
    place.write("a.req")
    for closed in (">&-", "2>&-", "<&-", "<&- >&- 2>&-"):
        *_, status = place.shell(f"\"$CRV\" -r 0,7 -fd a.req {closed}")
        place.expect(f"table with {closed}", (place.read("a.dat"), status), (TABLE, 0))
        (place.folder / "a.dat").unlink()


def a_question_without_standard_input_has_an_empty_answer(place):
    place.write("a.req")
    place.expect_ending("pick", place.shell("\"$CRV\" -r 0,7 -f <&-"),
                        '%crv_83-i-pts, file (a.req) has 3 steps\n\n%crv_01-i-fin, voila\n')


def without_a_reader_the_run_ends_before_it_touches_a_file(place):
    place.write("a.req")
    for name, arguments in (("crv.ps", ("-r", "0,7", "-f", "a.req", "-p")), ("a.dat", ("-r", "0,7", "-fd", "a.req"))):
        place.write(name, b"old\n")
        reader, writer = os.pipe()
        os.close(reader)
        place.expect_run(name, place.run(*arguments, stdout=writer, restore_signals=True), status=-signal.SIGPIPE)
        os.close(writer)
        place.expect(name, place.read(name), b"old\n")


def a_reader_that_has_seen_enough_ends_the_run(place):
    place.write("long.req", b"\nrun\n1\n7 1 0 0 0\n" + b"1\n10\n" * 20000)
    place.expect_run("head", place.shell("\"$CRV\" -v 83 -r 0,7 -f long.req -w x | head -n 1"),
                     "%crv_05-i-DBG, Verbose switch active -v\n")


main(a_closed_stream_does_not_put_messages_into_a_chart, a_closed_stream_does_not_put_messages_into_a_table,
     a_question_without_standard_input_has_an_empty_answer, without_a_reader_the_run_ends_before_it_touches_a_file,
     a_reader_that_has_seen_enough_ends_the_run)
