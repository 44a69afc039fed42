"""How curves are drawn: hues, patterns, panels, gaps, loops, the dark page and the printed one."""
import json
import math

from browser_page import HUES, RUN, columns_of, extremes, main, numbers, show_two_runs
from png_file import Picture


def test_runs_of_different_steps_are_overlaid(box):
    show_two_runs(box)
    box.assertEqual(box.text("#legend b"),
                    ["Displ 38, Z (run1.req)", "Force 61, Z (run1.req)",
                     "Displ 38, Z (run2.req)", "Force 61, Z (run2.req)"])
    lines = box.js("Array.from(document.querySelectorAll('#legend line'), line => "
                   "[line.style.stroke, line.getAttribute('stroke-dasharray')])")
    box.assertEqual([hue for hue, _ in lines], ["var(--hue0)", "var(--hue1)"] * 2)
    box.assertEqual(lines[0][1], lines[1][1])
    box.assertEqual(lines[2][1], lines[3][1])
    box.assertNotEqual(lines[0][1], lines[2][1])
    box.browser.move_to(*box.place(RUN[61][0]))
    row, other = RUN[61], RUN[60]
    box.assertEqual([numbers(text) for text in box.values()],
                    [[row[1]], [row[3]], [other[1], other[0]], [other[3], other[0]]])
    data = json.loads(box.text("#view")[0])
    box.assertEqual([curve[:3] for curve in data["curves"]],
                    [[0, 1, 0], [0, 2, 0], [3, 4, 1], [3, 5, 1]])


def assert_hues_differ(box, count, least):
    """The first hues in the legend are far apart, stand out from the paper and are in the chart."""
    drawn = box.js("""(() => {
        const g = new OffscreenCanvas(1, 1).getContext("2d");
        const bytes = color => { g.fillStyle = color; g.fillRect(0, 0, 1, 1);
            return Array.from(g.getImageData(0, 0, 1, 1).data.slice(0, 3)); };
        return [getComputedStyle(document.body).backgroundColor, ...Array.from(
            document.querySelectorAll("#legend line"), line => getComputedStyle(line).stroke)]
            .map(bytes);
    })()""")
    paper, *hues = [tuple(color) for color in drawn[:count + 1]]
    box.assertEqual(len(hues), count)
    for k, hue in enumerate(hues):
        box.assertGreater(math.dist(hue, paper), 120, f"series {k + 1}")
        box.assertGreater(box.ink(hue, tolerance=4), 300, f"series {k + 1}")
        for other in hues[:k]:
            box.assertGreater(math.dist(hue, other), least, f"series {k + 1}")


def test_series_have_hues_of_their_own(box):
    for count, least in ((12, 40), (30, 12)):
        rows = [(k, *(10 * n + k % 2 for n in range(count))) for k in range(20)]
        names = [f"c{n}" for n in range(count + 1)]
        box.write("many.pos", columns_of([names, *rows]))
        box.show("-r", ",".join(str(n + 1) for n in range(count + 1)), "-fp", "many.pos")
        box.press("m")
        for dark in (False, True):
            box.browser.set_dark(dark)
            box.browser.draw_frame()
            assert_hues_differ(box, count, least)
        box.browser.set_dark(False)


def test_files_have_patterns_of_their_own(box):
    names = [f"run{k}.req" for k in range(9)]
    for name in names:
        box.copy_example("run1.req", name)
    box.show("-r", "0,38:3", *(word for name in names for word in ("-f", name)))
    dashes = box.js("Array.from(document.querySelectorAll('#legend line'), line => "
                    "line.getAttribute('stroke-dasharray'))")
    box.assertEqual(len(dashes), 9)
    box.assertEqual(len(set(dashes)), 9)


def test_pattern_of_a_file_is_drawn(box):
    """Also where points are denser than pixels."""
    for count in (1000, 100_000):
        box.write("a.pos", "t v\n" + "0 1\n" * count)
        box.write("b.pos", "t v\n" + "0 2\n" * count)
        box.show("-r", "0,2", "-fp", "a.pos", "-fp", "b.pos")
        box.press("m")
        p = box.panels()[0]
        first, second = (
            box.ink(HUES[0], (p["left"], box.place(0, y)[1] - 3, p["right"],
                              box.place(0, y)[1] + 3), 140) for y in (1, 2))
        box.assertGreater(first, 0.95 * p["width"], count)
        box.assertTrue(0.4 < second / first < 0.85, f"{count}: {second} of {first} pixels")


def test_run_without_time_is_drawn_over_the_first(box):
    box.copy_example("run1.req", "run2.req")
    box.show("-r", "0,38:3", "-f", "run1.req", "-r", "38:3", "-f", "run2.req")
    data = json.loads(box.text("#view")[0])
    box.assertEqual([curve[:3] for curve in data["curves"]], [[0, 1, 0], [0, 2, 1]])
    box.assertEqual(box.js("document.querySelectorAll('[data-column]').length"), 3)


def test_key_switches_to_one_panel_for_each_series(box):
    box.show_run()
    box.assertEqual(len(box.panels()), 1)
    box.press("p")
    panels = box.panels()
    box.assertEqual(len(panels), 3)
    for k, panel in enumerate(panels):
        low, _, high, _ = extremes(RUN, k + 1)
        box.assertTrue(panel["y0"] < low < high < panel["y1"])
        box.assertLess(panel["y1"] - panel["y0"], 1.7 * (high - low))
        area = (panel["left"], panel["top"], 1084, panel["top"] + panel["height"])
        box.assertEqual([box.ink(hue, area) > 300 for hue in HUES], [n == k for n in range(3)])
    box.browser.drag(box.place(0.5, 20, 1), box.place(1.0, 70, 1))
    box.assert_range(box.y_range(1), (20, 70))
    box.assertLess(box.y_range(2)[0], -2262)
    box.press("p")
    box.assertEqual(len(box.panels()), 1)
    box.assert_range(box.x_range(), (0.5, 1.0), 3)


