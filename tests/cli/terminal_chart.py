#!/usr/bin/env python3
"""crv-term on a pseudo-terminal: size, colours, locale; and its output without a terminal."""
import os
import re
import unicodedata

from harness import main
from support.terminal import Terminal  # noqa: E402

CHART = "crv-term -r 0,38:3,52:3 -f run1.req"
COLOR = re.compile(r"\x1b\[\d*m")
BRAILLE = re.compile("[\u2800-\u28ff]")


def show(box, columns=80, rows=24, command=CHART, **variables):
    """The lines of the picture on a terminal of this size, which has the locale C.UTF-8."""
    box.copy_example("run1.req")
    environment = box.environment | {"LC_ALL": "C.UTF-8"} | variables
    terminal = Terminal(["sh", "-c", f"{command} 2>messages"], box.dir, environment, columns, rows)
    box.expect("status", terminal.finish(), 0)
    return terminal.text().removesuffix("\n").split("\n")


def width(line):
    """The columns of a line without its colours."""
    text = COLOR.sub("", line)
    return sum(2 if unicodedata.east_asian_width(c) in "WF" else 1 for c in text)


def expect_size(box, lines, columns, rows):
    box.expect("number of lines", len(lines), rows)
    box.expect("width", max(map(width, lines)), columns)


def test_size_is_that_of_the_terminal(box):
    """The last row is left to the prompt."""
    for columns, rows in ((80, 24), (200, 50), (20, 7), (132, 43)):
        expect_size(box, show(box, columns, rows), columns, rows - 1)


def test_size_of_the_terminal_precedes_variables(box):
    expect_size(box, show(box, 100, 30, COLUMNS="50", LINES="20"), 100, 29)


def test_terminal_without_size_uses_variables(box):
    expect_size(box, show(box, 0, 0, COLUMNS="50", LINES="20"), 50, 20)
    expect_size(box, show(box, 0, 0), 80, 24)


def test_small_terminal_is_reported(box):
    box.copy_example("run1.req")
    for columns, rows in ((19, 24), (80, 6)):
        terminal = Terminal(["sh", "-c", f"{CHART} 2>messages"], box.dir, box.environment, columns,
                            rows)
        box.expect("status", terminal.finish(), 1)
        box.expect("screen", terminal.text(), "")
        box.expect("message", box.read("messages").decode().splitlines()[-1],
                   f"%crv_07-e-siz, {columns} columns and {rows - 1} rows are too few for a chart, "
                   "which needs 20 and 6")


def test_series_have_colors(box):
    screen = "\n".join(show(box))
    box.expect("colours", set(COLOR.findall(screen)), {"\x1b[94m", "\x1b[31m", "\x1b[0m"})
    legend = screen.split("\n")[-1]
    box.expect("legend", legend, "\x1b[94m⠤⠤⠤⠤⠤⠤\x1b[0m Displ 38, Z   "
                                 "\x1b[31m⠤⠤⠤⠤⠤⠤\x1b[0m Displ 52, Z")
    for line in screen.split("\n"):
        box.expect("end of the colour", COLOR.findall(line)[-1:] in ([], ["\x1b[0m"]), True)


def test_colors_cover_the_same_dots(box):
    """Both pictures have the same dots, except where the letters of the other one are."""
    colored = [COLOR.sub("", line) for line in show(box)]
    plain = show(box, NO_COLOR="1")
    box.expect("plot area", [re.sub("[AB]", "", line) for line in plain[1:-4]],
               [drop_dots_under_letters(line, other)
                for line, other in zip(colored[1:-4], plain[1:-4])])


def drop_dots_under_letters(line, lettered):
    return "".join(c for c, other in zip(line, lettered) if other not in "AB")


def test_no_color_switches_colors_off(box):
    for variables in ({"NO_COLOR": "1"}, {"NO_COLOR": "0"}, {"TERM": "dumb"}):
        box.expect(str(variables), COLOR.findall("".join(show(box, **variables))), [])
    box.assertTrue(COLOR.findall("".join(show(box, NO_COLOR=""))))


def test_other_locales_get_ascii(box):
    for locale in ("C", "POSIX", "de_DE.ISO-8859-1"):
        screen = COLOR.sub("", "".join(show(box, LC_ALL=locale)))
        box.assertTrue(screen.isascii(), locale)
        box.assertIn("*** Displ 38, Z", screen)
    for variables in ({"LC_ALL": "", "LC_CTYPE": "en_US.utf8", "LANG": "C"},
                      {"LC_ALL": "", "LANG": "en_US.UTF-8"}):
        box.assertTrue(BRAILLE.search("".join(show(box, **variables))), variables)


def test_output_to_file_is_plain(box):
    """Also that of -p on a terminal. Everything else goes to standard error."""
    box.copy_example("run1.req")
    box.environment["LC_ALL"] = "C.UTF-8"
    piped = box.run_program(*CHART.split())
    box.expect("status", piped.status, 0)
    expect_size(box, piped.stdout.removesuffix("\n").split("\n"), 80, 24)
    box.expect("colours", COLOR.findall(piped.stdout), [])
    box.expect("messages", piped.stderr, '%crv_83-i-wor, Reading "run1.req" ...\n'
                                         "%crv_83-i-pts, file (run1.req) has 301 steps\n")
    box.expect("screen", show(box, 100, 30, f"{CHART} -p chart.txt"), [""])
    box.expect("file", box.read("chart.txt").decode(), piped.stdout)


def test_p_without_name_prints_the_chart(box):
    box.expect("screen", show(box, command=f"{CHART} -p"), show(box))


def test_titles_cannot_control_the_terminal(box):
    lines = show(box, command=f"{CHART} -t \"$TITLE\" -yl \"$TITLE\"",
                 TITLE="\x1b[2J\x07\x9b31m\u202e\ud55c\t\x80")
    box.expect("title", lines[0].strip(), "\ufffd[2J\ufffd\ufffd31m\ud55c\ufffd\ufffd")
    box.expect("sequences", set(re.findall(r"[\x00-\x1f\x7f-\x9f]\[?\d*\w?", "\n".join(lines))),
               {"\n", "\x1b[94m", "\x1b[31m", "\x1b[0m"})


def test_full_disk_is_reported(box):
    if not os.path.exists("/dev/full"):
        box.skipTest("there is no /dev/full")
    box.copy_example("run1.req")
    result = box.shell(f"{CHART} > /dev/full")
    box.expect("status", result.status, 1)
    box.assertIn("_06-e-out, ", result.stderr)


main()
