#!/usr/bin/env python3
"""Runs the recipe of docs/cookbook.md for a cluster as printed, on a Slurm of one node."""
import cookbook_test
from scheduler import Cluster


def test_a_thousand_result_files_on_a_cluster(box):
    Cluster(box)
    runs = box.make_runs()
    for name in ("late.req", "later.req"):
        box.copy("run1.req", name)
    runs += ["late", "later"]
    box.left.insert(0, cookbook_test.recipes()["test_a_thousand_result_files"][0])
    box.next_block().chmod(0o755)
    box.next_block()

    box.again()
    result = box.next_status(1)
    box.assertRegex(result.stdout, r"^Submitted batch job \d+\n$")
    box.assertEqual(result.stderr, "")
    box.assertEqual(len(box.text("files.txt").splitlines()), 7)
    box.assert_runs_done(runs)
    box.assertIn("chart_one: no chart of broken.req\n", box.text("broken.log"))
    outputs = [f"charts_{number}.txt" for number in range(1, 8)]
    box.assertEqual([name for name in box.names() if name.startswith("charts_")], outputs)
    box.assertEqual({box.text(name) for name in outputs}, {""})

    box.copy("run1.req", "broken.req")
    box.next_status(0)
    for run in [*runs, "broken"]:
        box.assert_pages(f"{run}.pdf")


cookbook_test.workbench.main(cookbook_test.Cookbook)
