#!/usr/bin/env python3
"""Draws charts with Ghostscript at 72 dots per inch and checks where things are on the page.

Positions are in points on the landscape page, x from the left and y from the bottom.
"""
import pathlib
import sys

from png_file import BLACK, BLUE, GREEN, RED, Picture

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from support.sandbox import given, main  # noqa: E402  (found by the path above)

# The title is padded as in real files: a short one would have a newline, which is centred too.
REQUEST = f"""anything
{"Ramp and pulse":80}
3
10 1 0 0 0
20 4 0 0 0
30 4 0 0 0
"""
# time, then the three requests: a ramp, a pulse, a constant
STEPS = ((0, 0, 0, 30), (2, 20, 0, 30), (4, 40, 80, 30), (6, 60, 80, 30), (8, 80, 0, 30),
         (10, 100, 0, 30))
GREY = (77, 77, 77)


class Page(Picture):
    def near(self, x, y, colour, reach=1):
        """Whether a pixel of about this colour is within reach."""
        return self.has(colour, x - reach, y - reach, x + reach + 1, y + reach + 1, 60)


def ghostscript(box, page, *arguments):
    box.output_of("gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=png16m", "-r72",
                  "-dFIXEDMEDIA", f"-sOutputFile={page}", *arguments)


def draw(box, *arguments):
    """Runs crv and returns the page, turned so that the long side is horizontal."""
    box.write("a.req", REQUEST + "".join(f"{number}\n" for step in STEPS for number in step))
    result = box.crv(*arguments, "-f", "a.req", "-p", CRV_PRINTCHAIN=":")
    box.assertEqual(result.status, 1, result)
    ghostscript(box, "page.png", "-dDEVICEWIDTHPOINTS=792", "-dDEVICEHEIGHTPOINTS=612", "-c",
                "-90 rotate -612 0 translate", "-f", "crv.ps")
    return Page(box.path("page.png"))


def draw_whole(box):
    return draw(box, "-t", "A chart to look at", "-r", "0,10,20,30")


def frame_x(time):
    return round(135 + time / 10 * 600)


def frame_y(value):
    return round(110 + value / 100 * 400)


def expect_ticks(box, page, inside, outside, where):
    box.assertTrue(page.ink(*inside) and not page.ink(*outside), f"tick at the {where}")


def test_frame_and_grid(box):
    page = draw_whole(box)
    box.assertEqual(page.size, (792, 612))
    for x, y in ((135, 110), (735, 110), (135, 510), (735, 510), (435, 510), (700, 110),
                 (135, 250), (735, 250)):
        box.assertTrue(page.near(x, y, BLACK), f"no frame at {x} {y}")
    for x in (285, 435, 585):
        box.assertTrue(page.near(x, 490, GREY), f"no grid line at x {x}")
    for y in (210, 310, 410):
        box.assertTrue(page.near(150, y, GREY), f"no grid line at y {y}")
    # ticks: 6 points long on the bottom and top edges, 4 on the left and right ones
    for x in (165, 195, 705):
        expect_ticks(box, page, (x - 1, 112, x + 2, 115), (x - 2, 118, x + 3, 121), f"bottom, {x}")
        expect_ticks(box, page, (x - 1, 505, x + 2, 508), (x - 2, 499, x + 3, 502), f"top, {x}")
    for y in (130, 150, 490):
        expect_ticks(box, page, (137, y - 1, 139, y + 2), (141, y - 1, 144, y + 2), f"left, {y}")
        expect_ticks(box, page, (731, y - 1, 733, y + 2), (726, y - 1, 729, y + 2), f"right, {y}")
    # the frame line is 2 points wide
    for x, y in ((132, 300), (138, 300), (732, 300), (738, 300)):
        box.assertFalse(page.near(x, y, BLACK), f"the frame is off at {x} {y}")
    for x, y in ((180, 107), (180, 113), (180, 507), (180, 513)):
        box.assertFalse(page.near(x, y, BLACK, 0), f"the frame is off at {x} {y}")


