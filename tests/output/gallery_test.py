#!/usr/bin/env python3
"""The gallery equals the output of its script.

The page has a checksum of each chart, so that any change of a chart is seen. Another version of
Ghostscript smooths lines and shapes letters a little differently. Pictures are compared by the
means of small squares, and some of these may differ. A line that is moved differs in many.
"""
import re

from png_file import Picture
from workbench import CRV, ROOT, main

DOCS = ROOT / "docs"
SQUARE = 8          # pixels
LARGEST_STEP = 12   # of 255, between the means of squares that count as alike
MOST_UNLIKE = 40    # squares of one picture
LARGEST_FILE = 60 * 1024
STALE = "is stale: run scripts/gallery.sh"
CAR = ("-t", "Quarter car over a bump")


def squares(path):
    """The size of a picture, and the mean red, green and blue of each square."""
    picture = Picture(path)
    means = []
    for top in range(0, picture.height - SQUARE + 1, SQUARE):
        rows = picture.rows[top:top + SQUARE]
        for left in range(0, (picture.width - SQUARE + 1) * 3, SQUARE * 3):
            pieces = [row[left:left + SQUARE * 3] for row in rows]
            means.append([sum(sum(piece[colour::3]) for piece in pieces) / SQUARE ** 2
                          for colour in range(3)])
    return picture.size, means


def unlike(one, other):
    """The number of squares that differ in two pictures."""
    if one[0] != other[0]:
        return len(one[1])
    return sum(max(abs(a - b) for a, b in zip(*pair)) > LARGEST_STEP
               for pair in zip(one[1], other[1]))


def test_gallery_is_up_to_date(box):
    result = box.run_program("bash", ROOT / "scripts/gallery.sh", box.path("docs"), CRV)
    box.assertEqual((result.status, result.stderr), (0, ""))
    page = (DOCS / "gallery.md").read_text()
    box.assertEqual(box.path("docs/gallery.md").read_text(), page, f"docs/gallery.md {STALE}")
    names = box.names("docs/gallery")
    box.assertEqual(names, box.names(DOCS / "gallery"))
    box.assertEqual(names, sorted(re.findall(r"\]\(gallery/(\w+\.png)\)", page)))
    for name in names:
        old, new = DOCS / "gallery" / name, box.path("docs/gallery") / name
        box.assertLess(old.stat().st_size, LARGEST_FILE, name)
        if old.read_bytes() != new.read_bytes():
            box.assertLessEqual(unlike(squares(old), squares(new)), MOST_UNLIKE,
                                f"docs/gallery/{name} {STALE}")


def test_readme_shows_picture_of_gallery(box):
    """The picture is below its command."""
    readme = (ROOT / "README.md").read_text()
    name = re.search(r"\]\(docs/(gallery/\w+\.png)\)", readme)[1]
    commands = re.search(rf"```sh\n([^`]*)\n```\n\n!\[[^]]*\]\({name}\)",
                         (DOCS / "gallery.md").read_text())[1]
    box.assertLess(readme.index(f"    {commands}\n"), readme.index(name))


def draw_squares(box, *options):
    box.crv(*CAR, *options, "-f", "run1.req", "-p", CRV_PRINTCHAIN="crv2png -r 80")
    return squares(box.path("crv.png"))


def test_comparison_ignores_smoothing_only(box):
    chart = draw_squares(box, "-r", "0,38:3,52:3,70:2")
    box.assertLessEqual(unlike(chart, squares(DOCS / "gallery/quarter_car.png")), MOST_UNLIKE)
    for what, *options in (("one curve less", "-r", "0,38:3,52:3"),
                           ("another curve", "-r", "0,38:3,52:3,70:3"),
                           ("curves in another order", "-r", "0,52:3,38:3,70:2"),
                           ("another range", "-r", "0,38:3,52:3,70:2", "-y", "-40:95")):
        box.assertGreater(unlike(chart, draw_squares(box, *options)), MOST_UNLIKE, what)
    draw_squares(box, "-r", "0,38:3,52:3,70:2")
    for way in ("-dTextAlphaBits=1", "-dTextAlphaBits=4 -dNOPLATFONTS -dDisableFAPI"):
        box.output_of("gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=png16m", "-r80",
                      *way.split(), "-dGraphicsAlphaBits=4", "-dDEVICEWIDTHPOINTS=792",
                      "-dDEVICEHEIGHTPOINTS=612", "-dFIXEDMEDIA", "-sOutputFile=other.png", "-c",
                      "-90 rotate -612 0 translate", "-f", "crv.ps")
        box.assertLessEqual(unlike(chart, squares(box.path("other.png"))), MOST_UNLIKE, way)


main()
