#!/usr/bin/env python3
"""Runs the recipes of docs/cookbook.md as printed, and checks the files that they make.

Each section with blocks has a test named by its heading, which must use every block of it. Each
test also runs its recipe with an input that is missing or damaged: old output must not be used.
"""
import csv
import gzip
import re
import shutil
import tarfile
import xml.etree.ElementTree as xml

import workbench
from png_file import Picture

TEXT = (workbench.ROOT / "docs/cookbook.md").read_text()
BROKEN = "not a result file\n"
CLUSTER_TEST = workbench.ROOT / "tests/output/cluster_test.py"  # which needs a scheduler

def recipes():
    """The blocks of each section, by the name of its test."""
    found = {}
    for section in TEXT.split("\n## ")[1:]:
        heading, body = section.split("\n", 1)
        blocks = re.findall(r"^```(\w+)\n(.*?)^```$", body, re.S | re.M)
        found["test_" + "_".join(re.findall(r"\w+", heading.lower()))] = blocks
    return found


class Cookbook(workbench.Workbench):
    def setUp(self):
        super().setUp()
        for example in (workbench.ROOT / "examples").glob("*.*"):
            shutil.copy(example, self.dir)
        self.left = list(recipes().get(self.test.__name__, []))

    def tearDown(self):
        self.assertEqual(self.left, [], "blocks that no test runs")

    def next_block(self):
        """Saves a script or runs the next block."""
        language, block = self.left.pop(0)
        name = "Makefile" if language == "make" else None
        if block.startswith("#!"):
            name = re.match(r"#!.*\n# (\S+) - ", block)[1]
        if name:
            return self.write(name, block)
        self.assertEqual(language, "sh")
        return self.shell(block)

    def next_status(self, status=0):
        """Runs the next block, which must end with a status."""
        result = self.next_block()
        self.assertEqual(result.status, status, result.stderr)
        return result

    def again(self):
        """The next block will run once more afterwards."""
        self.left.insert(0, self.left[0])

    def repeat(self, number):
        """Block `number` of the section will run once more, next."""
        self.left.insert(0, recipes()[self.test.__name__][number])

    def hide(self, name="run1.req"):
        self.path(name).rename(self.path("hidden"))

    def assert_fails(self, *missing):
        """Runs the next block, which must fail without making some files."""
        result = self.next_block()
        self.assertNotEqual(result.status, 0, result)
        self.assert_missing(*missing)
        return result

    def copy(self, source, target):
        self.write(target, self.read(source))

    def text(self, name):
        return self.path(name).read_text()

    def rows(self, name):
        return [line.split() for line in self.text(name).splitlines()]

    def assert_pages(self, name, pages=1):
        self.assertRegex(self.output_of("pdfinfo", name), rf"(?m)^Pages: +{pages}$")

    def assert_missing(self, *names):
        self.assertEqual(set(names) & set(self.names()), set())

    def made(self):
        return [name for name in self.names() if name.endswith((".dat", ".pdf", ".ps"))]

    def make_runs(self):
        """Valid files with awkward names, and an invalid one."""
        valid = ["run1.req", "run 2.req", "Bob's run.req", "a;b.req"]
        for name in valid[1:]:
            self.copy("run1.req", name)
        self.write("broken.req", BROKEN)
        return [name[:-4] for name in valid]

    def assert_runs_done(self, runs):
        for run in runs:
            self.assert_pages(f"{run}.pdf")
            self.assertIn("fini, ", self.text(f"{run}.log"))
            self.take(f"{run}.pdf")
        self.assert_missing("broken.pdf", "broken.ps")


# Runs a command in the directory where its tests are. The host is not looked at.
SSH = """test "$1" = -t && shift
shift
exec sh -c "$*"
"""


def test_every_section_has_its_test(box):
    tests = {name for name in globals() if name.startswith("test_")}
    tests |= set(re.findall(r"^def (test_\w+)", CLUSTER_TEST.read_text(), re.M))
    box.assertEqual(tests - {box.test.__name__}, set(recipes()))
    box.assertTrue(all(recipes().values()), "a section without a block")


def test_a_chart_as_pdf_png_or_svg(box):
    box.next_block()
    box.assert_pages("crv.pdf")
    box.assertEqual(Picture(box.path("forces.png")).width, 2200)
    box.assertEqual(box.next_block(), ("", "", 0))
    for name in ("crv.svg", "heights.svg"):
        box.assertEqual(xml.parse(box.path(name)).getroot().get("viewBox"), "0 0 792 612")
    box.assert_pages("forces.pdf")

    for name in box.made():
        box.path(name).unlink()
    box.hide()
    box.repeat(0)
    box.assertNotIn("fini, ", box.next_block().stdout)
    box.repeat(1)
    box.assertIn("crv2svg: ", box.assert_fails("crv.ps", "crv.pdf", "forces.pdf").stderr)


