#!/usr/bin/env python3
"""Numbers at the ends of what a double holds and beyond, and texts that are only partly numbers, in all four formats."""
from harness import CHART_DONE, FORMATS, main, reading

INF = float("inf")
NAN = float("nan")
SERIES = {
    "large and small": {
        "1e308": 1e308, "1.7976931348623157e308": 1.7976931348623157e308, "-1e308": -1e308, "4.9e-324": 4.9e-324,
        "-4.9e-324": -4.9e-324, "2.2250738585072014e-308": 2.2250738585072014e-308, "1e-310": 1e-310, "1e-400": 0.0,
        "-1e-400": -0.0},
    "hexadecimal": {
        "0x10": 16.0, "-0X1p10": -1024.0, "0x.8p1": 1.0, "0x1p-1074": 5e-324, "0x1.fffffffffffffp1023": 1.7976931348623157e308,
        "0x": 0.0, "0xg": 0.0, "0x1p": 1.0},
    "parts of numbers": {
        "1e": 1.0, "2e+": 2.0, "-": 0.0, "+.5": 0.5, ".e1": 0.0, "5.": 5.0, "1.2.3": 1.2, "7x": 7.0, "--1": 0.0, "e5": 0.0},
    "infinite": {"inf": INF, "INFINITY": INF, "+inf": INF, "1e309": INF, "1e99999999999999999999": INF, "infx": INF},
    "no number between numbers": {"1": 1.0, "nan": NAN, "NaN": NAN, "nan(0x7)": NAN, "2": 2.0},
    "no number first": {"nan": NAN, "1": 1.0, "-1": -1.0},
}


def file_of(option, texts):
    """Two series of the same values; those of a frame file have their ranges given."""
    if option in ("-f", "-fm"):
        header = "\nrun\n1\n7 1 0 0 0\n" if option == "-f" else "run\n\n1 0\nname\n"
        text = header + "".join(f"{time}\n{value}\n" for time, value in enumerate(texts))
    elif option == "-fp":
        text = "a b\n" + "".join(f"{value} {value}\n" for value in texts)
    else:
        text = f"%N\n{len(texts)}\n%XR\n-5\n5\n%YR\n-5\n5\n%D\n" + "".join(f"{value}, {value}\n" for value in texts)
    return text.encode()


def selection_of(option):
    return {"-f": "7,7", "-fm": "1,1", "-fp": "1,2", "-fg": "0"}[option]


def header_of(option, values):
    """Count, extremes and mean as the dump shows them. Comparisons with what is no number never hold."""
    low = high = total = values[0]
    for value in values[1:]:
        low = value if value < low else low
        high = value if value > high else high
        total += value
    if option == "-fg":
        low, high = -5.0, 5.0
    return (f'    _86-i-val, numpts   = "{len(values)}" \n    _86-i-val, min      = "{low:f}" \n'
            f'    _86-i-val, max      = "{high:f}" \n    _86-i-val, mean     = "{total / len(values):f}" \n')


def rows_of(values, cells):
    """The values as a dump has them, so many in a line."""
    return "".join(f"{value:11.4e} " + ("\n" if number % cells == 0 else "") for number, value in enumerate(values, 1))


def numbers_are_read_as_the_c_library_reads_them(place):
    for name, series in SERIES.items():
        values = list(series.values())
        for option in (row[0] for row in FORMATS):
            place.write("a.txt", file_of(option, series))
            stdout, stderr, status = place.run("-v", "86", "-r", selection_of(option), option, "a.txt", "-w", "x")
            dump = stdout.partition("Dumping column data ...\n\n")[2].splitlines(True)
            titles = ("    _86-i-val, --", "    _86-i-val, col", '" \n', "    _86-i-val, std")  # one has a line end
            got = "".join(line for line in dump if not line.startswith(titles))
            column = header_of(option, values) + rows_of(values, 8) + " \n"
            place.expect_run(f"{option} {name}", (got, stderr, status), column * 2 + "\n%crv_01-i-fin, voila\n")


def tables_hold_them_in_twelve_characters(place):
    for name, series in SERIES.items():
        rows = "".join(f"{value:11.4e} {value:11.4e} \n" for value in series.values())
        for option, columnizing in (("-f", "-fd"), ("-fm", "-fmd")):
            place.write("a.txt", file_of(option, series))
            place.run("-r", selection_of(option), columnizing, "a.txt")
            place.expect(f"{option} {name}", place.read("a.dat"), rows.encode())
            (place.folder / "a.dat").unlink()


def charts_of_them_are_whole(place):
    for name, series in SERIES.items():
        for option in (row[0] for row in FORMATS):
            place.write("a.txt", file_of(option, series))
            place.expect_ending(f"{option} {name}", place.run("-r", selection_of(option), option, "a.txt", "-p"), CHART_DONE,
                                status=1)
            place.expect(f"{option} {name}", place.read("crv.ps").endswith(b"showpage \n"), True)
            (place.folder / "crv.ps").unlink()


def ranges_are_read_like_values(place):
    place.write("a.req")
    large = 1.7976931348623157e308
    place.expect_ending(
        "ranges", place.run("-tm", "-1e999:0x10", "-x", "nan:1", "-y", f"-{large!r}:{large!r}", "-r", "0,7", "-f", "a.req",
                            "-p"),
        "%crv_05-i-tra, T range, -inf through 16.000000 \n%crv_05-i-yra, X axis range, nan through 1.000000 \n"
        f"%crv_05-i-yra, Y axis range, {-large:f} through {large:f} \n" + reading("a.req")
        + '%crv_05-i-ps , Postscript plotting selected \n%crv_45-i-prt, Printer command = "lpr  crv.ps"\n' + CHART_DONE,
        status=1)


main(numbers_are_read_as_the_c_library_reads_them, tables_hold_them_in_twelve_characters, charts_of_them_are_whole,
     ranges_are_read_like_values)
