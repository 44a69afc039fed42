#!/usr/bin/env python3
"""Numbers at the limits of a double and beyond, and texts that begin with a number, per format."""
import itertools

from harness import CHART_DONE, FORMATS, FRAME, REQ, VOILA, main, outside, reading

INF = float("inf")
NAN = float("nan")
LARGE = 1.7976931348623157e308
SERIES = {
    "large and small": {
        "1e308": 1e308, "1.7976931348623157e308": LARGE, "-1e308": -1e308, "4.9e-324": 4.9e-324,
        "-4.9e-324": -4.9e-324, "2.2250738585072014e-308": 2.2250738585072014e-308,
        "1e-310": 1e-310, "1e-400": 0.0, "-1e-400": -0.0},
    "hexadecimal": {
        "0x10": 16.0, "-0X1p10": -1024.0, "0x.8p1": 1.0, "0x1p-1074": 5e-324,
        "0x1.fffffffffffffp1023": LARGE, "0x": 0.0, "0xg": 0.0, "0x1p": 1.0},
    "parts of numbers": {
        "1e": 1.0, "2e+": 2.0, "-": 0.0, "+.5": 0.5, ".e1": 0.0, "5.": 5.0, "1.2.3": 1.2,
        "7x": 7.0, "--1": 0.0, "e5": 0.0},
    "infinite": {"inf": INF, "INFINITY": INF, "+inf": INF, "1e309": INF,
                 "1e99999999999999999999": INF, "infx": INF},
    "no number between numbers": {"1": 1.0, "nan": NAN, "NaN": NAN, "nan(0x7)": NAN, "2": 2.0},
    "no number first": {"nan": NAN, "1": 1.0, "-1": -1.0},
}


def each(box, *options):
    """Writes a file with each series twice, in the format of each option. The frame file has its
    ranges. Yields a name for messages, the option, the selection and the series."""
    for name, series in SERIES.items():
        for option in options:
            if option in ("-f", "-fm"):
                selection = "7,7" if option == "-f" else "1,1"
                text = "\nrun\n1\n7 1 0 0 0\n" if option == "-f" else "run\n\n1 0\nname\n"
                text += "".join(f"{time}\n{value}\n" for time, value in enumerate(series))
            elif option == "-fp":
                selection = "1,2"
                text = "a b\n" + "".join(f"{value} {value}\n" for value in series)
            else:
                selection = "0"
                text = f"%N\n{len(series)}\n%XR\n-5\n5\n%YR\n-5\n5\n%D\n"
                text += "".join(f"{value}, {value}\n" for value in series)
            box.write("a.txt", text)
            yield f"{option} {name}", option, selection, series


def extremes_of(option, values):
    """Those of a frame file are its ranges. Comparisons with NaN are false."""
    low = high = values[0]
    for value in values[1:]:
        low = value if value < low else low
        high = value if value > high else high
    return (-5.0, 5.0) if option == FRAME.option else (low, high)


def header_of(option, values):
    """Count, extremes and mean as in the dump."""
    low, high = extremes_of(option, values)
    *_, total = itertools.accumulate(values)  # sum() may compensate rounding errors
    return (f'    _86-i-val, numpts   = "{len(values)}" \n    _86-i-val, min      = "{low:f}" \n'
            f'    _86-i-val, max      = "{high:f}" \n'
            f'    _86-i-val, mean     = "{total / len(values):f}" \n')


def test_numbers_are_those_of_c_library(box):
    for what, option, selection, series in each(box, *(form.option for form in FORMATS)):
        values = list(series.values())
        stdout, *others = box.crv("-v", "86", "-r", selection, option, "a.txt", "-w", "x")
        dump = stdout.partition("Dumping column data ...\n\n")[2].splitlines(True)
        titles = ("    _86-i-val, --", "    _86-i-val, col", '" \n', "    _86-i-val, std")
        got = "".join(line for line in dump if not line.startswith(titles))
        rows = "".join(f"{value:11.4e} " + ("\n" if number % 8 == 0 else "")
                       for number, value in enumerate(values, 1))
        box.expect_run(what, (got, *others), (header_of(option, values) + rows + " \n") * 2 + VOILA)


def test_table_cells_have_12_characters(box):
    for what, option, selection, series in each(box, "-f", "-fm"):
        rows = "".join(f"{value:11.4e} {value:11.4e} \n" for value in series.values())
        box.crv("-r", selection, option + "d", "a.txt")
        box.expect(what, box.take("a.dat"), rows.encode())


def test_charts_are_complete(box):
    for what, option, selection, series in each(box, *(form.option for form in FORMATS)):
        low, high = extremes_of(option, list(series.values()))
        missing = sum(not low <= value <= high for value in series.values())
        box.expect_ending(what, box.crv("-r", selection, option, "a.txt", "-p"), CHART_DONE,
                          outside(missing, len(series)), 1)
        box.expect(what, box.take("crv.ps")[-10:], b"showpage \n")


def test_ranges_are_read_like_values(box):
    box.write("a.req", REQ)
    box.expect_ending(
        "ranges", box.crv("-tm", "-1e999:0x10", "-x", "nan:1", "-y", f"-{LARGE!r}:{LARGE!r}",
                          "-r", "0,7", "-f", "a.req", "-p"),
        "%crv_05-i-tra, T range, -inf through 16.000000 \n"
        "%crv_05-i-yra, X axis range, nan through 1.000000 \n"
        f"%crv_05-i-yra, Y axis range, {-LARGE:f} through {LARGE:f} \n" + reading("a.req")
        + "%crv_05-i-ps , Postscript plotting selected \n"
        '%crv_45-i-prt, Printer command = "lpr  crv.ps"\n' + CHART_DONE, status=1)


main()
