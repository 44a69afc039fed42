"""The page of crv-html in a real browser: drawing, zooming, reading values, keys, saving, printing.

Each test also fails on an error of a script, a message of the browser and a request to a network.
"""
import atexit
import base64
import csv
import io
import json
import math
import os
import pathlib
import re
import struct
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from support import sandbox  # noqa: E402  (found by the path above)
from support.browser import Browser, find_browser  # noqa: E402
from png_file import Picture  # noqa: E402

CRV, BUILD = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[3]).resolve()
HOSTILE = "</script><script>hacked = 1</script><img src=x onerror=hacked=1>&amp;\"'\\"
HUES = [(0, 114, 178), (213, 94, 0), (0, 143, 104)]  # of the first three series, in light


class Page(sandbox.Sandbox):
    """A page that crv-html has written and the browser shows."""
    browser = None

    def setUp(self):
        super().setUp()
        self.copy_example("run1.req")
        if Page.browser is None:
            Page.browser = Browser()
            atexit.register(Page.browser.close)
        self.browser.resize(1100, 650)
        self.browser.set_dark(False)

    def tearDown(self):
        self.assertEqual(self.browser.faults(), [])

    def show(self, *arguments):
        """Writes page.html and opens it."""
        result = self.run_program("crv-html", *arguments, "-p", "page.html")
        self.assertEqual((result.stdout, result.status), ("", 0), result.stderr)
        self.browser.open(self.path("page.html"))

    def show_run(self):
        self.show("-t", "Quarter car", "-r", "0,38:3,52:3,61:3", "-f", "run1.req")

    def js(self, expression):
        return self.browser.evaluate(expression)

    def text(self, selector):
        return self.js(f"Array.from(document.querySelectorAll({json.dumps(selector)}), "
                       "element => element.textContent)")

    def values(self):
        """What is read of each series."""
        return self.text("#legend .value")

    def panels(self):
        """The panels, in pixels of the window."""
        left, top = self.js("(r => [r.left, r.top])(document.getElementById('plot')"
                            ".getBoundingClientRect())")
        panels = json.loads(self.js("document.getElementById('plot').dataset.panels"))
        return [{**p, "left": p["left"] + left, "top": p["top"] + top} for p in panels]

    def x_range(self):
        return [self.panels()[0]["x0"], self.panels()[0]["x1"]]

    def y_range(self, panel=0):
        return [self.panels()[panel]["y0"], self.panels()[panel]["y1"]]

    def place(self, x, y=None, panel=0):
        """The pixel of a point; without y, the middle of the panel."""
        p = self.panels()[panel]
        share = 0.5 if y is None else (p["y1"] - y) / (p["y1"] - p["y0"])
        return (p["left"] + (x - p["x0"]) / (p["x1"] - p["x0"]) * p["width"],
                p["top"] + share * p["height"])

    def drag(self, begin, end, modifier=None):
        self.browser.drag(self.place(*begin), self.place(*end), modifier)

    def assert_range(self, got, expected, width=None):
        """A range from a drag is right to a pixel."""
        pixel = (width or expected[1] - expected[0]) / 900 * 1.5
        for bound, wanted in zip(got, expected):
            self.assertAlmostEqual(bound, wanted, delta=pixel)

    def picture(self):
        self.write("shot.png", self.browser.screenshot())
        return Picture(self.path("shot.png"))

    def ink(self, color, box=None, tolerance=45):
        """The number of pixels of about a color in the chart, in a box of the window."""
        left, top, right, bottom = box or (0, 0, 1e9, 1e9)
        return self.js(f"""(() => {{
            const canvas = document.getElementById("chart"), r = canvas.getBoundingClientRect();
            const scale = canvas.width / r.width;
            const clamp = (v, most) => Math.max(0, Math.min(most, v));
            const x = clamp(Math.round(({left} - r.left) * scale), canvas.width - 1);
            const y = clamp(Math.round(({top} - r.top) * scale), canvas.height - 1);
            const w = clamp(Math.round(({right} - {left}) * scale), canvas.width - x);
            const h = clamp(Math.round(({bottom} - {top}) * scale), canvas.height - y);
            const data = canvas.getContext("2d").getImageData(x, y, w || 1, h || 1).data;
            const near = (k, n) => Math.abs(data[k + n] - {list(color)}[n]) < {tolerance};
            let count = 0;
            for (let k = 0; k < data.length; k += 4)
                if (near(k, 0) && near(k, 1) && near(k, 2)) count++;
            return count;
        }})()""")

    def ink_at(self, color, x, y, reach=3):
        a, b = self.place(x, y)
        return self.ink(color, (a - reach, b - reach, a + reach, b + reach), 90)

    def saved(self, suffix):
        """The bytes of the file that the page saves, which is removed."""
        end = time.monotonic() + sandbox.TIME_LIMIT
        while time.monotonic() < end:
            done = [path for path in self.path("saved").glob("*" + suffix) if path.stat().st_size]
            if done:
                data = done[0].read_bytes()
                done[0].unlink()
                return data
            self.browser.draw_frame()
        raise AssertionError(f"no file {suffix} is saved")

    def press(self, *keys):
        for key in keys:
            self.browser.key(key)


