#!/usr/bin/env python3
"""Size, orientation and contents of the PDF, PNG and SVG that the companions make."""
import xml.etree.ElementTree as xml

from png_file import BLACK, BLUE, GREEN, RED, Picture
from workbench import SUFFIXES, main

SVG = "{http://www.w3.org/2000/svg}"


def expect_chart(box, picture):
    """The chart of the quarter car, upright: title on top, legend at the lower right."""
    box.assertGreater(picture.ink(330, 545, 540, 570), 300, "no title")
    box.assertGreater(picture.ink(170, 65, 280, 88), 300, "no X label")
    for frame in ((133, 300, 137, 320), (733, 300, 737, 320), (400, 108, 420, 112),
                  (400, 508, 420, 512)):
        box.assertTrue(picture.has(BLACK, *frame), f"no frame at {frame}")
    for colour, y in ((RED, 80), (GREEN, 65), (BLUE, 50)):
        box.assertTrue(picture.has(colour, 550, y - 3, 620, y + 3), f"no legend sample at {y}")
    box.assertTrue(picture.has(BLACK, 285, 465, 292, 470), "no first curve at its top")
    box.assertTrue(picture.has(BLUE, 260, 465, 270, 490), "no third curve at its top")
    for margin in ((0, 0, 792, 40), (0, 575, 792, 612), (0, 0, 70, 612), (760, 120, 792, 612)):
        box.assertEqual(picture.ink(*margin), 0, f"ink in the margin {margin}")


def test_png_shows_upright_chart(box):
    box.draw_chart()
    box.make("png", "crv.ps")
    picture = Picture(box.path("crv.png"))
    box.assertEqual(picture.size, (1210, 935))
    expect_chart(box, picture)


def test_dots_per_inch_set_png_size(box):
    box.draw_chart()
    for dots, size in (("72", (792, 612)), ("144", (1584, 1224))):
        box.make("png", "-r", dots, "crv.ps")
        picture = Picture(box.path("crv.png"))
        box.assertEqual(picture.size, size)
    expect_chart(box, picture)


def test_pdf_is_one_landscape_page(box):
    box.draw_chart()
    box.make("pdf", "crv.ps")
    lines = box.output_of("pdfinfo", "crv.pdf").splitlines()
    shown = {key: value.strip() for key, value in (line.split(":", 1) for line in lines)}
    box.assertEqual([shown[key] for key in ("Pages", "Page size", "Page rot")],
                    ["1", "792 x 612 pts (letter)", "0"])
    box.output_of("pdftocairo", "-png", "-r", "110", "-singlefile", "crv.pdf", "page")
    expect_chart(box, Picture(box.path("page.png")))


def test_pdf_has_text_and_fonts(box):
    box.draw_chart()
    box.make("pdf", "crv.ps")
    box.assert_prints("Quarter car over a bump", "pdftotext", "crv.pdf", "-")
    box.assert_prints("Displ 38, Z", "pdftotext", "crv.pdf", "-")
    fonts = [line.split() for line in box.output_of("pdffonts", "crv.pdf").splitlines()[2:]]
    box.assertGreater(len(fonts), 1)
    box.assertEqual([font[-5] for font in fonts], ["yes"] * len(fonts), fonts)


def test_svg_is_xml_of_page(box):
    box.draw_chart()
    box.make("svg", "crv.ps")
    root = xml.parse(box.path("crv.svg")).getroot()
    box.assertEqual(root.tag, SVG + "svg")
    box.assertEqual([float(number) for number in root.get("viewBox").split()], [0, 0, 792, 612])
    box.assertGreater(len(root.findall(f".//{SVG}path")), 50)
    box.output_of("rsvg-convert", "-b", "white", "-w", "1210", "-o", "page.png", "crv.svg")
    expect_chart(box, Picture(box.path("page.png")))


def test_paper_of_user_is_ignored(box):
    box.draw_chart()
    box.make("pdf", "crv.ps", GS_OPTIONS="-sPAPERSIZE=a4")
    box.assert_prints("792 x 612", "pdfinfo", "crv.pdf")


def test_companion_is_printer_command(box):
    for suffix in SUFFIXES:
        with box.subTest(suffix=suffix):
            result = box.draw_chart(name=f"by_{suffix}.ps", chain=f"crv2{suffix}")
            box.assertIn(f'Printer command = "crv2{suffix} by_{suffix}.ps"', result.stdout)
            box.assertEqual(result.stderr, "")
            box.make(suffix, f"by_{suffix}.ps", f"by_hand.{suffix}")
            if suffix != "pdf":  # which contains its date
                box.assertEqual(box.read(f"by_{suffix}.{suffix}"), box.read(f"by_hand.{suffix}"))
    box.draw_chart(name="large.ps", chain="crv2png -r 220")
    box.assertEqual(Picture(box.path("large.png")).width, 2420)


main()
