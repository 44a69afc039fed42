"""Values: what is read at the pointer, in the legend and at the marks, and what the page holds."""
import base64
import csv
import io
import math
import re
import struct

from browser_page import HUES, RUN, extremes, main, numbers


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


main()
