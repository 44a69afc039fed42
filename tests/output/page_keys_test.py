"""The keys, their list, and the buttons."""
import json

from browser_page import HUES, RUN, columns_of, main, numbers


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


main()
