"""The CSV and the PNG that the page saves."""
import csv
import io
import math

from browser_page import HUES, RUN, columns_of, main, show_two_runs
from png_file import Picture


def test_csv_is_what_is_shown(box):
    box.path("saved").mkdir()
    box.browser.download_to(box.path("saved"))
    box.show_run()
    box.press("2")
    box.drag((0.5, None), (1.0, None))
    low, high = box.x_range()
    box.press("c")
    header, *rows = csv.reader(io.StringIO(box.saved(".csv").decode(), newline=""))
    box.assertEqual(header, ["Time (sec)", "Displ 38, Z", "Force 61, Z"])
    box.assertEqual([[float(cell) for cell in row] for row in rows],
                    [[row[0], row[1], row[3]] for row in RUN if low <= row[0] <= high])


def test_csv_of_two_runs_is_side_by_side(box):
    box.path("saved").mkdir()
    box.browser.download_to(box.path("saved"))
    box.write("a.pos", columns_of([("t", 'say "x", y'), (0, 1.5), (1, "nan"), (2, "-inf")]))
    box.write("b.pos", columns_of([("t", "v"), (0.5, -0.0), (1.5, 1e300)]))
    box.show("-r", "1,2", "-fp", "a.pos", "-yl1", 'say "x", y', "-r", "0,1,2", "-fp", "b.pos")
    box.press("c")
    rows = list(csv.reader(io.StringIO(box.saved(".csv").decode(), newline="")))
    box.assertEqual(rows[0][1], 'say "x", y')
    box.assertEqual([row[1] for row in rows[1:]], ["1.5", "nan", "-inf"])


def test_csv_of_two_runs_after_a_zoom(box):
    box.path("saved").mkdir()
    box.browser.download_to(box.path("saved"))
    show_two_runs(box)
    box.drag((0.5, None), (1.0, None))
    low, high = box.x_range()
    box.press("c")
    header, *rows = csv.reader(io.StringIO(box.saved(".csv").decode(), newline=""))
    box.assertEqual(header, ["Time (sec)", "Displ 38, Z (run1.req)", "Force 61, Z (run1.req)",
                             "Time (sec)_2", "Displ 38, Z (run2.req)", "Force 61, Z (run2.req)"])
    first, second = ([[row[0], row[1], row[3]] for row in run if low <= row[0] <= high]
                     for run in (RUN, RUN[:200:3]))
    box.assertTrue(0 < len(second) < len(first) < len(RUN))
    box.assertEqual([[float(cell) for cell in row[:3]] for row in rows], first)
    box.assertEqual([[float(cell) for cell in row[3:]] for row in rows[:len(second)]], second)
    box.assertEqual([row[3:] for row in rows[len(second):]],
                    [["", "", ""]] * (len(first) - len(second)))


def test_png_is_what_is_shown(box):
    box.path("saved").mkdir()
    box.browser.download_to(box.path("saved"))
    box.show_run()
    box.press("i")
    box.write("page.png", box.saved(".png"))
    picture = Picture(box.path("page.png"))
    size = box.js("[document.getElementById('plot').clientWidth, "
                  "document.getElementById('plot').clientHeight]")
    box.assertEqual(picture.size, (2 * size[0], 2 * (size[1] + 100)))
    for hue in HUES:
        box.assertTrue(picture.has(hue, 100, 50, 780, 300, 60))
        box.assertTrue(picture.has(hue, 60, picture.height / picture.scale - 90, 100,
                                   picture.height / picture.scale, 60))  # the legend


def test_png_leaves_out_hidden_series(box):
    box.path("saved").mkdir()
    box.browser.download_to(box.path("saved"))
    box.show_run()
    box.press("3", "i")
    box.write("page.png", box.saved(".png"))
    picture = Picture(box.path("page.png"))
    height = box.js("document.getElementById('plot').clientHeight")
    box.assertEqual(picture.height, 2 * (height + 80))
    pixels = list(picture.pixels(0, 0, 792, picture.height / picture.scale))
    box.assertEqual([sum(math.dist(pixel[:3], hue) < 20 for pixel in pixels) > 300 for hue in HUES],
                    [True, True, False])


main()
