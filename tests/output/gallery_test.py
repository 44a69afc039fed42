#!/usr/bin/env python3
# output/gallery_test - the gallery is what its script makes of the examples today.
#
# The page holds a checksum of each chart, so that any change of a chart is seen. Another version of Ghostscript smooths lines
# and shapes letters a little differently: pictures are compared by the means of small squares, and some of these may
# differ. A line that is moved or missing differs in many.
import re

import workbench
from png_file import Picture

SQUARE = 8          # pixels
LARGEST_STEP = 12   # between the means of two squares that count as alike, of 255
MOST_UNLIKE = 40    # squares of one picture
LARGEST_FILE = 60 * 1024


def squares(path):
    """The mean red, green and blue of each square."""
    picture = Picture(path)
    means = []
    for top in range(0, picture.height - SQUARE + 1, SQUARE):
        rows = picture.rows[top:top + SQUARE]
        for left in range(0, (picture.width - SQUARE + 1) * 3, SQUARE * 3):
            pieces = [row[left:left + SQUARE * 3] for row in rows]
            means.append([sum(sum(piece[colour::3]) for piece in pieces) / SQUARE ** 2 for colour in range(3)])
    return picture.width, picture.height, means


def unlike(one, other):
    """How many squares of two pictures differ."""
    if one[:2] != other[:2]:
        return len(one[2])
    return sum(max(abs(a - b) for a, b in zip(*pair)) > LARGEST_STEP for pair in zip(one[2], other[2]))


class Gallery(workbench.Workbench):
    docs = workbench.ROOT / "docs"

    def test_page_and_pictures_are_those_that_the_script_makes(self):
        made = self.folder / "docs"
        done = self.run_program("bash", workbench.ROOT / "scripts/gallery.sh", made, workbench.CRV)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual((made / "gallery.md").read_text(), (self.docs / "gallery.md").read_text(),
                         "docs/gallery.md is stale: run scripts/gallery.sh")
        names = self.names(made / "gallery")
        self.assertEqual(names, self.names(self.docs / "gallery"))
        self.assertEqual(names, sorted(re.findall(r"\]\(gallery/(\w+\.png)\)", (self.docs / "gallery.md").read_text())))
        for name in names:
            kept, new = self.docs / "gallery" / name, made / "gallery" / name
            self.assertLess(kept.stat().st_size, LARGEST_FILE, name)
            if kept.read_bytes() == new.read_bytes():
                continue
            self.assertLessEqual(unlike(squares(kept), squares(new)), MOST_UNLIKE,
                                 f"docs/gallery/{name} is stale: run scripts/gallery.sh")

    def test_the_picture_of_the_readme_is_one_of_the_gallery_and_stands_under_its_command(self):
        readme = (workbench.ROOT / "README.md").read_text()
        name = re.search(r"\]\(docs/(gallery/\w+\.png)\)", readme)[1]
        commands = re.search(rf"```sh\n([^`]*)\n```\n\n!\[[^]]*\]\({name}\)", (self.docs / "gallery.md").read_text())[1]
        self.assertLess(readme.index(f"    {commands}\n"), readme.index(name))

    def draw_squares(self, *options):
        self.run_program("crv", *options, "-f", "run1.req", "-p", CRV_PRINTCHAIN="crv2png -r 80")
        return squares(self.folder / "crv.png")

    def test_the_comparison_sees_another_chart_and_passes_over_another_way_of_drawing(self):
        title = ("-t", "Quarter car over a bump")
        chart = self.draw_squares(*title, "-r", "0,38:3,52:3,70:2")
        self.assertLessEqual(unlike(chart, squares(self.docs / "gallery/quarter_car.png")), MOST_UNLIKE)
        others = {
            "one curve less": (*title, "-r", "0,38:3,52:3"),
            "another curve": (*title, "-r", "0,38:3,52:3,70:3"),
            "curves in another order": (*title, "-r", "0,52:3,38:3,70:2"),
            "another range": (*title, "-r", "0,38:3,52:3,70:2", "-y", "-40:95"),
        }
        for what, options in others.items():
            self.assertGreater(unlike(chart, self.draw_squares(*options)), MOST_UNLIKE, what)
        self.draw_squares(*title, "-r", "0,38:3,52:3,70:2")
        for way in (("-dTextAlphaBits=1",), ("-dTextAlphaBits=4", "-dNOPLATFONTS", "-dDisableFAPI")):
            self.output_of("gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=png16m", "-r80", *way,
                           "-dGraphicsAlphaBits=4", "-dDEVICEWIDTHPOINTS=792", "-dDEVICEHEIGHTPOINTS=612", "-dFIXEDMEDIA",
                           "-sOutputFile=other.png", "-c", "-90 rotate -612 0 translate", "-f", "crv.ps")
            self.assertLessEqual(unlike(chart, squares(self.folder / "other.png")), MOST_UNLIKE, way)


if __name__ == "__main__":
    workbench.main()
