#!/usr/bin/env python3
"""The companions are installed next to the program and work from there."""
from workbench import BUILD, SUFFIXES, main


def test_installed_companions_make_pictures(box):
    prefix = box.path("usr")
    box.output_of("cmake", "--install", str(BUILD), "--prefix", str(prefix))
    box.assertEqual([name for name in box.names("usr/bin") if name.startswith("crv")],
                    ["crv", "crv-csv", "crv-html", "crv-info", "crv-term",
                     "crv2pdf", "crv2png", "crv2svg"])
    for suffix in SUFFIXES:
        box.assertFalse((prefix / f"bin/crv2{suffix}").is_symlink(), "it may lead elsewhere")
        result = box.crv("-r", "0,38:3", "-f", "run1.req", "-p", CRV_PRINTCHAIN=f"crv2{suffix}",
                         PATH=f"{prefix}/bin:/usr/bin:/bin")
        box.assertEqual((result.status, result.stderr), (1, ""))
        box.assertGreater(len(box.read(f"crv.{suffix}")), 1000)


main()
