#!/usr/bin/env python3
"""scripts/demo.sh on a machine without Ghostscript, run by a user who may not install it, in an
unpacked source archive: it leaves the chart as PostScript and prints what is missing."""
import os
import pathlib
import shutil

from shared import BUILT, main

NOBODY = 65534
INSTALL = "    su -c 'apt-get install --no-install-recommends ghostscript'\n"


def without_ghostscript(database, copy):
    """Copies the database of dpkg, in which Ghostscript becomes a package that is not installed."""
    copy.mkdir()
    status = (database / "status").read_text()
    packages = [entry for entry in status.split("\n\n")
                if not entry.startswith("Package: ghostscript\n")]
    (copy / "status").write_text("\n\n".join(packages))
    for name in ("info", "updates", "triggers"):
        (copy / name).mkdir()
    for name in ("available", "info/format"):
        shutil.copy(database / name, copy / name)


def test_demo_without_ghostscript_leaves_chart(box):
    source = box.unpack_source()
    without_ghostscript(pathlib.Path("/var/lib/dpkg"), box.base / "dpkg")
    user = []
    if os.geteuid() == 0:
        box.run_command("chown", "-R", f"{NOBODY}:{NOBODY}", source)
        user = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups", "--"]
    found = box.run_program(*user, "bash", source / "scripts/demo.sh", cwd=source, timeout=1500,
                            PATH=box.path_without("gs", "sudo"),
                            DPKG_ADMINDIR=str(box.base / "dpkg"))
    box.expect("status", found.status, 0)
    box.expect("errors", found.stderr, f"Packages are missing. To install them:\n{INSTALL}")
    box.expect("last line", found.stdout.splitlines()[-1],
               f"The chart is in {source}/demo/crv.ps. There is no crv.png to look at, because "
               "Ghostscript is missing.")
    box.expect("files", sorted(path.name for path in (source / "demo").iterdir()),
               ["crv.ps", "run1.req"])
    box.expect("the chart", (source / "demo/crv.ps").read_bytes(), box.draw(BUILT)[0])


main("cmake", "g++", "setpriv", "dpkg-query")
