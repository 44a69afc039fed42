#!/usr/bin/env python3
"""Interactive runs on a pseudo-terminal, as a person sees them: each prompt is on the screen before the answer is read,
and what is printed stands in order."""
import argparse
import os
import pathlib
import pty
import select
import sys
import tempfile
import time

faults = []
PATIENCE = 10.0


def gone(folder):
    """Whether the temporary listings are removed without waiting for the answer."""
    end = time.monotonic() + PATIENCE
    while any(pathlib.Path(folder, name).exists() for name in ("crv_temp.tmp", "utl_temp.tmp")):
        if time.monotonic() > end:
            return False
        time.sleep(0.02)
    return True


def converse(crv, folder, arguments, turns):
    """Runs crv on a terminal; each turn waits for a prompt at the end of the screen and then types. Returns the screen
    with the terminal's line ends made plain, and the status."""
    child, terminal = pty.fork()
    if child == 0:
        os.chdir(folder)
        os.environ["CRV_PRINTCHAIN"] = ":"
        os.execv(crv, ["crv", *arguments])
    screen = ""

    def read_until(done):
        nonlocal screen
        end = time.monotonic() + PATIENCE
        while not done() and time.monotonic() < end:
            if select.select([terminal], [], [], 0.2)[0]:
                try:
                    data = os.read(terminal, 65536)
                except OSError:
                    data = b""
                if not data:
                    return
                screen += data.decode().replace("\r\n", "\n")

    for prompt, typed in turns:
        read_until(lambda: screen.endswith(prompt))
        if not screen.endswith(prompt):
            faults.append(f"{arguments}: no prompt {prompt!r} before the answer; the screen shows {screen!r}")
        if not gone(folder):
            faults.append(f"{arguments}: the temporary listing is there while the answer is awaited")
        os.write(terminal, typed.encode())
    read_until(lambda: False)
    _, status = os.waitpid(child, 0)
    os.close(terminal)
    return screen, os.waitstatus_to_exitcode(status)


def expect(name, got, wanted):
    if got != wanted:
        faults.append(f"{name}:\n  wanted {wanted!r}\n  got    {got!r}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--crv", required=True)
    crv = os.path.abspath(parser.parse_args().crv)
    with tempfile.TemporaryDirectory() as folder:
        for name in ("a.req", "b.req"):
            (pathlib.Path(folder) / name).write_text("\ntitle\n0\n1\n2\n")

        prompt = "Enter Major title: "
        screen, status = converse(crv, folder, ["-w", "x", "-t"], [(prompt, "A title\n")])
        expect("title", screen, '%crv_05-i-fil, File to write = "x" \n' + prompt + "A title\n\n%crv_01-i-fin, voila\n")
        expect("title status", status, 0)

        prompt = "Select file to be processed? 1, 2, 3, ...: "
        screen, status = converse(crv, folder, ["-r", "0,0"], [(prompt, "2\n")])
        expect("one file", screen, '%crv_05-i-ids, Request ids   = "0,0" \n \n  1 --> a.req\n  2 --> b.req\n\n' + prompt +
               '2\n%crv_83-i-wor, Reading "b.req" ...\n%crv_83-i-pts, file (b.req) has 2 steps\n\n%crv_01-i-fin, voila\n')
        expect("one file status", status, 0)

        screen, status = converse(crv, folder, ["-r", "0,0", "-f"], [(prompt, "\x04")])
        expect("the end of input picks the first", 'File = "a.req"' in screen, True)

        prompt = "Select file(s) to be processed? 1, 2, 3, ...: "
        screen, status = converse(crv, folder, ["-r", "0", "-fd"], [(prompt, "x\n")])
        expect("wrong answer", screen.split(prompt)[-1], "x\n%crv_34-f-fil, Improper file selection, choose a numeric \n"
               "%crv_34-i-val, Selection = -10 through -1 \n")

        screen, status = converse(crv, folder, ["-yl", "early", "-r", "0,7", "-f", "a.req"], [])
        expect("both streams in order", screen,
               "%crv_05-e-lbl, First specify file prior to Y label\n"
               '%crv_05-i-ids, Request ids   = "0,7" \n%crv_05-i-fil, File to process = "a.req" \n'
               '%crv_83-i-wor, Reading "a.req" ...\n%crv_83-e-mis, Request "7" not found! \n')
        expect("status of a missing request", status, 1)
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
