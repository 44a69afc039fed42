#!/usr/bin/env python3
# output/names_test - which file becomes which, and names that are orders to a shell or to Ghostscript.
import os
import shutil
import stat

import workbench
from png_file import Picture

# Each would do harm, or be another file, if it reached a shell or Ghostscript as it stands.
NASTY = ["two words.ps", "Bob's \"run\".ps", "page%d.ps", "%03d.ps", "%pipe%touch harm.ps", "%stdout.ps", "|touch harm.ps",
         "-r.ps", "--help.ps", "-.ps", "$(touch harm).ps", "a;touch harm.ps", "back\\slash.ps", "@file.ps", "new\nline.ps",
         "*.ps", "Prüfstand.ps", "latin\udce9.ps", "-dNOSAFER.ps", "(unbalanced.ps", "chart.ps"]


class Names(workbench.Workbench):
    def test_a_picture_stands_beside_its_chart_under_its_name(self):
        self.draw_chart()
        for name in ("one.ps", "TWO.PS", "three", "four.4", "sub/five.ps", "sub.ps/six"):
            (self.folder / name).parent.mkdir(exist_ok=True)
            shutil.copy(self.folder / "crv.ps", self.folder / name)
        self.assert_done(self.run_program("crv2pdf", "one.ps", "TWO.PS", "three", "four.4", "sub/five.ps", "sub.ps/six"))
        for name in ("one.pdf", "TWO.pdf", "three.pdf", "four.4.pdf", "sub/five.pdf", "sub.ps/six.pdf"):
            self.assertEqual((self.folder / name).read_bytes()[:5], b"%PDF-", name)
        self.assertEqual(self.names(self.folder / "sub"), ["five.pdf", "five.ps"])

    def test_a_name_with_the_suffix_of_the_picture_behind_one_chart_is_the_picture(self):
        self.draw_chart()
        (self.folder / "sub").mkdir()
        self.assert_done(self.run_program("crv2png", "crv.ps", "sub/other.PNG"))
        self.assertEqual(Picture(self.folder / "sub/other.PNG").width, 1210)
        self.assertEqual(self.names(self.folder / "sub"), ["other.PNG"])
        self.assertNotIn("crv.png", self.names())

    def test_two_charts_make_two_pictures(self):
        self.draw_chart()
        shutil.copy(self.folder / "crv.ps", self.folder / "other.ps")
        self.assert_done(self.run_program("crv2svg", "crv.ps", "other.ps"))
        self.assertEqual(self.names(), ["crv.ps", "crv.svg", "other.ps", "other.svg", "run1.req"])

    def test_nasty_names_are_names_and_nothing_else(self):
        self.draw_chart("a.ps")
        chart = (self.folder / "a.ps").read_bytes()
        place = self.folder / "fol der\n%d 'q' |é"
        place.mkdir()
        for name in NASTY:
            (place / name).write_bytes(chart)
        self.folder = place
        self.assert_done(self.run_program("crv2png", "-r", "20", "--", *NASTY))
        pictures = [name[:-2] + "png" for name in NASTY]
        self.assertEqual(self.names(), sorted(NASTY + pictures))
        for picture in pictures:
            self.assertEqual(Picture(place / picture).width, 220, picture)
        for name in NASTY:
            self.assertEqual((place / name).read_bytes(), chart, name)

    def test_nasty_names_of_pictures_are_names_too(self):
        self.draw_chart("a.ps")
        for suffix, options, names in (("png", ("-r", "20"), NASTY), ("pdf", (), NASTY[:7]), ("svg", (), NASTY[:7])):
            for name in names:
                picture = name[:-2] + suffix
                self.assert_done(self.run_program(f"crv2{suffix}", *options, "a.ps", picture))
                self.assertGreater((self.folder / picture).stat().st_size, 1000)
                (self.folder / picture).unlink()
        self.assertEqual(self.names(), ["a.ps", "run1.req"])

    def test_nasty_names_of_folders_are_names_too(self):
        self.draw_chart("a.ps")
        for name in ("-d", "--help", "%d %pipe%x", "new\nline"):
            folder = self.folder / name
            folder.mkdir()
            shutil.copy(self.folder / "a.ps", folder)
            self.assert_done(self.run_program("crv2png", "-r", "20", "--", f"{name}/a.ps"))
            self.assertEqual(self.names(folder), ["a.png", "a.ps"])

    def test_a_nasty_name_from_the_program_needs_the_double_dash(self):
        done = self.draw_chart(name="-q.ps", chain="crv2pdf --")
        self.assertEqual(done.stderr, "")
        self.assertEqual((self.folder / "-q.pdf").read_bytes()[:5], b"%PDF-")

    def test_a_chart_can_come_through_a_pipe(self):
        self.draw_chart()
        self.assert_done(self.run_program("sh", "-c", "cat crv.ps | crv2pdf /dev/stdin piped.pdf"))
        self.assertEqual(self.names(), ["crv.ps", "piped.pdf", "run1.req"])

    def test_a_picture_replaces_the_one_before_and_has_the_rights_of_a_new_file(self):
        self.draw_chart()
        (self.folder / "crv.png").write_text("old")
        self.assert_done(self.run_program("sh", "-c", "umask 027; crv2png crv.ps"))
        self.assertEqual(Picture(self.folder / "crv.png").width, 1210)
        self.assertEqual(stat.S_IMODE((self.folder / "crv.png").stat().st_mode), 0o640)

    def test_a_link_under_the_pictures_name_does_not_lead_to_the_chart(self):
        self.draw_chart()
        chart = (self.folder / "crv.ps").read_bytes()
        (self.folder / "soft.png").symlink_to("crv.ps")
        os.link(self.folder / "crv.ps", self.folder / "hard.png")
        for link in ("soft.png", "hard.png"):
            self.assert_done(self.run_program("crv2png", "crv.ps", link))
            self.assertEqual(Picture(self.folder / link).width, 1210)
            self.assertEqual((self.folder / "crv.ps").read_bytes(), chart)

    def test_a_chart_called_like_a_picture_is_not_touched(self):
        self.draw_chart(name="chart.pdf", chain="crv2pdf")
        self.assertEqual((self.folder / "chart.pdf").read_bytes()[:2], b"%!")
        self.assertEqual(self.names(), ["chart.pdf", "run1.req"])


if __name__ == "__main__":
    workbench.main()
