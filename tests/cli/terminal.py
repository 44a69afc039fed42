#!/usr/bin/env python3
"""Interactive runs on a pseudo-terminal: a prompt is shown before its answer is read, and both
streams keep their order."""
from harness import VOILA, main
from support.terminal import Terminal  # noqa: E402

PATIENCE = 10.0
LISTINGS = ("crv_temp.tmp", "utl_temp.tmp")
SELECT = "Select file to be processed? 1, 2, 3, ...: "


def converse(box, arguments, *turns):
    """Each turn is a prompt at the end of the screen and the keys to type then. Returns what the
    screen shows at the end, and the exit status."""
    for name in ("a.req", "b.req"):
        box.write(name, "\ntitle\n0\n1\n2\n")
    terminal = Terminal(["crv", *arguments], box.dir, box.environment | {"CRV_PRINTCHAIN": ":"})
    for prompt, keys in turns:
        shown = terminal.read_until(lambda: terminal.text().endswith(prompt), PATIENCE)
        box.assertTrue(shown, f"{prompt!r} ends the screen: {terminal.text()!r}")
        gone = terminal.read_until(lambda: not set(LISTINGS) & set(box.names()), PATIENCE)
        box.assertTrue(gone, "the temporary listing is removed before the answer")
        terminal.type(keys)
    status = terminal.finish()
    return terminal.text(), status


def test_title(box):
    prompt = "Enter Major title: "
    box.expect("run", converse(box, ["-w", "x", "-t"], (prompt, "A title\n")),
               (f'%crv_05-i-fil, File to write = "x" \n{prompt}A title\n{VOILA}', 0))


def test_one_file(box):
    box.expect("run", converse(box, ["-r", "0,0"], (SELECT, "2\n")),
               ('%crv_05-i-ids, Request ids   = "0,0" \n \n  1 --> a.req\n  2 --> b.req\n\n'
                f'{SELECT}2\n%crv_83-i-wor, Reading "b.req" ...\n'
                f"%crv_83-i-pts, file (b.req) has 2 steps\n{VOILA}", 0))


def test_end_of_input_selects_first_file(box):
    screen, _ = converse(box, ["-r", "0,0", "-f"], (SELECT, "\x04"))
    box.assertIn('File = "a.req"', screen)


def test_wrong_answer_is_reported(box):
    prompt = SELECT.replace("file", "file(s)")
    screen, _ = converse(box, ["-r", "0", "-fd"], (prompt, "x\n"))
    box.expect("end of the screen", screen.split(prompt)[-1],
               "x\n%crv_34-f-fil, Improper file selection, choose a numeric \n"
               "%crv_34-i-val, Selection = -10 through -1 \n")


def test_streams_keep_their_order(box):
    box.expect("run", converse(box, ["-yl", "early", "-r", "0,7", "-f", "a.req"]),
               ("%crv_05-e-lbl, First specify file prior to Y label\n"
                '%crv_05-i-ids, Request ids   = "0,7" \n'
                '%crv_05-i-fil, File to process = "a.req" \n'
                '%crv_83-i-wor, Reading "a.req" ...\n'
                '%crv_83-e-mis, Request "7" not found! \n', 1))


main()
