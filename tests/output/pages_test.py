#!/usr/bin/env python3
# output/pages_test - looks at the PDF, PNG and SVG that the companions make: size, upright, the chart where it belongs.
import xml.etree.ElementTree as xml

import workbench
from png_file import Picture

RED, GREEN, BLUE, BLACK = (255, 0, 0), (0, 255, 0), (0, 0, 255), (0, 0, 0)


class Pages(workbench.Workbench):
    def look_at(self, picture):
        """The chart of the quarter car, the right way up: title above, frame, legend at the lower right, white margins."""
        self.assertGreater(picture.ink(330, 545, 540, 570), 300, "no title")
        self.assertGreater(picture.ink(170, 65, 280, 88), 300, "no X label")
        for left, bottom, right, top in ((133, 300, 137, 320), (733, 300, 737, 320), (400, 108, 420, 112), (400, 508, 420, 512)):
            self.assertTrue(picture.has(BLACK, left, bottom, right, top), f"no frame at {left} {bottom}")
        for colour, y in ((RED, 80), (GREEN, 65), (BLUE, 50)):
            self.assertTrue(picture.has(colour, 550, y - 3, 620, y + 3), f"no legend sample at {y}")
        self.assertTrue(picture.has(BLACK, 285, 465, 292, 470), "no first curve at its top")
        self.assertTrue(picture.has(BLUE, 260, 465, 270, 490), "no third curve at its top")
        for margin in ((0, 0, 792, 40), (0, 575, 792, 612), (0, 0, 70, 612), (760, 120, 792, 612)):
            self.assertEqual(picture.ink(*margin), 0, f"ink in the margin {margin}")

    def test_a_png_has_1210_by_935_pixels_and_shows_the_chart_upright(self):
        self.draw_chart()
        self.assert_done(self.run_program("crv2png", "crv.ps"))
        picture = Picture(self.folder / "crv.png")
        self.assertEqual((picture.width, picture.height), (1210, 935))
        self.look_at(picture)

    def test_dots_per_inch_make_the_png_larger_or_smaller(self):
        self.draw_chart()
        for dots, size in (("72", (792, 612)), ("144", (1584, 1224))):
            self.assert_done(self.run_program("crv2png", "-r", dots, "crv.ps"))
            picture = Picture(self.folder / "crv.png")
            self.assertEqual((picture.width, picture.height), size)
        self.look_at(picture)

    def test_a_pdf_is_one_letter_page_with_the_long_side_across_not_turned_by_the_viewer(self):
        self.draw_chart()
        self.assert_done(self.run_program("crv2pdf", "crv.ps"))
        told = dict(line.split(":", 1) for line in self.output_of("pdfinfo", "crv.pdf").splitlines())
        self.assertEqual([told[key].strip() for key in ("Pages", "Page size", "Page rot")], ["1", "792 x 612 pts (letter)", "0"])
        self.output_of("pdftocairo", "-png", "-r", "110", "-singlefile", "crv.pdf", "page")
        self.look_at(Picture(self.folder / "page.png"))

    def test_a_pdf_has_text_that_can_be_searched_and_its_fonts_inside(self):
        self.draw_chart()
        self.assert_done(self.run_program("crv2pdf", "crv.ps"))
        text = self.output_of("pdftotext", "crv.pdf", "-")
        self.assertIn("Quarter car over a bump", text)
        self.assertIn("Displ 38, Z", text)
        fonts = [line.split() for line in self.output_of("pdffonts", "crv.pdf").splitlines()[2:]]
        self.assertGreater(len(fonts), 1)
        self.assertEqual([font[-5] for font in fonts], ["yes"] * len(fonts), fonts)

    def test_an_svg_is_xml_with_the_view_box_of_the_page_and_shows_the_chart(self):
        self.draw_chart()
        self.assert_done(self.run_program("crv2svg", "crv.ps"))
        root = xml.parse(self.folder / "crv.svg").getroot()
        self.assertEqual(root.tag, "{http://www.w3.org/2000/svg}svg")
        self.assertEqual([float(number) for number in root.get("viewBox").split()], [0, 0, 792, 612])
        self.assertGreater(len(root.findall(".//{http://www.w3.org/2000/svg}path")), 50)
        self.output_of("rsvg-convert", "-b", "white", "-w", "1210", "-o", "page.png", "crv.svg")
        self.look_at(Picture(self.folder / "page.png"))

    def test_the_page_is_letter_whatever_paper_is_the_users_own(self):
        self.draw_chart()
        self.assert_done(self.run_program("crv2pdf", "crv.ps", GS_OPTIONS="-sPAPERSIZE=a4"))
        self.assertIn("792 x 612", self.output_of("pdfinfo", "crv.pdf"))

    def test_each_companion_serves_as_the_printer_command(self):
        for suffix in workbench.SUFFIXES:
            with self.subTest(suffix=suffix):
                done = self.draw_chart(name=f"by_{suffix}.ps", chain=f"crv2{suffix}")
                self.assertIn(f'Printer command = "crv2{suffix} by_{suffix}.ps"', done.stdout)
                self.assertEqual(done.stderr, "")
                self.assert_done(self.run_program(f"crv2{suffix}", f"by_{suffix}.ps", f"by_hand.{suffix}"))
                if suffix != "pdf":  # which holds its date
                    self.assertEqual((self.folder / f"by_{suffix}.{suffix}").read_bytes(),
                                     (self.folder / f"by_hand.{suffix}").read_bytes())
        self.draw_chart(name="large.ps", chain="crv2png -r 220")
        self.assertEqual(Picture(self.folder / "large.png").width, 2420)


if __name__ == "__main__":
    workbench.main()