def read_run():
    """Rows of the file itself: time, and item 3 of requests 38, 52 and 61."""
    lines = (sandbox.EXAMPLES / "run1.req").read_text().splitlines()[16:]
    steps = [[line.split() for line in lines[at:at + 8]] for at in range(0, len(lines), 8)]
    return [(float(step[0][0]), *(float(step[k][2]) for k in (1, 4, 5))) for step in steps]


RUN = read_run()


def extremes(rows, column):
    """The text of the legend, but as numbers: minimum, its time, maximum, its time."""
    low, high = (choose(rows, key=lambda row: row[column]) for choose in (min, max))
    return [low[column], low[0], high[column], high[0]]


def numbers(text):
    return [float(word) for word in re.findall(r"-?(?:\d[\d.e+-]*|nan|inf)", text)]


def columns_of(rows):
    """The text of a column file."""
    return "".join(" ".join(str(cell) for cell in row) + "\n" for row in rows)


def test_page_shows_all_series(box):
    box.show_run()
    box.assertEqual(box.js("document.title"), "Quarter car")
    box.assertEqual(box.text("#title") + box.text("#subtitle"),
                    ["Quarter car", "Quarter car over a bump at 5 m/s"])
    box.assertEqual(box.text("#legend b"), ["Displ 38, Z", "Displ 52, Z", "Force 61, Z"])
    box.assertEqual(box.x_range(), [0, 3])
    for hue in HUES:
        box.assertGreater(box.ink(hue), 300)
    for time, *values in RUN[55:100:5]:
        box.assertGreater(box.ink_at(HUES[2], time, values[2]), 0)


def test_titles_keep_their_blanks(box):
    box.show("-t", "Car   7", "-t2", "bump  at 5 m/s", "-r", "0,38:3", "-f", "run1.req")
    shown = box.js("['title', 'subtitle'].map(id => document.getElementById(id).innerText)")
    box.assertEqual(shown, ["Car   7", "bump  at 5 m/s"])
    box.assertEqual(box.js("document.title"), "Car 7")


def test_drag_zooms_and_double_click_shows_all(box):
    box.show_run()
    box.drag((0.5, None), (1.0, None))
    box.assert_range(box.x_range(), (0.5, 1.0), 3)
    inside = [row for row in RUN if box.x_range()[0] <= row[0] <= box.x_range()[1]]
    low, high = min(row[3] for row in inside), max(row[3] for row in inside)
    box.assertLess(box.y_range()[0], low)
    box.assertGreater(box.y_range()[1], high)
    box.assertLess(box.y_range()[1] - box.y_range()[0], 1.2 * (high - low))
    box.drag((0.8, -1000), (0.6, 1000))
    box.assert_range(box.x_range(), (0.6, 0.8), 0.5)
    box.assert_range(box.y_range(), (-1000, 1000), 10000)
    box.browser.click(*box.place(0.7), count=2)
    box.assertEqual(box.x_range(), [0, 3])
    box.assertLess(box.y_range()[0], -2262)


