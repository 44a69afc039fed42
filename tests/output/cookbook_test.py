#!/usr/bin/env python3
"""Runs the recipes of docs/cookbook.md as printed, and checks the files that they make.

Each section with blocks has a test named by its heading, which must use every block of it.
"""
import gzip
import re
import shutil
import sys
import tarfile
import xml.etree.ElementTree as xml

import workbench
from png_file import Picture

TEXT = (workbench.ROOT / "docs/cookbook.md").read_text()
BROKEN = "not a result file\n"

# Runs the script of an array job for each number, as a cluster does, and prints which tasks fail.
SBATCH = r'''case $1 in --array=1-*) last=${1#--array=1-} ;; *) exit 2 ;; esac
for SLURM_ARRAY_TASK_ID in $(seq 1 "$last"); do
    export SLURM_ARRAY_TASK_ID
    sh "$2" || echo "task $SLURM_ARRAY_TASK_ID failed"
done
'''


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


def test_every_section_has_its_test(box):
    tests = {name for name in vars(sys.modules["__main__"]) if name.startswith("test_")}
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


def test_several_charts_in_one_pdf(box):
    result = box.next_block()
    box.assertEqual((result.status, result.stderr), (0, ""))
    box.assert_pages("report.pdf", 3)
    text = box.output_of("pdftotext", "report.pdf", "-")
    box.assertLess(text.index("Heights"), text.index("Forces"))
    box.assertLess(text.index("Forces"), text.index("Bumper"))


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


def test_a_thousand_result_files_on_a_cluster(box):
    runs = box.make_runs()
    box.left.insert(0, recipes()["test_a_thousand_result_files"][0])
    box.next_block().chmod(0o755)
    box.add_tool("sbatch", SBATCH)
    box.next_block()
    result = box.next_block()
    broken = sorted([*(f"{run}.req" for run in runs), "broken.req"]).index("broken.req") + 1
    box.assertEqual((result.stdout, result.stderr), (f"task {broken} failed\n", ""))
    box.assert_runs_done(runs)


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
    box.add_tool("crv", 'for last do :; done\necho half > "$last"\n')
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
    box.path("run1.req").rename(box.path("gone"))
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


def test_a_value_in_a_script(box):
    box.assertEqual(box.next_block().stdout, "highest acceleration at 0.580000 s\n")


workbench.main(Cookbook)