def test_dark_follows_the_system(box):
    box.show_run()
    light = box.picture()
    box.browser.set_dark(True)
    dark = box.picture()
    for x, y in ((5, 5), (400, 300)):  # the page and the chart
        box.assertEqual(next(light.pixels(x, y, x + 1, y + 1)), (255, 255, 255))
        box.assertLess(max(next(dark.pixels(x, y, x + 1, y + 1))), 40)
    box.assertGreater(box.ink((78, 168, 222)), 300)


def test_print_has_ink(box):
    box.require("pdftoppm", "pdftotext")
    box.show_run()
    box.browser.set_dark(True)  # paper is white all the same
    box.write("page.pdf", box.browser.pdf())
    box.assertEqual(box.output_of("pdfinfo", "page.pdf").count("Pages:           1\n"), 1)
    text = box.output_of("pdftotext", "page.pdf", "-")
    for words in ("Quarter car", "Displ 38, Z", "min -32.692499915 at 1.17"):
        box.assertIn(words, text)
    box.output_of("pdftoppm", "-r", "72", "-png", "page.pdf", "page")
    paper = Picture(box.path("page-1.png"), 842)
    chart = list(paper.pixels(100, 100, 780, 400))
    for hue in HUES:
        count = sum(max(abs(a - b) for a, b in zip(pixel, hue)) < 110 for pixel in chart)
        box.assertGreater(count, 100)
    box.assertGreater(sum(min(pixel) > 250 for pixel in chart), len(chart) * 0.8)


def test_gaps_break_the_curve(box):
    rows = [(k, "nan" if k in (20, 21) else "inf" if k == 40 else 5) for k in range(60)]
    box.write("gaps.pos", "t v\n" + columns_of(rows))
    box.show("-r", "1,2", "-fp", "gaps.pos")
    box.assertEqual(box.text("#legend .gaps"), ["3 of 60 points not finite, not drawn"])
    box.press("m")
    for at, drawn in ((10.5, True), (19.5, False), (20.5, False), (21.5, False), (22.5, True),
                      (39.5, False), (40.5, False), (41.5, True)):
        box.assertEqual(box.ink_at(HUES[0], at, 5, 2) > 0, drawn, at)
    box.browser.move_to(*box.place(20))
    box.assertEqual(box.values(), ["nan"])


def test_gaps_break_a_dense_curve(box):
    rows = [(k, "nan" if 40000 <= k < 50000 else k % 2) for k in range(100000)]
    box.write("gaps.pos", "t v\n" + columns_of(rows))
    box.show("-r", "1,2", "-fp", "gaps.pos")
    p = box.panels()[0]
    for share in (0.2, 0.39, 0.405, 0.45, 0.495, 0.51, 0.8):
        a = p["left"] + share * p["width"]
        inside = box.ink(HUES[0], (a, p["top"], a + 2, p["top"] + p["height"]))
        box.assertEqual(inside > 100, not 0.4 <= share < 0.5, share)
        box.assertEqual(inside == 0, 0.4 <= share < 0.5, share)


def test_loop_is_drawn_as_it_is(box):
    circle = [(round(math.cos(k / 50 * math.pi), 9), round(math.sin(k / 50 * math.pi), 9))
              for k in range(76)]  # three quarters
    box.write("loop.pos", "x y\n" + columns_of(circle))
    box.show("-r", "1,2", "-fp", "loop.pos")
    box.press("m")
    for k in range(0, 75, 5):
        box.assertGreater(box.ink_at(HUES[0], *circle[k]), 0)
    box.assertEqual(box.ink_at(HUES[0], 0.5, -0.5), 0)  # no chord closes it
    for k in (10, 40, 70):
        a, b = box.place(*circle[k])
        box.browser.move_to(a + 1, b + 1)
        box.assertEqual([float(text) for text in box.values()], [circle[k][1]])
        box.assertEqual(numbers(box.text("#readout")[0]), [circle[k][0]])
    box.drag((-0.9, 0.2), (-0.4, 0.95))
    box.assert_range(box.x_range(), (-0.9, -0.4), 2)
    box.assertGreater(box.ink_at(HUES[0], *circle[35]), 0)


def test_dense_loop_is_drawn_as_it_is(box):
    """Three quarters of a circle, with more points than the chart has pixels."""
    angles = [k / 20_000 * math.pi for k in range(30_001)]
    box.write("loop.pos", "x y\n" + columns_of((math.cos(a), math.sin(a)) for a in angles))
    box.show("-r", "1,2", "-fp", "loop.pos")
    box.press("m")

    def inked(x, y):
        a, b = box.place(x, y)
        return box.ink(HUES[0], (a - 3, b - 3, a + 3, b + 3), 140) > 0  # the line is thin
    for angle in angles[1500::1500]:
        box.assertTrue(inked(math.cos(angle), math.sin(angle)), angle)
    for x, y in ((0, 0), (0.5, 0.2), (-0.5, 0.5), (0.5, -0.5)):
        box.assertFalse(inked(x, y), (x, y))


main()