def test_zoom_between_two_points_keeps_segment(box):
    box.show_run()
    box.drag((0.52, None), (0.56, None))
    box.drag((0.5405, None), (0.5455, None))
    low, high = box.x_range()
    box.assertLess(high - low, 0.01)
    box.assertGreater(box.ink(HUES[2]), 100)


def test_shift_drag_moves(box):
    box.show_run()
    box.press("+")
    box.drag((1.5, None), (1.2, None), "shift")
    box.assert_range(box.x_range(), (1.05, 2.55), 1.5)
    box.drag((1.2, -200), (1.8, 400))  # fixes Y
    begin = box.y_range()
    box.assert_range(begin, (-200, 400), 1000)
    box.drag((1.5, -100), (1.5, 200), "shift")
    box.assert_range(box.y_range(), [bound - 300 for bound in begin], 1000)


def test_wheel_zooms_at_the_pointer(box):
    box.show_run()
    at = box.place(1.0)
    box.browser.wheel(*at, -100)
    low, high = box.x_range()
    box.assertAlmostEqual(high - low, 2.4, places=6)
    for got, wanted in zip(box.place(1.0), at):
        box.assertAlmostEqual(got, wanted, delta=1)
    box.browser.wheel(*at, 100)
    box.assertAlmostEqual(box.x_range()[1] - box.x_range()[0], 3, places=6)


def test_readout_equals_the_value_in_the_file(box):
    box.show_run()
    for row in RUN[58:300:40]:
        box.browser.move_to(*box.place(row[0]))
        box.assertEqual([float(text) for text in box.values()], list(row[1:]))
        box.assertEqual(numbers(box.text("#readout")[0]), [row[0]])
    spoken = "new Promise(done => setTimeout(() => done(document.getElementById('spoken')" \
             ".textContent), 400))"
    box.assertEqual(box.js("document.getElementById('spoken').ariaLive"), "polite")
    box.assertEqual(box.js(spoken), "Time (sec) {}; Displ 38, Z {}; Displ 52, Z {}; Force 61, Z {}"
                    .format(box.text("#readout")[0].split()[-1], *box.values()))
    box.press("Home", "ArrowRight")
    box.assertEqual(box.js(spoken), "Time (sec) {}; Displ 38, Z {}; Displ 52, Z {}; Force 61, Z {}"
                    .format(box.text("#readout")[0].split()[-1], *box.values()))
    box.assertNotEqual(box.values()[0], "")


def test_legend_shows_extremes_and_toggles(box):
    box.show_run()
    for k, text in enumerate(box.text("#legend .extremes")):
        box.assertEqual(numbers(text), extremes(RUN, k + 1))
    begin = box.ink(HUES[2])
    box.js("document.querySelectorAll('#legend button')[2].click()")
    box.browser.draw_frame()
    box.assertEqual(box.js("Array.from(document.querySelectorAll('#legend button'), "
                           "button => button.getAttribute('aria-pressed'))"),
                    ["true", "true", "false"])
    box.assertLess(box.ink(HUES[2]), begin / 20)
    box.assertLess(box.y_range()[1], 100)
    box.drag((0.5, None), (1.0, None))
    low, high = box.x_range()
    rows = [row for row in RUN if low <= row[0] <= high]
    box.assertEqual(numbers(box.text("#legend .extremes")[0]), extremes(rows, 1))


def test_marks_are_drawn_at_extremes(box):
    box.show("-r", "0,61:3", "-f", "run1.req")
    least, at_least, most, at_most = extremes(RUN, 3)
    corners = ((at_most, most, -6), (at_least, least, 6))  # within the triangles

    def marked():
        places = [(box.place(x, y), d) for x, y, d in corners]
        return [box.ink(HUES[0], (a - 3, b + d - 2, a + 3, b + d + 2)) for (a, b), d in places]
    box.assertTrue(all(count > 5 for count in marked()), marked())
    box.press("m")
    box.assertEqual(marked(), [0, 0])


