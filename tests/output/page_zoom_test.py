"""Zooming, moving and the size of the window."""
from browser_page import HUES, RUN, extremes, main


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


def test_narrow_window_shows_everything(box):
    box.browser.resize(390, 700, 2)
    box.show_run()
    box.assertLessEqual(box.js("document.documentElement.scrollWidth"), 390)
    box.assertGreater(box.panels()[0]["height"], 200)
    box.assertGreater(box.ink(HUES[2]), 300)


main()
