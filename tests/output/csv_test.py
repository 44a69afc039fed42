#!/usr/bin/env python3
"""What other programs read from the output of crv-csv: pandas the numbers of the files to the last
bit, the csv module and sqlite3 the cells as they stand."""
import csv
import io
import json
import math
import pathlib
import random
import struct
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from support.sandbox import EXAMPLES, given, main  # noqa: E402  (found by the path above)

DEBIAN_PYTHON = "/usr/bin/python3"  # has the packages of the system
SPECIAL = ["nan", "inf", "-inf", "0", "-0", "5e-324", "-2.2250738585072014e-308",
           "1.7976931348623157e+308", "0.1", "100000", "123456789012345678"]

# Prints the header, and the columns as bits of doubles.
READ_BY_PANDAS = """import json, struct, sys
import pandas
table = pandas.read_csv(sys.argv[1], float_precision="round_trip")
bits = [[struct.pack(">d", float(value)).hex() for value in table[name]] for name in table.columns]
json.dump([list(table.columns), bits], sys.stdout)
"""


def random_number(generator):
    """A finite number of any size, or one with few digits as in result files."""
    if generator.random() < 0.5:
        return f"{generator.uniform(-1000, 1000):.{generator.randrange(1, 9)}e}"
    while True:
        value, = struct.unpack(">d", generator.randbytes(8))
        if math.isfinite(value):
            return repr(value)


def bits_of(text):
    """The bits of a number; all values that are not a number are the same."""
    value = float(text)
    return struct.pack(">d", math.nan if math.isnan(value) else value).hex()


def read_by_pandas(box, path):
    if box.run_program(DEBIAN_PYTHON, "-c", "import pandas").status != 0:
        box.skipTest("not installed: python3-pandas; scripts/setup.sh installs what is missing")
    return json.loads(box.output_of(DEBIAN_PYTHON, "-c", READ_BY_PANDAS, path))


def test_pandas_reads_the_values_of_the_file(box):
    generator = random.Random(15)
    rows = [[generator.choice(SPECIAL) if generator.random() < 0.1 else random_number(generator)
             for _ in range(8)] for _ in range(2000)]
    box.write("random.pos", "".join(" ".join(row) + "\n" for row in [list("abcdefgh"), *rows]))
    box.output_of("crv-csv", "-r", "1,2,3,4,5,6,7,8", "-fp", "random.pos", "-p", "random.csv")
    names, columns = read_by_pandas(box, "random.csv")
    box.assertEqual(names, list("abcdefgh"))
    for name, got, wanted in zip(names, columns, zip(*rows)):
        box.expect(name, got, [bits_of(text) for text in wanted])


def test_pandas_reads_an_example(box):
    box.copy_example("run1.req")
    box.output_of("crv-csv", "-r", "0,38:3,70:2", "-f", "run1.req", "-p", "run1.csv")
    names, columns = read_by_pandas(box, "run1.csv")
    box.assertEqual(names[0], "Time (sec)")
    steps = (EXAMPLES / "run1.req").read_text().splitlines()[-301 * 8:]
    # Requests 38 and 70 are the first and the last of seven.
    for name, got, offset, item in zip(names, columns, (0, 1, 7), (1, 3, 2)):
        box.expect(name, got, [bits_of(line.split()[item - 1]) for line in steps[offset::8]])


def test_pandas_reads_missing_cells_and_labels(box):
    box.write("a.pos", "t 'x,y'\n0 1\n1 2\n2 3\n")
    box.write("b.pos", "t z\n0.5 nan\n")
    box.output_of("crv-csv", "-r", "1,2", "-fp", "a.pos", "-r", "0,1,2", "-fp", "b.pos",
                  "-xl", 'time "s"', "-yl", "x,y", "-p", "both.csv")
    names, columns = read_by_pandas(box, "both.csv")
    box.assertEqual(names, ['time "s"', "x,y", "Row Count", "t", "z"])
    cells = (("0", "1", "2"), ("1", "2", "3"), ("1", "nan", "nan"), ("0.5", "nan", "nan"),
             ("nan", "nan", "nan"))
    box.assertEqual(columns, [[bits_of(cell) for cell in column] for column in cells])


def test_labels_are_trimmed_and_distinct(box):
    """Labels of files and of the command line, and the own X of a later file."""
    box.copy_example("run1.req")
    frame = "%XA\n \t Way (mm) \t\n%YA\n  Force \n%N\n3\n%D\n1 2\n3 4\n5 6\n"
    box.write("a.vdr", frame)
    box.write("b.vdr", frame)
    table = box.output_of("crv-csv", "-r", "0,38:3", "-f", "run1.req", "-r", "0,1", "-fg", "a.vdr",
                          "-fg", "b.vdr", "-fg", "b.vdr", "-xl", " t \t", "-yl", "\t B ")
    box.assertEqual(table.split("\n")[0],
                    "t,B,Way (mm) (a.vdr),Force (a.vdr),Way (mm) (b.vdr),Force (b.vdr),"
                    "Way (mm) (b.vdr)_2,Force (b.vdr)_2")


def test_sqlite_holds_the_cells_as_text(box):
    box.require("sqlite3")
    box.copy_example("run1.req")
    result = box.run_program("crv-csv", "-r", "0,38:3,52:3", "-f", "run1.req", "-f", "run1.req",
                             "-xl", 'a "quoted", label')
    box.assertEqual(result.status, 0)
    box.write("run1.csv", result.stdout)
    header, *rows = csv.reader(io.StringIO(result.stdout, newline=""))
    held = box.output_of("sqlite3", ":memory:", ".import --csv run1.csv t", ".mode json",
                         "select * from t")
    held = json.loads(held)
    box.assertEqual(list(held[0]), header)
    box.expect("cells", [list(row.values()) for row in held], rows)
    box.assertEqual(len(rows), 301)
    box.assertNotIn("\r", result.stdout)


main(given("--crv"))