# Counts the calls of a routine of canvases and keeps its first argument.
WATCH = """(name => {
    const real = CanvasRenderingContext2D.prototype[name];
    window.watched = [];
    CanvasRenderingContext2D.prototype[name] = function (...values) {
        watched.push(values[0]);
        return real.apply(this, values);
    };
})"""


def test_marks_have_value_and_time(box):
    for pair, column in (("38:3", 1), ("61:3", 3)):
        box.show("-r", f"0,{pair}", "-f", "run1.req")
        box.js(f"{WATCH}('fillText')")
        box.press("m")
        box.assertEqual([text for text in box.js("watched") if " at " in text], [])
        box.press("m")
        low, at_low, high, at_high = extremes(RUN, column)
        box.assertEqual({text for text in box.js("watched") if " at " in text},
                        {f"{low:.6g} at {at_low:.6g}", f"{high:.6g} at {at_high:.6g}"})


def test_keys_reach_every_view(box):
    box.show_run()
    box.press("+")
    box.assertEqual(box.x_range(), [0.75, 2.25])
    box.press("PageDown")
    box.assertEqual(box.x_range(), [1.5, 3])
    box.press("PageUp", "-")
    box.assertEqual(box.x_range(), [0, 3])
    low, high = box.y_range()
    box.press("y")
    box.assertAlmostEqual(box.y_range()[1] - box.y_range()[0], (high - low) / 2)
    box.press("ArrowUp")
    box.assertGreater(sum(box.y_range()), low + high)
    box.press("ArrowDown", "Y")
    box.assertAlmostEqual(box.y_range()[0], low, places=6)
    box.press("Home", "ArrowRight", "ArrowRight", "ArrowRight")
    box.assertEqual(numbers(box.text("#readout")[0]), [RUN[2][0]])
    box.assertEqual([float(text) for text in box.values()], list(RUN[2][1:]))
    box.press("ArrowLeft")
    box.assertEqual(numbers(box.text("#readout")[0]), [RUN[1][0]])
    box.browser.key("ArrowRight", "shift")
    box.assertGreater(numbers(box.text("#readout")[0])[0], 0.1)
    box.press("1", "3")
    box.assertEqual([text != "" for text in box.values()], [False, True, False])
    box.press("0")
    box.assertEqual([text != "" for text in box.values()], [True, True, True])
    box.press("Escape")
    box.assertEqual(box.values(), ["", "", ""])
    box.press("?")
    box.assertTrue(box.js("document.getElementById('keys').open"))
    box.press("1")
    box.press("Escape")
    box.assertFalse(box.js("document.getElementById('keys').open"))
    box.assertLess(box.y_range()[0], -2262)


# Whether the page takes a pressed key from the browser. A list of keys that this opens is
# closed again.
PRESS = """key => {
    const event = new KeyboardEvent("keydown", { key, cancelable: true, bubbles: true });
    document.dispatchEvent(event);
    document.getElementById("keys").close();
    return event.defaultPrevented;
}"""
NAMED_KEYS = ("Alt Backspace CapsLock Control Delete End Enter Escape F1 F5 Home Insert Meta Shift "
              "PageDown PageUp Tab ArrowDown ArrowLeft ArrowRight ArrowUp").split()


def test_list_names_all_keys(box):
    """The keys that the page obeys are those of its list, and "=", which is "+" without Shift."""
    box.path("saved").mkdir()
    box.browser.download_to(box.path("saved"))
    box.show_run()
    every = [chr(code) for code in range(32, 127)] + NAMED_KEYS
    obeyed = box.js(f"{json.dumps(every)}.filter({PRESS})")
    spelled = {"PageUp": "Page Up", "PageDown": "Page Down", "Escape": "Esc", "ArrowLeft": "\u2190",
               "ArrowRight": "\u2192", "ArrowUp": "\u2191", "ArrowDown": "\u2193"}
    listed = {*box.text("#keys kbd"), *"2345678"} - {"Shift"}  # 1 to 9; Shift changes the others
    box.assertEqual({spelled.get(key, key) for key in obeyed}, listed | {"="})
    box.saved(".csv")
    box.saved(".png")


