#!/usr/bin/env python3
"""Takes a picture of a page of curves in a browser.

    gallery_page.py PAGE PICTURE light|dark [KEY...]

Presses the keys, and moves the pointer to the time 0.6 of 3.
"""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests"))
from support.browser import Browser, find_browser  # noqa: E402  (found by the path above)


WIDTH = 760


def main():
    page, picture, scheme, *keys = sys.argv[1:]
    if not find_browser():
        sys.exit("gallery_page.py: not installed: chromium; scripts/setup.sh ci installs it")
    browser = Browser(WIDTH, 510)
    try:
        browser.set_dark(scheme == "dark")
        browser.open(page)
        for key in keys:
            browser.key(key)
        browser.move_to(100 + 0.2 * (WIDTH - 132), 320)  # the chart is 100 to WIDTH - 32
        pathlib.Path(picture).write_bytes(browser.screenshot())
        faults = browser.faults()
    finally:
        browser.close()
    if faults:
        sys.exit("\n".join(faults))


main()
