#!/usr/bin/env python3
"""Prints a summary of a run of ctest: one line, and the output of failed and skipped tests.

    report_tests.py NAME REPORT COUNTS [--strict]

REPORT is that of ctest in JUnit form; the counts are appended to COUNTS. The exit status is 1 when
a test failed or, with --strict, when a test was skipped that is not in allowed_skips.txt.
"""
import pathlib
import sys
import xml.etree.ElementTree as xml

ALLOWED = pathlib.Path(__file__).with_name("allowed_skips.txt")


def allowed_skips():
    """Test: reason, a line each."""
    lines = [line for line in ALLOWED.read_text().splitlines() if line and not line.startswith("#")]
    return dict(line.split(": ", 1) for line in lines)


def output_of(case):
    text = (case.findtext("system-out") or "").strip("\n")
    return "".join(f"    {line}\n" for line in text.splitlines())


def main():
    name, report, counts = sys.argv[1:4]
    strict = "--strict" in sys.argv
    if not pathlib.Path(report).exists():
        print(f"== {name}: FAILED, no test ran: see {pathlib.Path(report).with_suffix('.log')}")
        sys.exit(1)
    suite = xml.parse(report).getroot()
    cases = suite.findall("testcase")
    passed, failed, skipped, seconds = [], [], [], {}
    for case in cases:
        label = case.get("name").split("/")[0]
        seconds[label] = seconds.get(label, 0) + float(case.get("time"))
        {"run": passed, "notrun": skipped}.get(case.get("status"), failed).append(case)
    allowed = allowed_skips()
    if strict:
        failed += [case for case in skipped if case.get("name") not in allowed]
        skipped = [case for case in skipped if case.get("name") in allowed]
    slowest_first = sorted(seconds.items(), key=lambda pair: -pair[1])
    by_label = ", ".join(f"{label} {time:.0f} s" for label, time in slowest_first)
    print(f"== {name}: {float(suite.get('time')):.0f} s ({by_label}): {len(passed)} passed, "
          f"{len(failed)} failed, {len(skipped)} skipped")
    for case in skipped:
        reason = allowed.get(case.get("name")) or output_of(case).strip()
        print(f"  skipped {case.get('name')}: {reason}")
    for case in failed:
        print(f"  FAILED {case.get('name')}\n{output_of(case)}", end="")
    with open(counts, "a", encoding="utf-8") as to:
        print(len(passed), len(failed), len(skipped), file=to)
    sys.exit(1 if failed or not passed else 0)


if __name__ == "__main__":
    main()
