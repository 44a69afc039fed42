#!/usr/bin/env python3
"""A file of more than 2 GiB is read to its end, by 32-bit programs too."""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from support import sandbox  # noqa: E402  (found by the path above)

LENGTH = (2 << 30) + (1 << 20)  # bytes of text before the data


def skip_without_kernel(box):
    try:
        box.crv("-h")
    except OSError as error:
        box.skipTest(f"this kernel does not run the program: {error}")


def test_text_of_more_than_2_gib_is_skipped(box):
    """The text is a hole in the file, which takes no space on the disk."""
    skip_without_kernel(box)
    with open(box.path("big.vdr"), "wb") as out:
        out.write(b"%T\n")
        out.seek(LENGTH)
        out.write(b"\n%N\n3\n%D\n1 10\n2 20\n3 30\n")
    box.expect_run("big.vdr", box.crv("-r", "0", "-fg", "big.vdr", "-w", "x"),
                   '%crv_05-i-ids, Request ids   = "0" \n'
                   '%crv_05-i-fil, File to process = "big.vdr" \n'
                   "%crv_85-i-dat, Vandor CRV_FRM_FILE data loaded, number of points = 3 \n"
                   '%crv_05-i-fil, File to write = "x" \n'
                   "\n%crv_01-i-fin, voila\n")


sandbox.main(sandbox.given("--crv"))