def test_several_charts_in_one_pdf(box):
    result = box.next_block()
    box.assertEqual((result.status, result.stderr), (0, ""))
    box.assert_pages("report.pdf", 3)
    text = box.output_of("pdftotext", "report.pdf", "-")
    box.assertLess(text.index("Heights"), text.index("Forces"))
    box.assertLess(text.index("Forces"), text.index("Bumper"))
    box.hide()
    box.repeat(0)
    box.assert_fails("report.pdf")


def scaled(box, source, factor, every=1):
    """A request file with every n-th step of another and the heights times a factor."""
    lines = box.text(source).splitlines()
    steps = [lines[at:at + 8] for at in range(16, len(lines), 8 * every)]
    for step in steps:
        cells = step[1].split()
        cells[2] = f"{factor * float(cells[2]):.10E}"
        step[1] = "  ".join(cells)
    return "\n".join(lines[:16] + sum(steps, [])) + "\n"


def test_the_same_series_of_several_runs(box):
    box.write("run2.req", scaled(box, "run1.req", 0.5))
    result = box.next_status(0)
    box.assertEqual(result.stderr, "")
    box.assert_pages("runs.pdf")
    text = box.output_of("pdftotext", "runs.pdf", "-")
    box.assertRegex(text, r"(?s)run 1.*run 2")
    box.assertEqual(box.text("run1.dat"), box.text("run2.dat"))

    box.repeat(0)
    box.write("run2.req", scaled(box, "run1.req", 0.5, every=2))
    box.assertIn("differ", box.assert_fails("runs.pdf").stdout)

    box.next_block()
    box.assertEqual(box.next_status(0).stderr, "")
    rows = [[float(cell) for cell in row] for row in box.rows("runs.pos")]
    box.assertEqual(len(rows), 301)
    for row in rows[::2]:
        box.assertAlmostEqual(row[2], row[1] / 2, delta=0.001)
    for before, row, after in zip(rows[::2], rows[1::2], rows[2::2]):
        box.assertAlmostEqual(row[2], (before[1] + after[1]) / 4, delta=0.001)
    text = box.output_of("pdftotext", "runs.pdf", "-")
    box.assertRegex(text, r"(?s)run 1.*run 2")

    for name in ("run2.req", "run1.req"):
        box.hide(name)
        for block in (0, 2):
            for old in ("run1.dat", "run2.dat"):
                box.write(old, "0 0\n1 1\n")
            box.repeat(block)
            box.assert_fails("runs.pdf")
        box.path("hidden").rename(box.path(name))


def test_a_page_to_mail(box):
    box.write("run2.req", scaled(box, "run1.req", 0.5, every=2))
    box.next_status(0)
    page = gzip.decompress(box.read("run1.html.gz"))
    box.assertEqual(page, box.read("run1.html"))
    box.assertIn(b"<title>Over the bump</title>", page)
    box.next_status(0)
    box.assertIn(b'"run 1"],[2,3,1,1,"run 2"]', box.read("runs.html"))

    box.write("run1.req", BROKEN)
    box.repeat(0)
    box.take("run1.html.gz")
    box.assert_fails("run1.html.gz")
    box.assertEqual(box.read("run1.html"), page)
    box.repeat(1)
    box.take("runs.html")
    box.assert_fails("runs.html")


def test_a_thousand_result_files(box):
    runs = box.make_runs()
    box.next_block()
    box.next_status(123)
    box.assert_runs_done(runs)

    parallel = box.left[0]
    box.next_status(1)
    box.assert_runs_done(runs)

    listed = box.next_block()
    box.assertRegex(listed.stdout, r"^broken\.log\n\s*%crv_83-e-")
    box.assertEqual(listed.stdout.count("\n"), 2)
    box.copy("run1.req", "broken.req")
    box.left.insert(0, parallel)
    box.next_status(0)
    box.assertEqual([name for name in box.names() if name.endswith(".pdf")], ["broken.pdf"])


