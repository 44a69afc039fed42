#!/usr/bin/env python3
# output/cookbook_test - runs the recipes of the cookbook as they are printed, and looks at what they leave.
#
# Each section with blocks has a test named by its heading, which must use every block of it.
import gzip
import re
import shutil
import tarfile
import xml.etree.ElementTree as xml

import workbench
from png_file import Picture

TEXT = (workbench.ROOT / "docs/cookbook.md").read_text()
BROKEN = "not a result file\n"

# Runs the script of an array job for each number, as the cluster would, and shows which tasks fail.
SBATCH = r'''#!/bin/sh
case $1 in --array=1-*) last=${1#--array=1-} ;; *) exit 2 ;; esac
for SLURM_ARRAY_TASK_ID in $(seq 1 "$last"); do
    export SLURM_ARRAY_TASK_ID
    sh "$2" || echo "task $SLURM_ARRAY_TASK_ID failed"
done
'''


def recipes():
    """The blocks of each section, by the name that its test has."""
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
            shutil.copy(example, self.folder)
        self.left = list(recipes().get(self._testMethodName, []))

    def tearDown(self):
        self.assertEqual(self.left, [], "blocks that no test runs")

    def next_block(self):
        """Saves a script or runs the next block; returns what came of it."""
        language, block = self.left.pop(0)
        name = "Makefile" if language == "make" else None
        if block.startswith("#!"):
            name = re.match(r"#!.*\n# (\S+) - ", block)[1]
        if name:
            return (self.folder / name).write_text(block)
        self.assertEqual(language, "sh")
        return self.run_program("sh", "-c", block)

    def read(self, name):
        return (self.folder / name).read_text()

    def assert_pages(self, name, pages=1):
        self.assertRegex(self.output_of("pdfinfo", name), rf"(?m)^Pages: +{pages}$")

    def make_runs(self):
        """Good files with awkward names, and a broken one."""
        good = ["run1.req", "run 2.req", "Bob's run.req", "a;b.req"]
        for name in good[1:]:
            shutil.copy(self.folder / "run1.req", self.folder / name)
        (self.folder / "broken.req").write_text(BROKEN)
        return [name[:-4] for name in good]

    def assert_runs_done(self, runs):
        for run in runs:
            self.assert_pages(f"{run}.pdf")
            self.assertIn("fini, ", self.read(f"{run}.log"))
            (self.folder / f"{run}.pdf").unlink()
        self.assertNotIn("broken.pdf", self.names())
        self.assertNotIn("broken.ps", self.names())

    def test_every_section_has_its_test(self):
        tests = {name for name in dir(self) if name.startswith("test_")} - {self._testMethodName}
        self.assertEqual(tests, set(recipes()))
        self.assertTrue(all(recipes().values()), "a section without a block")

    def test_a_chart_as_pdf_png_or_svg(self):
        self.next_block()
        self.assert_pages("crv.pdf")
        self.assertEqual(Picture(self.folder / "forces.png").width, 2200)
        self.assert_done(self.next_block())
        for name in ("crv.svg", "heights.svg"):
            self.assertEqual(xml.parse(self.folder / name).getroot().get("viewBox"), "0 0 792 612")
        self.assert_pages("forces.pdf")

    def test_several_charts_in_one_pdf(self):
        done = self.next_block()
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assert_pages("report.pdf", 3)
        text = self.output_of("pdftotext", "report.pdf", "-")
        self.assertLess(text.index("Heights"), text.index("Forces"))
        self.assertLess(text.index("Forces"), text.index("Bumper"))

    def test_a_thousand_result_files(self):
        runs = self.make_runs()
        self.next_block()
        self.assertEqual(self.next_block().returncode, 123)
        self.assert_runs_done(runs)

        parallel = self.left[0]
        done = self.next_block()
        self.assertEqual(done.returncode, 1, done.stderr)
        self.assert_runs_done(runs)

        listed = self.next_block()
        self.assertRegex(listed.stdout, r"^broken\.log\n\s*%crv_83-e-")
        self.assertEqual(listed.stdout.count("\n"), 2)
        shutil.copy(self.folder / "run1.req", self.folder / "broken.req")
        self.left.insert(0, parallel)
        self.assertEqual(self.next_block().returncode, 0)
        self.assertEqual([name for name in self.names() if name.endswith(".pdf")], ["broken.pdf"])

    def test_a_thousand_result_files_on_a_cluster(self):
        runs = self.make_runs()
        self.left.insert(0, recipes()["test_a_thousand_result_files"][0])
        self.next_block()
        (self.folder / "chart_one").chmod(0o755)
        (self.tools / "sbatch").write_text(SBATCH)
        (self.tools / "sbatch").chmod(0o755)
        self.next_block()
        done = self.next_block()
        broken = sorted([*(f"{run}.req" for run in runs), "broken.req"]).index("broken.req") + 1
        self.assertEqual((done.stdout, done.stderr), (f"task {broken} failed\n", ""))
        self.assert_runs_done(runs)

    def test_make(self):
        shutil.copy(self.folder / "run1.req", self.folder / "run2.req")
        self.next_block()
        make = self.left[0]
        self.assertEqual(self.next_block().returncode, 0)
        made = ["run1.dat", "run1.pdf", "run1.ps", "run2.dat", "run2.pdf", "run2.ps"]
        self.assertEqual([name for name in self.names() if name.endswith((".dat", ".pdf", ".ps"))], made)
        self.assert_pages("run2.pdf")

        self.left.insert(0, make)
        self.assertIn("Nothing to be done", self.next_block().stdout)

        (self.folder / "run3.req").write_text(BROKEN)
        self.run_program("touch", "-d", "tomorrow", "run1.req")
        self.left.insert(0, make)
        done = self.next_block()
        self.assertNotEqual(done.returncode, 0)
        self.assertNotIn("run2", done.stdout)
        self.assertEqual([name for name in self.names() if name.endswith((".dat", ".pdf", ".ps")) and "run3" in name], [])

        shutil.copy(self.folder / "run1.req", self.folder / "run3.req")
        (self.tools / "crv").unlink()
        (self.tools / "crv").write_text("#!/bin/sh\nfor last do :; done\necho half > \"$last\"\n")
        (self.tools / "crv").chmod(0o755)
        self.left.insert(0, make)
        self.assertNotEqual(self.next_block().returncode, 0)
        self.assertNotIn("run3.ps", self.names())

        (self.tools / "crv").unlink()
        (self.tools / "crv").symlink_to(workbench.CRV)
        self.left.insert(0, make)
        self.assertEqual(self.next_block().returncode, 0)
        self.assert_pages("run3.pdf")

    def test_scripts_with_set_e(self):
        self.next_block()
        report = self.left[0]
        self.assert_done(self.next_block())
        self.assert_pages("report.pdf", 2)
        self.assertEqual(self.next_block().returncode, 0)
        self.assertIn("3.0000e+00", self.read("run1.dat"))

        (self.folder / "report.pdf").unlink()
        shutil.move(self.folder / "run1.req", self.folder / "gone")
        self.left.insert(0, report)
        done = self.next_block()
        self.assertEqual(done.returncode, 1)
        self.assertIn("    _83-f-fopen: No such file or directory\n", done.stderr)
        self.assertNotIn("report.pdf", self.names())

    def test_reading_from_a_pipe(self):
        for name, packed in (("run1.req", "run.req.gz"), ("sled.mad", "sled.mad.gz")):
            (self.folder / packed).write_bytes(gzip.compress((self.folder / name).read_bytes()))
        with tarfile.open(self.folder / "results.tar.gz", "w:gz") as archive:
            archive.add(self.folder / "run1.req", "run1.req")
        self.environment["CRV_PRINTCHAIN"] = ":"
        done = self.next_block()
        for chart, options in (("crv.ps", ("-r", "0,38:3", "-f", "run1.req")), ("sled.ps", ("-r", "0,1:2,2:2", "-fm", "sled.mad"))):
            came = self.read(chart)
            self.assertEqual(self.run_program("crv", *options, "-p", chart).returncode, 1)
            self.assertEqual(came, self.read(chart))
        self.assertIn("0.580000 [Time (sec) ] when [Accel 40, Z  ] = max", done.stdout)
        self.assertEqual(done.stderr, "")

        self.assertEqual(self.next_block().returncode, 0)
        came = self.read("run.dat")
        self.run_program("crv", "-r", "0,38:3", "-fc", "run1.req")
        self.assertEqual(came, self.read("run1.dat"))

    def test_a_table_in_other_tools(self):
        self.assertEqual(self.next_block().returncode, 0)
        rows = [line.split() for line in self.read("run1.dat").splitlines()]
        self.assertEqual((len(rows), {len(row) for row in rows}), (301, {3}))
        high = [line.split() for line in self.read("high_force.txt").splitlines()]
        self.assertEqual(high, [[row[0], row[2]] for row in rows if float(row[2]) > 1000])
        self.assertGreater(len(high), 5)
        self.assertTrue(xml.parse(self.folder / "run1.svg").getroot().tag.endswith("svg"))
        self.next_block()
        done = self.next_block()
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertAlmostEqual(float(done.stdout.splitlines()[-1]), self.work(), places=2)

    def work(self):
        """Force and travel from the result file itself: component 3 of requests 61 and 70."""
        lines = self.read("run1.req").splitlines()[16:]
        steps = [lines[at:at + 8] for at in range(0, len(lines), 8)]
        points = [(float(step[7].split()[2]), float(step[5].split()[2])) for step in steps]
        return sum((b[0] - a[0]) * (a[1] + b[1]) / 2000 for a, b in zip(points, points[1:]))

    def test_a_value_in_a_script(self):
        self.assertEqual(self.next_block().stdout, "highest acceleration at 0.580000 s\n")


if __name__ == "__main__":
    workbench.main()
