"""Safety: hostile texts, the policy of the page, what the tests see of its faults."""
import os

from browser_page import HUES, main, sandbox

HOSTILE = "</script><script>hacked = 1</script><img src=x onerror=hacked=1>&amp;\"'\\"


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


def test_script_has_500_lines_at_most(box):
    script = (sandbox.ROOT / "src/page/page.js").read_text()
    box.assertLessEqual(len(script.splitlines()), 500)
    box.show_run()
    box.assertIn(script.strip(), box.read("page.html").decode())


main()
