#!/usr/bin/env python3
"""The image of packaging/Containerfile, built by buildah on a bare Debian: all programs work in it,
and -p makes a picture through the shell of the image."""
import pathlib
import platform
import shutil

from shared import BUILT, CHART, CHART_STATUS, main, take_file
from support.sandbox import Result

BASE = "FROM scratch\nCOPY root /\n"


def buildah(box, *arguments, status=0):
    """Without a daemon, without mounts, and with storage of the test's own. Returns standard
    output, because buildah reports a status other than 0 on standard error."""
    store = ("--storage-driver", "vfs", "--root", box.base / "store",
             "--runroot", box.base / "store-run")
    found = box.run_program("buildah", *store, *arguments, timeout=1500)
    box.assertEqual(found.status, status, found.stdout + found.stderr)
    return found.stdout


def run(box, container, data, *command):
    """Runs a program in the container, where it writes both streams and its status to files:
    buildah may end before it has passed on all output. `data` is /data of the container."""
    buildah(box, "run", "--isolation", "chroot", container, "--",
            "sh", "-c", '"$@" > printed 2> errors; echo $? > status', "sh", *command)
    printed, errors, status = (take_file(data, name).decode()
                               for name in ("printed", "errors", "status"))
    return Result(printed, errors, int(status))


def test_image_draws_and_prints(box):
    (box.base / "base").mkdir()
    release = platform.freedesktop_os_release()["VERSION_CODENAME"]
    box.run_command("debootstrap", "--variant=minbase", release, box.base / "base/root")
    (box.base / "base/Containerfile").write_text(BASE)
    buildah(box, "build", "--isolation", "chroot", "--tag", "base", box.base / "base")
    source = box.unpack_source()
    buildah(box, "build", "--isolation", "chroot", "--build-arg", "BASE=localhost/base",
            "--file", source / "packaging/Containerfile", "--tag", "crv", source)
    container = buildah(box, "from", "crv").strip()
    box.addCleanup(buildah, box, "rm", "--all")
    top = pathlib.Path(buildah(box, "mount", container).strip())
    data = top / "data"
    shutil.copy(top / "usr/local/share/doc/crv/examples/run1.req", data)
    box.expect_programs_work("image", lambda *command: run(box, container, data, *command), data)
    drawn = run(box, container, data, "crv", *CHART)
    box.expect("status", drawn.status, CHART_STATUS)
    box.assertIn('Printer command = "crv2pdf crv.ps"', drawn.stdout)
    box.expect("the chart", (data / "crv.ps").read_bytes(), box.draw(BUILT)[0])
    box.expect("a picture", (data / "crv.pdf").read_bytes()[:5], b"%PDF-")


main("buildah", "debootstrap")
