#!/usr/bin/env python3
"""Draws charts with Ghostscript and looks at the page: size, frame, grid, ticks, curves, legend and texts where they
belong, and nothing outside.

Positions are in points on the landscape page, x from the left and y from the bottom; at 72 dots per inch a point is a
pixel.
"""
import argparse
import os
import pathlib
import subprocess
import sys
import tempfile

# The title is padded as in real files: a short one would keep its line end, which takes room when it is centred.
REQUEST = f"""anything
{"Ramp and pulse":80}
3
10 1 0 0 0
20 4 0 0 0
30 4 0 0 0
"""
# time, then the three requests: a ramp, a pulse, a constant
STEPS = [(0, 0, 0, 30), (2, 20, 0, 30), (4, 40, 80, 30), (6, 60, 80, 30), (8, 80, 0, 30), (10, 100, 0, 30)]
RED, GREEN, BLUE, BLACK = (255, 0, 0), (0, 255, 0), (0, 0, 255), (0, 0, 0)

faults = []


def expect(condition, text):
    if not condition:
        faults.append(text)


class Page:
    def __init__(self, path):
        magic, rest = path.read_bytes().split(b"\n", 1)
        while rest.startswith(b"#"):
            rest = rest.split(b"\n", 1)[1]
        size, depth, self.pixels = rest.split(b"\n", 2)
        self.width, self.height = map(int, size.split())
        if magic != b"P6" or depth != b"255":
            sys.exit("Ghostscript wrote no picture that can be read")

    def at(self, x, y):
        start = 3 * ((self.height - 1 - y) * self.width + x)
        return tuple(self.pixels[start:start + 3])

    def near(self, x, y, wanted, reach=1):
        """Whether a pixel of about this colour is within reach."""
        return any(max(abs(a - b) for a, b in zip(self.at(x + dx, y + dy), wanted)) < 60
                   for dx in range(-reach, reach + 1) for dy in range(-reach, reach + 1))

    def ink(self, left, bottom, right, top):
        return sum(self.at(x, y) != (255, 255, 255) for x in range(left, right) for y in range(bottom, top))


def ghostscript(*arguments):
    subprocess.run(["gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=ppmraw", "-r72", *arguments], check=True)


def draw(crv, folder, *arguments):
    """Runs crv and returns the page, turned so that the long side lies across."""
    (folder / "a.req").write_text(REQUEST + "".join("".join(f"{n}\n" for n in step) for step in STEPS))
    done = subprocess.run([crv, *arguments, "-p"], cwd=folder, env={**os.environ, "CRV_PRINTCHAIN": ":"},
                          capture_output=True, text=True)
    if done.returncode != 1:
        sys.exit(f"crv ended with {done.returncode}: {done.stdout}{done.stderr}")
    ghostscript("-dDEVICEWIDTHPOINTS=792", "-dDEVICEHEIGHTPOINTS=612", "-dFIXEDMEDIA",
                f"-sOutputFile={folder / 'page.ppm'}", "-c", "-90 rotate -612 0 translate", "-f", str(folder / "crv.ps"))
    return Page(folder / "page.ppm")


def frame_x(time):
    return round(135 + time / 10 * 600)


def frame_y(value):
    return round(110 + value / 100 * 400)


def check_frame_and_grid(page):
    for x, y in ((135, 110), (735, 110), (135, 510), (735, 510), (435, 510), (700, 110), (135, 250), (735, 250)):
        expect(page.near(x, y, BLACK), f"no frame at {x} {y}")
    for x in (285, 435, 585):
        expect(page.near(x, 490, (77, 77, 77)), f"no grid line at x {x}")
    for y in (210, 310, 410):
        expect(page.near(150, y, (77, 77, 77)), f"no grid line at y {y}")
    # ticks: 6 points long on the bottom and top edges, 4 on the left and right ones
    for x in (165, 195, 705):
        expect(page.ink(x - 1, 112, x + 2, 115) and not page.ink(x - 2, 118, x + 3, 121), f"tick at the bottom, x {x}")
        expect(page.ink(x - 1, 505, x + 2, 508) and not page.ink(x - 2, 499, x + 3, 502), f"tick at the top, x {x}")
    for y in (130, 150, 490):
        expect(page.ink(137, y - 1, 139, y + 2) and not page.ink(141, y - 1, 144, y + 2), f"tick at the left, y {y}")
        expect(page.ink(731, y - 1, 733, y + 2) and not page.ink(726, y - 1, 729, y + 2), f"tick at the right, y {y}")
    # the frame line is 2 points wide and stands where it should
    for x, y in ((132, 300), (138, 300), (732, 300), (738, 300)):
        expect(not page.near(x, y, BLACK), f"the frame is off at {x} {y}")
    for x, y in ((180, 107), (180, 113), (180, 507), (180, 513)):
        expect(not page.near(x, y, BLACK, 0), f"the frame is off at {x} {y}")


