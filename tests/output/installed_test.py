#!/usr/bin/env python3
# output/installed_test - the companions are installed beside the program and work from there.
import workbench


class Installed(workbench.Workbench):
    def test_the_program_and_its_companions_stand_side_by_side_and_make_pictures(self):
        self.output_of("cmake", "--install", str(workbench.BUILD), "--prefix", str(self.folder / "usr"))
        folder = self.folder / "usr/bin"
        self.assertEqual([name for name in self.names(folder) if name.startswith("crv")],
                         ["crv", "crv2pdf", "crv2png", "crv2svg"])
        for suffix in workbench.SUFFIXES:
            self.assertFalse((folder / f"crv2{suffix}").is_symlink(), "a link may lead out of the package")
            done = self.run_program("crv", "-r", "0,38:3", "-f", "run1.req", "-p", CRV_PRINTCHAIN=f"crv2{suffix}",
                                    PATH=f"{folder}:/usr/bin:/bin")
            self.assertEqual((done.returncode, done.stderr), (1, ""))
            self.assertGreater((self.folder / f"crv.{suffix}").stat().st_size, 1000)


if __name__ == "__main__":
    workbench.main()