def test_buttons_do_what_their_keys_do(box):
    box.path("saved").mkdir()
    box.browser.download_to(box.path("saved"))
    box.show_run()

    def click(name):
        box.browser.click(*box.js(
            "(r => [r.x + r.width / 2, r.y + r.height / 2])([...document.querySelectorAll("
            f"'nav button')].find(b => b.textContent === '{name}').getBoundingClientRect())"))
    box.press("+")
    click("All")
    box.assertEqual(box.x_range(), [0, 3])
    click("Panels")
    box.assertEqual(len(box.panels()), 3)
    click("Panels")
    before = box.ink(HUES[2])
    click("Marks")
    box.assertLess(box.ink(HUES[2]), before)
    click("CSV")
    box.assertEqual(box.saved(".csv").count(b"\n"), len(RUN) + 1)
    click("PNG")
    box.assertEqual(box.saved(".png")[:8], b"\x89PNG\r\n\x1a\n")
    click("Keys")
    box.assertTrue(box.js("document.getElementById('keys').open"))
    box.press("Escape")


def test_keyboard_toggles_series_beyond_the_ninth(box):
    box.write("many.pos", columns_of([[f"c{n}" for n in range(13)], *([k] * 13 for k in range(5))]))
    box.show("-r", ",".join(str(n + 1) for n in range(13)), "-fp", "many.pos")
    box.js("document.querySelectorAll('#legend button')[11].focus()")
    box.press(" ")
    pressed = box.js("Array.from(document.querySelectorAll('#legend button'), b => b.ariaPressed)")
    box.assertEqual(pressed, ["true"] * 11 + ["false"])


def show_two_runs(box):
    """The second run has every third of the first 200 steps."""
    lines = box.read("run1.req").decode().splitlines(keepends=True)
    steps = [lines[at:at + 8] for at in range(16, len(lines), 8)]
    box.write("run2.req", "".join(lines[:16] + sum(steps[:200:3], [])))
    box.show("-r", "0,38:3,61:3", "-f", "run1.req", "-f", "run2.req")


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


def column_values(box, page):
    """The columns of a page as texts of their bits, in the order of the page."""
    blocks = re.findall(r'<script type="text/plain" data-column="(\d+)">([^<]*)</script>',
                        box.read(page).decode())
    columns = {}
    for index, text in blocks:
        columns[int(index)] = columns.get(int(index), b"") + base64.b64decode(text)
    return [[column[k:k + 8][::-1].hex() for k in range(0, len(column), 8)]
            for _, column in sorted(columns.items())]


def test_page_takes_every_format_with_labels_and_windows(box):
    """The values are those of crv-csv to the last bit."""
    for name in ("sled.mad", "sensors.pos", "bumper.vdr"):
        box.copy_example(name)
    options = ["-tm", "0.5:1", "-r", "0,38:3", "-f", "run1.req", "-xl", "t (s)", "-yl", "Body",
               "-tm", "0:0.1", "-r", "0,1:1", "-fm", "sled.mad", "-yl2", "Sled",
               "-tm", "11:60", "-r", "0,2", "-fp", "sensors.pos", "-yl3", "Load",
               "-r", "0,1", "-fg", "bumper.vdr"]
    box.show(*options)
    box.assertEqual(box.text("#legend b"), ["Body", "Sled", "Load", "Force (kN)"])
    box.assertEqual(box.x_range(), [0, 60])
    header, *rows = csv.reader(io.StringIO(box.output_of("crv-csv", *options), newline=""))
    box.assertEqual((header[0], len(rows)), ("t (s)", 101))
    cells = [[struct.pack(">d", float(cell)).hex() for cell in column if cell]
             for column in zip(*rows)]
    box.assertEqual([len(column) for column in cells], [51, 51, 101, 101, 50, 50, 52, 52])
    box.expect("values", column_values(box, "page.html"), cells)


def test_page_without_a_name_is_crv_html(box):
    for last in ([], ["-p"]):
        result = box.run_program("crv-html", "-r", "0,38:3", "-f", "run1.req", *last)
        box.assertEqual((result.stdout, result.status), ("", 0))
        box.assertIn('Written: "crv.html"', result.stderr)
        box.assertIn(b"Displ 38, Z", box.take("crv.html"))