def check_curves(page):
    # The first curve: its legend sample is red, its line goes through the points of the ramp in the style of crv_line_1.
    expect(page.near(585, 80, RED), "the first legend sample is not red")
    for time in (1, 3, 5, 7, 9):
        expect(page.near(frame_x(time), frame_y(10 * time), BLACK), f"the first curve misses time {time}")
    # The second, dashed and green, goes up, along and down.
    row = [page.at(x, frame_y(80) + dy) for x in range(frame_x(4), frame_x(6)) for dy in (-1, 0)]
    greens = sum(pixel[1] > 150 and pixel[0] < 120 and pixel[2] < 120 for pixel in row)
    expect(20 < greens < 110, f"the second curve is not a dashed green line: {greens} of 120 points")
    # The third is a blue line across the frame.
    blues = sum(page.near(x, frame_y(30), BLUE, 1) for x in range(150, 730, 4))
    expect(blues > 40, f"the third curve is not blue: {blues} of 145 places")
    for y, colour in ((65, GREEN), (50, BLUE)):
        expect(any(page.near(x, y, colour, 1) for x in range(546, 624)), f"no legend sample at y {y}")


def middle(page, bottom, top):
    """The middle of the ink between two heights, all across the page."""
    inked = [x for x in range(page.width) if page.ink(x, bottom, x + 1, top)]
    return (inked[0] + inked[-1]) / 2 if inked else 0


def check_texts(page):
    expect(abs(middle(page, 548, 568) - 435) < 4, "the title is not centred on 435")
    expect(abs(middle(page, 528, 541) - 435) < 4, "the subtitle is not centred on 435")
    expect(page.ink(0, 569, 792, 612) == 0 and page.ink(0, 543, 792, 545) == 0, "title or subtitle at another height")
    expect(page.ink(170, 65, 280, 88) > 50, "no X label at 175 70")
    for x in (127, 277, 427, 577, 727):
        expect(page.ink(x, 94, x + 40, 104) > 5, f"no X number at {x}")
    for y in (106, 206, 306, 406, 506):
        expect(page.ink(75, y - 1, 125, y + 10) > 5, f"no Y number at {y}")
    for y in (80, 65, 50):
        expect(page.ink(635, y - 2, 720, y + 9) > 20, f"no legend label at y {y}")
        expect(page.ink(627, y - 4, 635, y + 9) == 0, f"the legend label at y {y} begins too far left")
        expect(page.ink(536, y - 2, 544, y + 3) == 0, f"the legend sample at y {y} begins too far left")
    expect(page.ink(0, 0, 792, 40) == 0 and page.ink(0, 575, 792, 612) == 0, "ink at the edge of the page")
    expect(page.ink(740, 112, 792, 500) == 0, "ink right of the frame")


def check_ink_inside(page):
    """A curve that leaves the ranges is clipped."""
    expect(page.ink(140, 514, 700, 525) == 0, "ink above the frame")
    expect(page.ink(740, 112, 792, 500) == 0, "ink right of the frame")


def check_grid_over_curves(page):
    """A black curve along the grid line at half height is covered by the grey line."""
    grey = [pixel for pixel in (page.at(360, 309), page.at(360, 310)) if 60 < pixel[0] < 100]
    expect(grey, "the curve lies over the grid")


def check_portrait_page(folder):
    ghostscript(f"-sOutputFile={folder / 'portrait.ppm'}", "-sPAPERSIZE=letter", "-dFIXEDMEDIA", str(folder / "crv.ps"))
    page = Page(folder / "portrait.ppm")
    expect((page.width, page.height) == (612, 792), f"the page is {page.width} by {page.height}")
    expect(page.near(612 - 110, 435, BLACK, 2), "the chart is not turned by a quarter")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--crv", required=True)
    crv = os.path.abspath(parser.parse_args().crv)
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch)
        page = draw(crv, folder, "-t", "A chart to look at", "-r", "0,10,20,30", "-f", "a.req")
        expect((page.width, page.height) == (792, 612), f"the landscape page is {page.width} by {page.height}")
        check_frame_and_grid(page)
        check_curves(page)
        check_texts(page)
        check_portrait_page(folder)
        clipped = draw(crv, folder, "-r", "0,10,20", "-f", "a.req", "-y", "0:50", "-x", "0:8")
        check_ink_inside(clipped)
        expect(clipped.near(135 + 150, 110 + 160, BLACK), "the clipped curve misses its points")
        check_grid_over_curves(draw(crv, folder, "-r", "0,30", "-f", "a.req", "-y", "0:60"))
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