def test_tables_of_many_files(box):
    runs = box.make_runs()
    box.copy("broken.req", "middle.req")
    box.write("broken.dat", "of an earlier run\n")
    box.next_block()
    result = box.next_status(1)
    box.assertEqual(result.stdout, "")
    box.assertEqual(result.stderr,
                    "tables: ./broken.req has no table, see ./broken.log\n"
                    "tables: ./middle.req has no table, see ./middle.log\n")
    box.assertEqual(box.made(), sorted(f"{run}.dat" for run in runs))
    for run in runs:
        box.assertEqual(len(box.rows(f"{run}.dat")), 301 + 18)
    box.assertIn('Request "38" not found!', box.text("middle.log"))
    for name in ("broken.req", "middle.req"):
        box.path(name).unlink()
    box.repeat(1)
    box.assertEqual(box.next_status(0), ("", "", 0))


def test_one_csv_line_for_each_file(box):
    box.make_runs()
    box.write("run2,\"b\".req", scaled(box, "run1.req", 2))
    before = box.names()
    box.next_block()
    result = box.next_status(1)
    box.assertEqual(result.stderr,
                    'extremes: broken.req: %crv_83-e-mis, Request "38" not found! \n')
    box.assertEqual(sorted({*box.names()} - {*before}), ["extremes", "extremes.csv"])
    with box.path("extremes.csv").open(newline="") as file:
        header, *rows = csv.reader(file)
    box.assertEqual(header, ["file", "min 38:3", "max 38:3", "min 61:3", "max 61:3"])
    forces = ["-2.2624e+03", "1.7428e+03"]
    heights = [2 * float(line.split()[2]) for line in box.text("run1.req").splitlines()[17::8]]
    box.assertEqual(sorted(rows), sorted(
        [[name, "-3.2692e+01", "7.6491e+01", *forces]
         for name in ("run1.req", "run 2.req", "Bob's run.req", "a;b.req")]
        + [['run2,"b".req', f"{min(heights):.4e}", f"{max(heights):.4e}", *forces]]))
    box.path("broken.req").unlink()
    box.repeat(1)
    box.assertEqual(box.next_status(0), ("", "", 0))


def test_make(box):
    box.copy("run1.req", "run2.req")
    box.next_block()
    box.again()
    box.next_status(0)
    box.assertEqual(box.made(), ["run1.dat", "run1.pdf", "run1.ps", "run2.dat", "run2.pdf",
                                 "run2.ps"])
    box.assert_pages("run2.pdf")

    box.again()
    box.assertIn("Nothing to be done", box.next_block().stdout)

    box.write("run3.req", BROKEN)
    box.run_program("touch", "-d", "tomorrow", "run1.req")
    box.again()
    result = box.next_block()
    box.assertNotEqual(result.status, 0)
    box.assertNotIn("run2", result.stdout)
    box.assertEqual([name for name in box.made() if "run3" in name], [])

    box.copy("run1.req", "run3.req")
    box.add_tool("crv", 'for last do :; done\necho half > "$last"\nexit 1\n')
    box.again()
    box.assertNotEqual(box.next_block().status, 0)
    box.assert_missing("run3.ps")

    (box.bin / "crv").unlink()
    (box.bin / "crv").symlink_to(workbench.CRV)
    box.next_status(0)
    box.assert_pages("run3.pdf")


def test_scripts_with_set_e(box):
    box.next_block()
    report = box.left[0]
    box.assertEqual(box.next_block(), ("", "", 0))
    box.assert_pages("report.pdf", 2)
    box.next_status(0)
    box.assertIn("3.0000e+00", box.text("run1.dat"))

    box.path("report.pdf").unlink()
    box.hide()
    box.repeat(2)
    box.assert_fails("run1.dat")
    box.left.insert(0, report)
    result = box.next_status(1)
    box.assertIn("    _83-f-fopen: No such file or directory\n", result.stderr)
    box.assert_missing("report.pdf")


