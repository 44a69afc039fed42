"""The page of crv-html in a real browser, for tests of what it shows and does.

Each test also fails on an error of a script, a message of the browser and a request to a network.
"""
import atexit
import json
import pathlib
import re
import sys
import time

from png_file import Picture

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from support import sandbox  # noqa: E402  (found by the path above)
from support.browser import Browser, find_browser  # noqa: E402

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


def show_two_runs(box):
    """The second run has every third of the first 200 steps."""
    lines = box.read("run1.req").decode().splitlines(keepends=True)
    steps = [lines[at:at + 8] for at in range(16, len(lines), 8)]
    box.write("run2.req", "".join(lines[:16] + sum(steps[:200:3], [])))
    box.show("-r", "0,38:3,61:3", "-f", "run1.req", "-f", "run2.req")


def main():
    """Runs the tests of the script, with the program that is its argument."""
    if not find_browser():
        sandbox.skip("not installed: chromium; scripts/setup.sh ci installs it")
    sandbox.main(sys.argv[1], Page)