def test_script_has_500_lines_at_most(box):
    script = (sandbox.ROOT / "src/page/page.js").read_text()
    box.assertLessEqual(len(script.splitlines()), 500)
    box.show_run()
    box.assertIn(script.strip(), box.read("page.html").decode())


def test_million_rows(box):
    values = [(k / 10000, (k * 7919) % 1000, math.sin(k / 1e5) * 100, k % 5) for k in range(10**6)]
    box.write("big.pos", "a b c d\n" + "".join("%r %r %r %r\n" % row for row in values))
    box.show("-r", "1,2,3,4", "-fp", "big.pos")
    box.assertLessEqual(box.path("page.html").stat().st_size, 11 * 4 * 10**6)
    box.assertEqual(box.x_range(), [0, 99.9999])
    for k, text in enumerate(box.text("#legend .extremes")):
        box.assertEqual(numbers(text), extremes(values, k + 1))
    p = box.panels()[0]
    for share in range(1, 10):  # noise fills every column of pixels
        a = p["left"] + share / 10 * p["width"]
        top, bottom = box.place(0, 990)[1], box.place(0, 10)[1]
        box.assertGreater(box.ink(HUES[0], (a, top, a + 1, bottom)), 0.5 * (bottom - top))
    box.js(f"{WATCH}('lineTo')")
    box.press("m")
    columns = box.panels()[0]["width"] + 2  # those at the edges too; the rest is for the grid
    box.assertTrue(6 * columns < box.js("watched.length") < 3 * 4 * columns + 100)
    for _ in range(10):
        box.browser.wheel(*box.place(50), -100)
    low, high = box.x_range()
    inside = [row for row in values if low <= row[0] <= high]
    for k, text in enumerate(box.text("#legend .extremes")):
        box.assertEqual(numbers(text), extremes(inside, k + 1))
    for _ in range(30):
        box.browser.wheel(*box.place(50), -100)
    box.browser.move_to(*box.place(50))
    row = values[500000]
    box.assertEqual([float(text) for text in box.values()], list(row[1:]))


def test_column_of_several_blocks(box):
    count = 3 * 2**20 + 5
    box.write("long.pos", "a b\n" + "".join(f"{k} {k % 997}\n" for k in range(count)))
    box.show("-r", "1,2", "-fp", "long.pos")
    box.assertEqual(box.js("document.querySelectorAll('[data-column]').length"), 4)
    box.assertEqual(box.x_range(), [0, count - 1])
    box.press("Home", "ArrowRight")
    box.browser.move_to(*box.place(count - 1))
    box.assertEqual(numbers(box.text("#readout")[0]), [count - 1])
    box.assertEqual(box.values(), [str((count - 1) % 997)])


def test_hostile_texts_stay_texts(box):
    name = os.fsdecode(b"a\"'<b>&\x01\x1b\xff\n.req")
    shown = "a\"'<b>&\ufffd\ufffd\ufffd\ufffd.req"
    box.copy_example("run1.req", name)
    box.copy_example("run1.req", "c.req")
    label = b"\x01\x1b[31m\xff\xc3<b>\xe2\x80"
    box.show("-t", HOSTILE, "-t2", "<!--<script>", "-r", "0,38:3", "-f", name, "-yl1", label,
             "-r", "0,52:3", "-f", "c.req", "-r", "0,52:3", "-f", name)
    box.assertEqual(box.js("document.title"), HOSTILE)
    box.assertEqual(box.text("#title") + box.text("#subtitle"), [HOSTILE, "<!--<script>"])
    box.assertEqual(box.text("#legend b"), ["\ufffd\ufffd[31m\ufffd\ufffd<b>\ufffd\ufffd",
                                           "Displ 52, Z (c.req)", f"Displ 52, Z ({shown})"])
    box.assertEqual(box.js("typeof hacked"), "undefined")
    box.assertEqual(box.js("document.querySelectorAll('img:not(#paper)').length"), 0)
    box.assertGreater(box.ink(HUES[0]), 300)


