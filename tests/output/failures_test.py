#!/usr/bin/env python3
"""Messages, exit status and files of the companions when something is wrong."""
import os
import shutil
import signal
import subprocess
import time

from workbench import COMPANIONS, SUFFIXES, main

GOOD = "%!\n100 100 moveto 200 200 lineto stroke showpage\n"
HELP_ENDS = "status: 0 all pictures are made, 1 one is not, 2 nothing was tried\n"
NO_ACCESS = "PostScript error: /invalidfileaccess in --file--"
FAULTY = {
    "error.ps": ("%!\n1 0 div showpage\n", "PostScript error: /undefinedresult in --div--"),
    "words.ps": ("%!\nnonsense showpage\n", "PostScript error: /undefined in nonsense"),
    "open.ps": ("%!\n(never closed showpage\n", "PostScript error: /syntaxerror in "),
    "empty.ps": ("", "is not PostScript"),
    "no_page.ps": ("%!\n100 100 moveto 200 200 lineto stroke\n", "has no page"),
    "stops.ps": ("%!\nquit\n", "has no page"),
    "two.ps": (GOOD + "showpage\n", "has 2 pages, a chart has one"),
    "spy.ps": ("%!\n(/etc/passwd) (r) file showpage\n", NO_ACCESS),
    "harm.ps": ("%!\n(harm) (w) file showpage\n", NO_ACCESS),
    "shell.ps": ("%!\n(%pipe%touch harm) (w) file showpage\n", NO_ACCESS),
    "cut.ps": (None, ""),  # the error depends on where it was cut
    "run1.req": (None, "is not PostScript"),
    "nowhere.ps": (None, "no such file"),
    "folder.ps": (None, "is a folder"),
}


