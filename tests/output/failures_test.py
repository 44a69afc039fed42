#!/usr/bin/env python3
# output/failures_test - what the companions say and leave behind when something is wrong.
import os
import shutil
import signal
import subprocess
import time

import workbench

GOOD = "%!\n100 100 moveto 200 200 lineto stroke showpage\n"
HELP_ENDS = "status: 0 all pictures are made, 1 one is not, 2 nothing was tried\n"


class Failures(workbench.Workbench):
    def write(self, name, text):
        (self.folder / name).write_text(text)

    def test_what_is_wrong_with_a_chart_is_said_with_its_name_and_nothing_is_left(self):
        self.write("error.ps", "%!\n1 0 div showpage\n")
        self.write("words.ps", "%!\nnonsense showpage\n")
        self.write("open.ps", "%!\n(never closed showpage\n")
        self.write("empty.ps", "")
        self.write("no_page.ps", "%!\n100 100 moveto 200 200 lineto stroke\n")
        self.write("stops.ps", "%!\nquit\n")
        self.write("two.ps", GOOD + "showpage\n")
        self.write("spy.ps", "%!\n(/etc/passwd) (r) file showpage\n")
        self.write("harm.ps", "%!\n(harm) (w) file showpage\n")
        self.write("shell.ps", "%!\n(%pipe%touch harm) (w) file showpage\n")
        (self.folder / "folder.ps").mkdir()
        self.draw_chart()
        chart = (self.folder / "crv.ps").read_text()
        self.write("cut.ps", chart[:len(chart) // 2])
        before = self.names()
        charts = {
            "error.ps": "PostScript error: /undefinedresult in --div--",
            "words.ps": "PostScript error: /undefined in nonsense",
            "open.ps": "PostScript error: /syntaxerror in ",
            "empty.ps": "is not PostScript",
            "no_page.ps": "has no page",
            "stops.ps": "has no page",
            "two.ps": "has 2 pages, a chart has one",
            "spy.ps": "PostScript error: /invalidfileaccess in --file--",
            "harm.ps": "PostScript error: /invalidfileaccess in --file--",
            "shell.ps": "PostScript error: /invalidfileaccess in --file--",
            "cut.ps": None,  # by where it was cut
            "run1.req": "is not PostScript",
            "nowhere.ps": "no such file",
            "folder.ps": "is a folder",
        }
        for suffix in workbench.SUFFIXES:
            for chart, complaint in charts.items():
                with self.subTest(suffix=suffix, chart=chart):
                    done = self.run_program(f"crv2{suffix}", chart)
                    self.assertEqual((done.returncode, done.stdout), (1, ""))
                    self.assertEqual(done.stderr.count("\n"), 1, done.stderr)
                    self.assertTrue(done.stderr.startswith(f"crv2{suffix}: {chart}: {complaint or ''}"), done.stderr)
                    self.assertEqual(self.names(), before)

    def test_a_chart_that_may_not_be_read_is_told_from_one_that_is_not_there(self):
        self.write("a.ps", GOOD)
        (self.folder / "a.ps").chmod(0)
        companion = shutil.copy(workbench.COMPANIONS / "crv2picture", self.tools / "crv2pdf_copy")
        os.replace(companion, self.tools / "crv2pdf")
        os.chmod(self.folder.parent, 0o755)
        not_root = ("setpriv", "--reuid=65534", "--clear-groups") if os.getuid() == 0 else ()
        self.assert_failed(self.run_program(*not_root, self.tools / "crv2pdf", "a.ps"), 1, "crv2pdf: a.ps: may not be read")

    def test_an_unbalanced_title_is_found(self):
        self.run_program("crv", "-t", "A (b", "-r", "0,38:3", "-f", "run1.req", "-p", CRV_PRINTCHAIN=":")
        done = self.run_program("crv2png", "crv.ps")
        self.assertEqual(done.returncode, 1)
        self.assertIn("crv2png: crv.ps: PostScript error: ", done.stderr)

    def test_a_failure_does_not_keep_the_other_charts_from_becoming_pictures(self):
        self.write("a.ps", GOOD)
        self.write("b.ps", "%!\nnonsense\n")
        self.write("c.ps", GOOD)
        self.assert_failed(self.run_program("crv2pdf", "a.ps", "nowhere.ps", "b.ps", "c.ps"), 1,
                           "crv2pdf: nowhere.ps: no such file", "crv2pdf: b.ps: PostScript error: /undefined in nonsense")
        self.assertEqual(self.names(), ["a.pdf", "a.ps", "b.ps", "c.pdf", "c.ps", "run1.req"])

    def test_a_failure_leaves_the_picture_that_was_there(self):
        self.write("a.ps", "%!\nnonsense\n")
        self.write("a.png", "yesterday's")
        self.assertEqual(self.run_program("crv2png", "a.ps").returncode, 1)
        self.assertEqual((self.folder / "a.png").read_text(), "yesterday's")

    def test_a_picture_cannot_be_a_folder_or_lie_where_nothing_can_be_written(self):
        self.write("a.ps", GOOD)
        (self.folder / "a.png").mkdir()
        self.assert_failed(self.run_program("crv2png", "a.ps"), 1, "crv2png: a.png: is a folder")
        self.assertEqual(self.names(self.folder / "a.png"), [])
        self.assert_failed(self.run_program("crv2png", "a.ps", "nowhere/b.png"), 1,
                           "crv2png: nowhere/b.png: cannot be written in that folder")
        self.assert_failed(self.run_program("crv2png", "a.ps", "/proc/b.png"), 1,
                           "crv2png: /proc/b.png: cannot be written in that folder")

    def test_a_picture_that_does_not_fit_is_not_left_half(self):
        self.draw_chart()
        before = self.names()
        for suffix in workbench.SUFFIXES:  # room for the chart, not for what is made of it
            done = self.run_program("bash", "-c", f"trap '' XFSZ; ulimit -f 3; exec crv2{suffix} crv.ps")
            self.assertEqual(done.returncode, 1, suffix)
            self.assertIn(f"crv2{suffix}: crv.ps: ", done.stderr)
            self.assertEqual(self.names(), before, suffix)

    def test_an_interrupted_companion_leaves_nothing(self):
        self.write("a.ps", "%!\n{} loop\n")
        before = self.names()
        child = subprocess.Popen(["crv2png", "a.ps"], cwd=self.folder, env=self.environment, start_new_session=True,
                                 stderr=subprocess.DEVNULL,
                                 executable=self.tools / "crv2png")
        while not any((self.folder / name / "log").exists() for name in self.names()):  # Ghostscript has begun
            self.assertIsNone(child.poll())
            time.sleep(0.01)
        os.killpg(child.pid, signal.SIGTERM)
        self.assertEqual(child.wait(60), 143)
        self.assertEqual(self.names(), before)

    def test_wrong_arguments_end_with_2_and_touch_nothing(self):
        self.write("a.ps", GOOD)
        wrong = {
            ("-x", "a.ps"): "-x: no such option, -h shows them; of a chart: crv2png -- NAME",
            ("--nonsense", "a.ps"): "--nonsense: no such option, -h shows them",
            ("-r",): "-r: needs a number",
            ("-r", "9", "a.ps"): "9: the dots per inch are a number from 10 to 1200",
            ("-r", "1201", "a.ps"): "1201: the dots per inch are a number from 10 to 1200",
            ("-r", "1e2", "a.ps"): "1e2: the dots per inch are a number from 10 to 1200",
            ("a.png",): "a.png: is the name of a picture, which stands behind one chart that ends in .ps",
            ("a.png", "b.png"): "a.png: is the name of a picture, which stands behind one chart that ends in .ps",
            ("a.ps", "a.ps", "b.png"): "b.png: is the name of a picture, which stands behind one chart that ends in .ps",
        }
        for arguments, complaint in wrong.items():
            self.assert_failed(self.run_program("crv2png", *arguments), 2, f"crv2png: {complaint}")
        self.assert_failed(self.run_program("crv2pdf", "-r", "110", "a.ps"), 2, "crv2pdf: -r: only crv2png has dots")
        self.assertEqual(self.names(), ["a.ps", "run1.req"])

    def test_the_bounds_of_the_dots_per_inch_are_taken(self):
        for dots in ("10", "99", "100", "999", "1000", "1199", "1200"):  # 1, not 2: the chart was looked for
            self.assert_failed(self.run_program("crv2png", "-r", dots, "a.ps"), 1, "crv2png: a.ps: no such file")

    def test_the_help_is_asked_for_or_shown_where_a_chart_is_missing(self):
        for suffix in workbench.SUFFIXES:
            for word in ("-h", "--help"):
                done = self.run_program(f"crv2{suffix}", word)
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                self.assertTrue(done.stdout.startswith(f"usage: crv2{suffix} "), done.stdout)
                self.assertTrue(done.stdout.endswith(HELP_ENDS))
                self.assertEqual("-r DPI" in done.stdout, suffix == "png")
            shown = self.run_program(f"crv2{suffix}")
            self.assertEqual((shown.returncode, shown.stdout, shown.stderr), (2, "", done.stdout))

    def test_control_characters_of_a_name_do_not_reach_the_terminal(self):
        self.assert_failed(self.run_program("crv2png", "a\x1b[31m\nb.ps"), 1, "crv2png: a?[31m?b.ps: no such file")

    def test_a_missing_program_is_named(self):
        self.write("a.ps", GOOD)
        few = self.tools / "few"
        few.mkdir()
        for tool in ("sh", "cat", "tr", "rm", "sed", "mktemp", "mv", "dd", "tail", "grep", "head"):
            (few / tool).symlink_to(f"/usr/bin/{tool}")
        for suffix in workbench.SUFFIXES:
            self.assert_failed(self.run_program(self.tools / f"crv2{suffix}", "a.ps", PATH=str(few)), 2,
                               f"crv2{suffix}: gs: not found, please install Ghostscript")
        (few / "gs").symlink_to("/usr/bin/gs")
        self.assert_failed(self.run_program(self.tools / "crv2svg", "a.ps", PATH=str(few)), 2,
                           "crv2svg: pdftocairo: not found, please install the poppler utilities")
        self.assertEqual(self.names(), ["a.ps", "run1.req"])
        self.assert_done(self.run_program(self.tools / "crv2pdf", "a.ps", PATH=str(few)))

    def test_a_companion_under_another_name_says_what_to_call_it_by(self):
        self.assert_failed(self.run_program(workbench.COMPANIONS / "crv2picture", "a.ps"), 2,
                           "crv2picture: crv2picture: call it as crv2pdf, crv2png or crv2svg")

    def test_a_failing_companion_is_no_fault_of_the_run(self):
        done = self.draw_chart(name="chart.pdf", chain="crv2pdf")
        self.assertEqual(done.stderr, "crv2pdf: chart.pdf: is the name of a picture, which stands behind one chart that "
                                      "ends in .ps\n")
        self.assertIn("fini, ", done.stdout)


if __name__ == "__main__":
    workbench.main()