def test_policy_blocks_scripts_and_requests(box):
    box.show_run()
    box.js("(() => { const script = document.createElement('script');"
           "script.textContent = 'hacked = 1'; document.body.append(script); })()")
    box.assertEqual(box.js("typeof hacked"), "undefined")
    box.assertEqual(box.js("fetch('https://example.org/').then(() => 'sent', () => 'blocked')"),
                    "blocked")
    box.assertTrue(any("Content Security Policy" in fault for fault in box.browser.faults()))
    box.browser.clear_events()


def test_faults_of_a_page_are_seen(box):
    """Those that no page of crv-html may have: the check after each test finds them."""
    for part, fault in (("<script>throw Error('thrown')</script>", "exceptionThrown"),
                        ("<script>console.error('told')</script>", "told"),
                        ("<img src='https://example.org/a.png'>", "request: https://example.org")):
        box.write("faulty.html", part)
        box.browser.open(box.path("faulty.html"))
        box.assertTrue(any(fault in seen for seen in box.browser.faults()), fault)
    box.browser.clear_events()


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


def test_ranges_of_the_command_line_set_the_view(box):
    box.show("-r", "0,38:3", "-f", "run1.req", "-x", "0.5:1", "-y", "-50:100")
    box.assertEqual((box.x_range(), box.y_range()), ([0.5, 1], [-50, 100]))
    box.press("Home")
    box.assertEqual(box.x_range(), [0, 3])


def test_y_range_of_the_command_line_holds_for_each_panel(box):
    box.show("-r", "0,38:3,52:3", "-f", "run1.req", "-y", "-50:100")
    box.press("p")
    box.assertEqual([box.y_range(0), box.y_range(1)], [[-50, 100], [-50, 100]])
    box.press("p")
    box.assertEqual(box.y_range(), [-50, 100])
    box.press("p", "Home")
    for k in (0, 1):
        low, _, high, _ = extremes(RUN, k + 1)
        box.assertTrue(box.y_range(k)[0] < low < high < box.y_range(k)[1])
        box.assertLess(box.y_range(k)[1] - box.y_range(k)[0], 1.7 * (high - low))


def test_touch_moves_zooms_and_reads(box):
    box.show_run()
    box.press("+")
    (a, b), (c, _) = box.place(1.5), box.place(1.2)
    box.browser.touch("touchStart", (a, b))
    box.browser.touch("touchMove", ((a + c) / 2, b))
    box.browser.touch("touchMove", (c, b))
    box.browser.touch("touchEnd")
    box.browser.draw_frame()
    box.assert_range(box.x_range(), (1.05, 2.55), 1.5)
    left, right = box.place(1.5), box.place(2.1)
    box.browser.touch("touchStart", left)
    box.browser.touch("touchStart", left, right)
    ends = (left[0] - 100, b), (right[0] + 100, b)
    for share in (0.5, 1):
        box.browser.touch("touchMove", *((x0 + share * (x1 - x0), b) for (x0, _), (x1, _)
                                         in zip((left, right), ends)))
    box.browser.touch("touchEnd")
    box.browser.draw_frame()
    for x, (pixel, _) in zip((1.5, 2.1), ends):
        box.assertAlmostEqual(box.place(x)[0], pixel, delta=2)
    a, b = box.place(RUN[180][0])
    box.browser.touch("touchStart", (a, b))
    box.browser.touch("touchEnd")
    box.browser.draw_frame()
    box.assertEqual([float(text) for text in box.values()], list(RUN[180][1:]))


def test_narrow_window_shows_everything(box):
    box.browser.resize(390, 700, 2)
    box.show_run()
    box.assertLessEqual(box.js("document.documentElement.scrollWidth"), 390)
    box.assertGreater(box.panels()[0]["height"], 200)
    box.assertGreater(box.ink(HUES[2]), 300)


if not find_browser():
    sandbox.skip("not installed: chromium; scripts/setup.sh ci installs it")
sandbox.main(CRV, Page)
