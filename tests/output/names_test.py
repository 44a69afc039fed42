#!/usr/bin/env python3
"""Names of pictures, and names that a shell or Ghostscript would take for commands."""
import os

from png_file import Picture
from workbench import main

# Each would do harm, or be another file, if it reached a shell or Ghostscript unchanged.
NASTY = ["two words.ps", "Bob's \"run\".ps", "page%d.ps", "%03d.ps", "%pipe%touch harm.ps",
         "%stdout.ps", "|touch harm.ps", "-r.ps", "--help.ps", "-.ps", "$(touch harm).ps",
         "a;touch harm.ps", "back\\slash.ps", "@file.ps", "new\nline.ps", "*.ps", "Prüfstand.ps",
         "latin\udce9.ps", "-dNOSAFER.ps", "(unbalanced.ps", "chart.ps"]


def test_picture_is_beside_its_chart(box):
    box.draw_chart()
    charts = {"one.ps": "one.pdf", "TWO.PS": "TWO.pdf", "three": "three.pdf",
              "four.4": "four.4.pdf", "sub/five.ps": "sub/five.pdf", "sub.ps/six": "sub.ps/six.pdf"}
    for name in charts:
        box.write(name, box.read("crv.ps"))
    box.make("pdf", *charts)
    for name in charts.values():
        box.assertEqual(box.read(name)[:5], b"%PDF-", name)
    box.assertEqual(box.names("sub"), ["five.pdf", "five.ps"])


def test_second_name_can_be_picture(box):
    box.draw_chart()
    box.path("sub").mkdir()
    box.make("png", "crv.ps", "sub/other.PNG")
    box.assertEqual(Picture(box.path("sub/other.PNG")).width, 1210)
    box.assertEqual(box.names("sub"), ["other.PNG"])
    box.assertNotIn("crv.png", box.names())


def test_two_charts_make_two_pictures(box):
    box.draw_chart()
    box.write("other.ps", box.read("crv.ps"))
    box.make("svg", "crv.ps", "other.ps")
    box.assertEqual(box.names(), ["crv.ps", "crv.svg", "other.ps", "other.svg", "run1.req"])


def test_nasty_names_are_only_names(box):
    box.draw_chart("a.ps")
    chart = box.read("a.ps")
    box.dir = box.path("fol der\n%d 'q' |é")
    for name in NASTY:
        box.write(name, chart)
    box.make("png", "-r", "20", "--", *NASTY)
    pictures = [name[:-2] + "png" for name in NASTY]
    box.assertEqual(box.names(), sorted(NASTY + pictures))
    for picture in pictures:
        box.assertEqual(Picture(box.path(picture)).width, 220, picture)
    for name in NASTY:
        box.assertEqual(box.read(name), chart, name)


def test_nasty_pictures_are_only_names(box):
    box.draw_chart("a.ps")
    for suffix, options, names in (("png", ("-r", "20"), NASTY), ("pdf", (), NASTY[:7]),
                                   ("svg", (), NASTY[:7])):
        for name in names:
            picture = name[:-2] + suffix
            box.make(suffix, *options, "a.ps", picture)
            box.assertGreater(len(box.take(picture)), 1000)
    box.assertEqual(box.names(), ["a.ps", "run1.req"])


def test_nasty_directories_are_only_names(box):
    box.draw_chart("a.ps")
    for name in ("-d", "--help", "%d %pipe%x", "new\nline"):
        box.write(f"{name}/a.ps", box.read("a.ps"))
        box.make("png", "-r", "20", "--", f"{name}/a.ps")
        box.assertEqual(box.names(name), ["a.png", "a.ps"])


def test_double_dash_protects_chart_name(box):
    box.assertEqual(box.draw_chart(name="-q.ps", chain="crv2pdf --").stderr, "")
    box.assertEqual(box.read("-q.pdf")[:5], b"%PDF-")


def test_chart_can_come_from_pipe(box):
    box.draw_chart()
    box.assertEqual(box.shell("cat crv.ps | crv2pdf /dev/stdin piped.pdf"), ("", "", 0))
    box.assertEqual(box.names(), ["crv.ps", "piped.pdf", "run1.req"])


def test_new_picture_has_usual_permissions(box):
    box.draw_chart()
    box.write("crv.png", "old")
    box.assertEqual(box.shell("umask 027; crv2png crv.ps"), ("", "", 0))
    box.assertEqual(Picture(box.path("crv.png")).width, 1210)
    box.assertEqual(box.path("crv.png").stat().st_mode & 0o7777, 0o640)


def test_picture_does_not_overwrite_linked_chart(box):
    box.draw_chart()
    chart = box.read("crv.ps")
    box.path("soft.png").symlink_to("crv.ps")
    os.link(box.path("crv.ps"), box.path("hard.png"))
    for link in ("soft.png", "hard.png"):
        box.make("png", "crv.ps", link)
        box.assertEqual(Picture(box.path(link)).width, 1210)
        box.assertEqual(box.read("crv.ps"), chart)


def test_chart_named_pdf_is_unchanged(box):
    box.draw_chart(name="chart.pdf", chain="crv2pdf")
    box.assertEqual(box.read("chart.pdf")[:2], b"%!")
    box.assertEqual(box.names(), ["chart.pdf", "run1.req"])


main()