def test_reading_from_a_pipe(box):
    for name, packed in (("run1.req", "run.req.gz"), ("sled.mad", "sled.mad.gz")):
        box.write(packed, gzip.compress(box.read(name)))
    with tarfile.open(box.path("results.tar.gz"), "w:gz") as archive:
        archive.add(box.path("run1.req"), "run1.req")
    box.environment["CRV_PRINTCHAIN"] = ":"
    result = box.next_block()
    for chart, *options in (("crv.ps", "-r", "0,38:3", "-f", "run1.req"),
                            ("sled.ps", "-r", "0,1:2,2:2", "-fm", "sled.mad")):
        from_pipe = box.text(chart)
        box.assertEqual(box.crv(*options, "-p", chart).status, 1)
        box.assertEqual(from_pipe, box.text(chart))
    box.assertIn("0.580000 [Time (sec) ] when [Accel 40, Z  ] = max", result.stdout)
    # The Y range is that of the first curve.
    box.assertEqual(result.stderr, "%crv_44-w-pts, Curve 2: 88 of 151 points are outside the "
                                   "ranges of the chart and left out\n")

    box.next_status(0)
    from_pipe = box.text("run.dat")
    box.crv("-r", "0,38:3", "-fc", "run1.req")
    box.assertEqual(from_pipe, box.text("run1.dat"))

    for name in ("crv.ps", "sled.ps", "run.req"):
        box.path(name).unlink()
    for name in ("run.req.gz", "sled.mad.gz", "results.tar.gz"):
        box.write(name, gzip.compress(BROKEN.encode()))
    box.repeat(0)
    result = box.next_block()
    box.assertNotIn(" when [", result.stdout)
    box.assert_missing("crv.ps", "sled.ps")
    box.repeat(1)
    box.assert_fails("run.dat")


def test_a_look_at_results_over_ssh(box):
    box.add_tool("ssh", SSH)
    box.path("runs").mkdir()
    box.copy("run1.req", "runs/run1.req")
    chart = box.output_of("crv-term", "-r", "0,38:3,52:3", "-f", "run1.req")
    for _ in range(2):
        result = box.next_status(0)
        box.assertEqual(result.stdout, chart)
    for number in range(2):
        box.repeat(number)
        box.write("runs/run1.req", BROKEN)
        box.assertEqual(box.next_status(1).stdout, "")


def work(box):
    """Force times travel of the result file itself: component 3 of requests 61 and 70."""
    lines = box.text("run1.req").splitlines()[16:]
    steps = [lines[at:at + 8] for at in range(0, len(lines), 8)]
    points = [(float(step[7].split()[2]), float(step[5].split()[2])) for step in steps]
    return sum((b[0] - a[0]) * (a[1] + b[1]) / 2000 for a, b in zip(points, points[1:]))


def test_a_table_in_other_tools(box):
    box.next_status(0)
    rows = box.rows("run1.dat")
    box.assertEqual((len(rows), {len(row) for row in rows}), (301, {3}))
    high = box.rows("high_force.txt")
    box.assertEqual(high, [[row[0], row[2]] for row in rows if float(row[2]) > 1000])
    box.assertGreater(len(high), 5)
    box.assertTrue(xml.parse(box.path("run1.svg")).getroot().tag.endswith("svg"))
    box.next_block()
    result = box.next_block()
    box.assertEqual((result.status, result.stderr), (0, ""))
    box.assertAlmostEqual(float(result.stdout.splitlines()[-1]), work(box), places=2)

    box.path("run1.svg").unlink()
    box.hide()
    box.repeat(0)
    box.assert_fails("run1.dat", "run1.svg")
    box.repeat(2)
    box.assertNotRegex(box.assert_fails("travel.dat").stdout, r"(?m)^-?\d")


def test_a_table_in_pandas_and_in_a_spreadsheet(box):
    box.next_block()
    result = box.next_status(0)
    box.assertEqual(result.stderr, "")
    rows = box.rows("run1.dat")
    box.assertRegex(result.stdout, r"(?m)^count +301\.0+ +301\.0+$")
    box.assertRegex(result.stdout, r"(?m)^min +-32\.692\d* +-2262\.4\d*$")
    high = [float(row[0]) for row in rows if float(row[2]) > 1000]
    box.assertEqual([float(cell) for cell in result.stdout.splitlines()[-1].split()], high)

    box.next_status(0)
    with box.path("run1.csv").open(newline="") as file:
        header, *cells = csv.reader(file)
    box.assertEqual((header, cells), (["time", "height", "force"], rows))

    box.hide()
    box.repeat(1)
    box.assertIn("FileNotFoundError", box.assert_fails("run1.dat").stderr)
    box.repeat(2)
    box.assert_fails("run1.dat", "run1.csv")


def test_a_value_in_a_script(box):
    box.next_block()
    box.assertEqual(box.next_status(0), ("highest acceleration at 0.580000 s\n", "", 0))
    box.write("run1.req", BROKEN)
    box.repeat(1)
    result = box.next_status(1)
    box.assertEqual(result.stdout, "")
    box.assertIn('Request "40" not found!', result.stderr)
    box.path("run1.req").unlink()
    box.repeat(1)
    result = box.next_status(1)
    box.assertEqual(result.stdout, "")
    box.assertIn("_83-f-fopen: No such file or directory\n", result.stderr)


if __name__ == "__main__":
    workbench.main(Cookbook)
