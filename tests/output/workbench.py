"""A sandbox with a result file, and the companions on the path, for each test of pictures."""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from support import sandbox  # noqa: E402  (found by the path above)

CRV, ROOT, BUILD = (pathlib.Path(path).resolve() for path in sys.argv[1:4])
COMPANIONS = ROOT / "companions"
SUFFIXES = ("pdf", "png", "svg")


class Workbench(sandbox.Sandbox):
    def setUp(self):
        super().setUp()
        for suffix in SUFFIXES:
            (self.bin / f"crv2{suffix}").symlink_to(COMPANIONS / f"crv2{suffix}")
        self.copy_example("run1.req")

    def draw_chart(self, name="crv.ps", chain=":"):
        """Draws the chart of the quarter car and runs `chain` on it."""
        result = self.crv("-t", "Quarter car over a bump", "-r", "0,38:3,52:3,70:2", "-f",
                          "run1.req", "-p", name, CRV_PRINTCHAIN=chain)
        self.assertEqual(result.status, 1, result)
        return result

    def make(self, suffix, *arguments, **options):
        """Runs a companion that must succeed in silence."""
        self.assertEqual(self.run_program(f"crv2{suffix}", *arguments, **options), ("", "", 0))

    def assert_failed(self, result, status, *lines):
        self.assertEqual(result, ("", "".join(f"{line}\n" for line in lines), status))

    def assert_prints(self, expected, *command):
        self.assertIn(expected, self.output_of(*command))


def main(kind=Workbench):
    sandbox.main(CRV, kind)