def test_faulty_chart_leaves_no_file(box):
    for name, (text, _) in FAULTY.items():
        if text is not None:
            box.write(name, text)
    box.path("folder.ps").mkdir()
    box.draw_chart()
    chart = box.read("crv.ps")
    box.write("cut.ps", chart[:len(chart) // 2])
    before = box.names()
    for suffix in SUFFIXES:
        for chart, (_, complaint) in FAULTY.items():
            with box.subTest(suffix=suffix, chart=chart):
                result = box.run_program(f"crv2{suffix}", chart)
                box.assertEqual((result.status, result.stdout), (1, ""))
                box.assertEqual(result.stderr.count("\n"), 1, result.stderr)
                start = f"crv2{suffix}: {chart}: {complaint}"
                box.assertEqual(result.stderr[:len(start)], start)
                box.assertEqual(box.names(), before)


def test_unreadable_chart_is_not_missing(box):
    box.write("a.ps", GOOD).chmod(0)
    (box.bin / "crv2pdf").unlink()
    shutil.copy(COMPANIONS / "crv2picture", box.bin / "crv2pdf")
    user = ("setpriv", "--reuid=65534", "--clear-groups") if os.getuid() == 0 else ()
    box.assert_failed(box.run_program(*user, box.bin / "crv2pdf", "a.ps"), 1,
                      "crv2pdf: a.ps: may not be read")


def test_unbalanced_title_is_reported(box):
    box.crv("-t", "A (b", "-r", "0,38:3", "-f", "run1.req", "-p", CRV_PRINTCHAIN=":")
    result = box.run_program("crv2png", "crv.ps")
    box.assertEqual(result.status, 1)
    box.assertIn("crv2png: crv.ps: PostScript error: ", result.stderr)


def test_failure_does_not_stop_other_charts(box):
    box.write("a.ps", GOOD)
    box.write("b.ps", "%!\nnonsense\n")
    box.write("c.ps", GOOD)
    box.assert_failed(box.run_program("crv2pdf", "a.ps", "nowhere.ps", "b.ps", "c.ps"), 1,
                      "crv2pdf: nowhere.ps: no such file",
                      "crv2pdf: b.ps: PostScript error: /undefined in nonsense")
    box.assertEqual(box.names(), ["a.pdf", "a.ps", "b.ps", "c.pdf", "c.ps", "run1.req"])


def test_failure_keeps_old_picture(box):
    box.write("a.ps", "%!\nnonsense\n")
    box.write("a.png", b"yesterday's")
    box.assertEqual(box.run_program("crv2png", "a.ps").status, 1)
    box.assertEqual(box.read("a.png"), b"yesterday's")


def test_unwritable_picture_is_reported(box):
    box.write("a.ps", GOOD)
    box.path("a.png").mkdir()
    box.assert_failed(box.run_program("crv2png", "a.ps"), 1, "crv2png: a.png: is a folder")
    box.assertEqual(box.names("a.png"), [])
    for name in ("nowhere/b.png", "/proc/b.png"):
        box.assert_failed(box.run_program("crv2png", "a.ps", name), 1,
                          f"crv2png: {name}: cannot be written in that folder")


def test_incomplete_picture_is_removed(box):
    box.draw_chart()
    before = box.names()
    for suffix in SUFFIXES:  # the chart is below the limit, the files that are made of it are not
        command = f"trap '' XFSZ; ulimit -f 3; exec crv2{suffix} crv.ps"
        result = box.run_program("bash", "-c", command)
        box.assertEqual(result.status, 1, suffix)
        box.assertIn(f"crv2{suffix}: crv.ps: ", result.stderr)
        box.assertEqual(box.names(), before, suffix)


def test_interrupt_leaves_no_file(box):
    box.write("a.ps", "%!\n{} loop\n")
    before = box.names()
    child = box.start("crv2png", "a.ps", start_new_session=True, stderr=subprocess.DEVNULL)
    while not any(box.path(f"{name}/log").exists() for name in box.names()):  # gs has begun
        box.assertIsNone(child.poll())
        time.sleep(0.01)
    os.killpg(child.pid, signal.SIGTERM)
    box.assertEqual(box.finish(child).status, 143)
    box.assertEqual(box.names(), before)


def test_wrong_arguments_make_no_file(box):
    box.write("a.ps", GOOD)
    no_number = "the dots per inch are a number from 10 to 1200"
    no_chart = "is the name of a picture, which stands behind one chart that ends in .ps"
    for complaint, *arguments in (
            ("-x: no such option, -h shows them; of a chart: crv2png -- NAME", "-x", "a.ps"),
            ("--nonsense: no such option, -h shows them", "--nonsense", "a.ps"),
            ("-r: needs a number", "-r"),
            (f"9: {no_number}", "-r", "9", "a.ps"),
            (f"1201: {no_number}", "-r", "1201", "a.ps"),
            (f"1e2: {no_number}", "-r", "1e2", "a.ps"),
            (f"a.png: {no_chart}", "a.png"),
            (f"a.png: {no_chart}", "a.png", "b.png"),
            (f"b.png: {no_chart}", "a.ps", "a.ps", "b.png")):
        box.assert_failed(box.run_program("crv2png", *arguments), 2, f"crv2png: {complaint}")
    box.assert_failed(box.run_program("crv2pdf", "-r", "110", "a.ps"), 2,
                      "crv2pdf: -r: only crv2png has dots")
    box.assertEqual(box.names(), ["a.ps", "run1.req"])


def test_limits_of_dots_are_accepted(box):
    for dots in ("10", "99", "100", "999", "1000", "1199", "1200"):  # 1, not 2: opens the chart
        box.assert_failed(box.run_program("crv2png", "-r", dots, "a.ps"), 1,
                          "crv2png: a.ps: no such file")


def test_help_is_printed(box):
    """With status 2 and on standard error where a chart is missing."""
    for suffix in SUFFIXES:
        for word in ("-h", "--help"):
            result = box.run_program(f"crv2{suffix}", word)
            box.assertEqual((result.status, result.stderr), (0, ""))
            box.assertTrue(result.stdout.startswith(f"usage: crv2{suffix} "), result.stdout)
            box.assertTrue(result.stdout.endswith(HELP_ENDS))
            box.assertEqual("-r DPI" in result.stdout, suffix == "png")
        box.assertEqual(box.run_program(f"crv2{suffix}"), ("", result.stdout, 2))


def test_control_characters_are_replaced(box):
    box.assert_failed(box.run_program("crv2png", "a\x1b[31m\nb.ps"), 1,
                      "crv2png: a?[31m?b.ps: no such file")


def test_missing_program_is_named(box):
    box.write("a.ps", GOOD)
    few = box.bin / "few"
    few.mkdir()
    for tool in "sh cat tr rm sed mktemp mv dd tail grep head".split():
        (few / tool).symlink_to(f"/usr/bin/{tool}")
    for suffix in SUFFIXES:
        result = box.run_program(box.bin / f"crv2{suffix}", "a.ps", PATH=str(few))
        box.assert_failed(result, 2, f"crv2{suffix}: gs: not found, please install Ghostscript")
    (few / "gs").symlink_to("/usr/bin/gs")
    box.assert_failed(box.run_program(box.bin / "crv2svg", "a.ps", PATH=str(few)), 2,
                      "crv2svg: pdftocairo: not found, please install the poppler utilities")
    box.assertEqual(box.names(), ["a.ps", "run1.req"])
    box.assertEqual(box.run_program(box.bin / "crv2pdf", "a.ps", PATH=str(few)), ("", "", 0))


def test_wrong_name_of_companion_is_reported(box):
    box.assert_failed(box.run_program(COMPANIONS / "crv2picture", "a.ps"), 2,
                      "crv2picture: crv2picture: call it as crv2pdf, crv2png or crv2svg")


def test_failing_companion_keeps_exit_status(box):
    result = box.draw_chart(name="chart.pdf", chain="crv2pdf")
    box.assertEqual(result.stderr, "crv2pdf: chart.pdf: is the name of a picture, which stands "
                                   "behind one chart that ends in .ps\n")
    box.assertIn("fini, ", result.stdout)


main()
