#!/usr/bin/env python3
"""Runs in too little memory, and in more and more until there is enough: each ends with its
message and status, and an existing table stays."""
import resource

from harness import FORMATS, IS_SANITIZED, REQ, TABLE, VOILA, main, sandbox

OUT_OF_MEMORY = ": Cannot allocate memory\n"
COARSE = 256 * 1024
FINE = 16 * 1024
ENOUGH = 64 << 20
# Without a chart the run goes on to its first use, if it has any.
WITHOUT_CHART = {"    _50-e-calloc, data": 0, "    _50-e-calloc, curve": 0}


def run_within(box, limit, arguments, program="crv"):
    """Runs in an address space of `limit` bytes."""
    return box.run_program(program, *arguments, preexec_fn=lambda: resource.setrlimit(
        resource.RLIMIT_AS, (limit, limit)))


def started(result):
    """Whether the program began: its loader needs memory too."""
    return result.status >= 0 and result.status != 127 and "initial thread" not in result.stderr


def first_limit(box, arguments, program="crv"):
    limit = COARSE
    while limit < ENOUGH and not started(run_within(box, limit, arguments, program)):
        limit += COARSE
    return limit - COARSE


def reports_until_good(box, arguments, good_end, reports, after=lambda: None):
    """Raises the limit until the run is good; returns the messages of the runs before."""
    reports = WITHOUT_CHART | reports
    allowed = {report + OUT_OF_MEMORY: status for report, status in reports.items()}
    seen = set()
    for limit in range(first_limit(box, arguments), ENOUGH, FINE):
        result = run_within(box, limit, arguments)
        if not started(result):
            continue
        after()
        if result.stdout.endswith(good_end) and result.stderr == "":
            return seen
        lines = result.stderr.splitlines(True)
        box.assertEqual([allowed.get(line) for line in lines[-1:]], [result.status],
                        f"in {limit >> 10} KiB: {result}")
        box.assertLessEqual(set(lines), set(allowed), f"in {limit >> 10} KiB")
        seen.update(line.removesuffix(OUT_OF_MEMORY) for line in lines)
    return box.fail(f"no good end in {ENOUGH >> 20} MiB")


def test_every_format_reports_missing_memory(box):
    for form in FORMATS:
        box.write("a.txt", form.data)
        value = form.prefix + ("e-calloc" if form.option == "-fg" else "f-calloc")
        fopen = form.prefix + "f-fopen"
        reports = dict.fromkeys((fopen, form.prefix + "e-calloc, data", value), form.status)
        arguments = ("-r", form.selection, form.option, "a.txt", "-w", "x")
        seen = reports_until_good(box, arguments, VOILA[1:], reports)
        box.expect(f"{form.option}: no memory for the file", fopen in seen, True)


def test_text_without_memory_ends_run(box):
    """The condition of a selection is the longest text that is copied."""
    box.write("a.req", REQ)
    seen = reports_until_good(box, ("-r", "0,7=" + "1" * 100_000, "-f", "a.req"),
                              "(s = -1, -1.000000) \n",
                              {"    _01-e-new": 0, "    _83-f-fopen": 1,
                               "    _83-e-calloc, data": 1, "    _83-f-calloc": 1})
    box.expect("no memory for the text", "    _01-e-new" in seen, True)


def test_table_is_complete_or_unchanged(box):
    box.write("a.req", REQ)
    box.write("a.dat", b"old\n")
    tables = set()
    reports_until_good(box, ("-r", "0,7", "-fd", "a.req"), "   \n",
                       {"    _35-e-malloc": 0, "    _35-e-calloc": 0, "    _83-f-fopen": 1,
                        "    _83-e-calloc, data": 1, "    _83-f-calloc": 1, "    _01-e-new": 0,
                        " crv_84-f-fopen, in crv_writecols() ": 0},
                       after=lambda: tables.add(box.read("a.dat")))
    box.expect("tables", tables, {b"old\n", TABLE})


def test_other_programs_end_with_1_and_no_output(box):
    """A long title and a long name are copied."""
    box.write("a.req", REQ)
    run = ("-t", "t" * 100_000, "-r", "0,7", "-f", "a.req")
    for program, arguments, report in (
            ("crv-csv", run, "    _06-e-new"), ("crv-term", run, "    _06-e-new"),
            ("crv-html", run, "    _06-e-new"),
            ("crv-info", ["n" * 100_000], "    _08-e-new")):
        good, last_lines = box.run_program(program, *arguments), set()
        for limit in range(first_limit(box, arguments, program), ENOUGH, FINE):
            result = run_within(box, limit, arguments, program)
            if not started(result):
                continue
            if result == good:
                break
            box.assertEqual((result.status, result.stdout), (1, ""), f"{program} {limit >> 10}")
            last_lines.update(result.stderr.splitlines(True)[-1:])
        box.expect(f"{program}: enough", result, good)
        box.expect(f"{program}: no memory", report + OUT_OF_MEMORY in last_lines, True)


if IS_SANITIZED:
    sandbox.skip("the sanitizers need more address space than any limit leaves")
main()
