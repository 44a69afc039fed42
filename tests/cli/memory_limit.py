#!/usr/bin/env python3
"""Runs in as little memory as the system can start them in, and in more and more: until there is enough, each ends with
its report and status, and a table that was there is there."""
import sys

from harness import FORMATS, is_sanitized, main

OUT_OF_MEMORY = ": Cannot allocate memory\n"
COARSE = 256 * 1024
FINE = 16 * 1024
ENOUGH = 64 << 20
SKIPPED = 77
TABLE = b" 1.0000e+00  1.0000e+01 \n 2.0000e+00  2.0000e+01 \n 3.0000e+00  3.0000e+01 \n"

# Without a chart the run goes on to its first use, if it has any.
WITHOUT_CHART = {"    _50-e-calloc, data": 0, "    _50-e-calloc, curve": 0}


def started(got):
    """Whether the program began: what loads it needs memory too."""
    _, stderr, status = got
    return status >= 0 and status != 127 and "initial thread" not in stderr


def first_limit(place, arguments):
    limit = COARSE
    while limit < ENOUGH and not started(place.run(*arguments, memory=limit)):
        limit += COARSE
    return limit - COARSE


def reports_until_good(place, arguments, good_end, reports, after=lambda: None):
    """Raises the limit until the run is good, and returns the reports that it ended with on the way."""
    allowed = {report + OUT_OF_MEMORY: status for report, status in (WITHOUT_CHART | reports).items()}
    seen = set()
    for limit in range(first_limit(place, arguments), ENOUGH, FINE):
        stdout, stderr, status = got = place.run(*arguments, memory=limit)
        if not started(got):
            continue
        after()
        if stdout.endswith(good_end) and stderr == "":
            return seen
        lines = stderr.splitlines(True)
        if not lines or any(line not in allowed for line in lines) or allowed[lines[-1]] != status:
            place.expect(f"{arguments} in {limit >> 10} KiB", got, "an end with a report")
        seen.update(line.removesuffix(OUT_OF_MEMORY) for line in lines)
    place.expect(f"{arguments} in {ENOUGH >> 20} MiB", "no good end", "a good end")
    return seen


def memory_that_runs_out_is_reported_in_every_format(place):
    for option, selection, data, prefix, status, _, _ in FORMATS:
        place.write("a.txt", data)
        value = prefix + ("e-calloc" if option == "-fg" else "f-calloc")
        reports = {prefix + "f-fopen": status, prefix + "e-calloc, data": status, value: status}
        seen = reports_until_good(place, ("-r", selection, option, "a.txt", "-w", "x"), "%crv_01-i-fin, voila\n", reports)
        place.expect(f"{option}: memory for the file ran out", prefix + "f-fopen" in seen, True)


def a_text_that_finds_no_memory_ends_the_run(place):
    """The condition of a selection is the longest text that is copied."""
    place.write("a.req")
    seen = reports_until_good(place, ("-r", "0,7=" + "1" * 100_000, "-f", "a.req"), "(s = -1, -1.000000) \n",
                              {"    _01-e-new": 0, "    _83-f-fopen": 1, "    _83-e-calloc, data": 1,
                               "    _83-f-calloc": 1})
    place.expect("memory for the text ran out", "    _01-e-new" in seen, True)


def a_table_is_whole_or_as_it_was(place):
    place.write("a.req")
    place.write("a.dat", b"old\n")
    tables = set()
    reports_until_good(place, ("-r", "0,7", "-fd", "a.req"), "   \n",
                       {"    _35-e-malloc": 0, "    _35-e-calloc": 0, "    _83-f-fopen": 1, "    _83-e-calloc, data": 1,
                        "    _83-f-calloc": 1, "    _01-e-new": 0, " crv_84-f-fopen, in crv_writecols() ": 0},
                       after=lambda: tables.add(place.read("a.dat")))
    place.expect("tables", tables, {b"old\n", TABLE})


if is_sanitized(sys.argv[-1]):
    print("skipped: the sanitizers need more address space than any limit leaves")
    sys.exit(SKIPPED)
main(memory_that_runs_out_is_reported_in_every_format, a_text_that_finds_no_memory_ends_the_run,
     a_table_is_whole_or_as_it_was)