def test_curves(box):
    """A black ramp in the style of crv_line_1, a dashed green pulse, a blue constant."""
    page = draw_whole(box)
    box.assertTrue(page.near(585, 80, RED), "the first legend sample is not red")
    for time in (1, 3, 5, 7, 9):
        box.assertTrue(page.near(frame_x(time), frame_y(10 * time), BLACK), f"ramp at {time}")
    pulse = page.pixels(frame_x(4), frame_y(80) - 1, frame_x(6), frame_y(80) + 1)
    greens = sum(pixel[1] > 150 and pixel[0] < 120 and pixel[2] < 120 for pixel in pulse)
    box.assertTrue(20 < greens < 110, f"no dashed green pulse: {greens} of 240 points")
    blues = sum(page.near(x, frame_y(30), BLUE) for x in range(150, 730, 4))
    box.assertGreater(blues, 40, "places of 145 where the constant is blue")
    for y, colour in ((65, GREEN), (50, BLUE)):
        box.assertTrue(any(page.near(x, y, colour) for x in range(546, 624)), f"legend at y {y}")


def middle(page, bottom, top):
    """The middle of the ink between two heights, across the whole page."""
    inked = [x for x in range(page.width) if page.ink(x, bottom, x + 1, top)]
    return (inked[0] + inked[-1]) / 2 if inked else 0


def test_texts(box):
    page = draw_whole(box)
    box.assertLess(abs(middle(page, 548, 568) - 435), 4, "the title is not centred on 435")
    box.assertLess(abs(middle(page, 528, 541) - 435), 4, "the subtitle is not centred on 435")
    for blank in ((0, 569, 792, 612), (0, 543, 792, 545)):
        box.assertEqual(page.ink(*blank), 0, "title or subtitle at another height")
    box.assertGreater(page.ink(170, 65, 280, 88), 50, "no X label at 175 70")
    for x in (127, 277, 427, 577, 727):
        box.assertGreater(page.ink(x, 94, x + 40, 104), 5, f"no X number at {x}")
    for y in (106, 206, 306, 406, 506):
        box.assertGreater(page.ink(75, y - 1, 125, y + 10), 5, f"no Y number at {y}")
    for y in (80, 65, 50):
        box.assertGreater(page.ink(635, y - 2, 720, y + 9), 20, f"no legend label at y {y}")
        box.assertEqual(page.ink(627, y - 4, 635, y + 9), 0, f"label at y {y} begins too far left")
        box.assertEqual(page.ink(536, y - 2, 544, y + 3), 0, f"sample at y {y} begins too far left")
    for edge in ((0, 0, 792, 40), (0, 575, 792, 612)):
        box.assertEqual(page.ink(*edge), 0, "ink at the edge of the page")
    box.assertEqual(page.ink(740, 112, 792, 500), 0, "ink right of the frame")


def test_portrait_page(box):
    draw_whole(box)
    ghostscript(box, "portrait.png", "-sPAPERSIZE=letter", "crv.ps")
    page = Page(box.path("portrait.png"), 612)
    box.assertEqual(page.size, (612, 792))
    box.assertTrue(page.near(612 - 110, 435, BLACK, 2), "the chart is not turned by a quarter")


def test_curve_is_clipped(box):
    page = draw(box, "-r", "0,10,20", "-y", "0:50", "-x", "0:8")
    box.assertEqual(page.ink(140, 514, 700, 525), 0, "ink above the frame")
    box.assertEqual(page.ink(740, 112, 792, 500), 0, "ink right of the frame")
    box.assertTrue(page.near(135 + 150, 110 + 160, BLACK), "the clipped curve misses its points")


def test_grid_covers_curve(box):
    """A black curve is along the grid line at half height."""
    page = draw(box, "-r", "0,30", "-y", "0:60")
    box.assertTrue(any(60 < pixel[0] < 100 for pixel in page.pixels(360, 309, 361, 311)),
                   "the curve is over the grid")


main(given("--crv"))
