#!/usr/bin/env python3
"""crv-info counts the steps that crv counts, and prints valid UTF-8 and JSON: for every example and
every input of the fuzz corpus, in all four formats."""
import concurrent.futures
import json
import os
import pathlib
import re
import tarfile

from harness import FORMATS, IS_SANITIZED, PROGRAM, main
from support import sandbox

INFO = str(pathlib.Path(PROGRAM).with_name("crv-info"))
FUZZ = sandbox.ROOT / "tests" / "fuzz"
# The message of a file that has been read, and the member of the JSON object.
COUNTS = {"-f": (r"%crv_83-i-pts, file \(.*\) has (-?\d+) steps\n", "steps"),
          "-fm": (r"%crv_88-i-pts, file \(.*\) has (-?\d+) steps\n", "steps"),
          "-fp": (r"%crv_94-i-pts, file .* has (\d+) steps\n", "rows"),
          "-fg": (r"%crv_85-i-dat, .* number of points = (\d+) \n", "points")}
NO_LAYOUT = re.compile(r"[\x00-\x09\x0b-\x1f\x7f-\x9f]")
FILES_OF_A_RUN = 200


def corpus_inputs():
    """All inputs of the corpus and the seeds. The first line of many is not part of a file."""
    with tarfile.open(FUZZ / "corpus.tar.xz") as archive:
        inputs = [archive.extractfile(member).read() for member in archive if member.isfile()]
    inputs += [path.read_bytes() for kind in ("seeds", "bugs")
               for path in sorted((FUZZ / kind).rglob("*")) if path.is_file()]
    return sorted({data.partition(b"\n")[2] for data in inputs} | set(inputs))


def write_files(box):
    """Writes the examples and the inputs to the directory, and returns their names."""
    names = []
    for path in sorted(sandbox.EXAMPLES.iterdir()):
        if path.suffix in (".req", ".mad", ".pos", ".vdr"):
            box.copy_example(path.name)
            names.append(path.name)
    for number, data in enumerate(corpus_inputs()):
        names.append(f"input{number}")
        box.write(names[-1], data)
    return names


def described(box, option, names):
    """The JSON objects of the files, by name. The option is -f, -fm, -fp or -fg."""
    objects = {}
    for begin in range(0, len(names), FILES_OF_A_RUN):
        result = box.run_program(INFO, "--json", option, *names[begin:begin + FILES_OF_A_RUN])
        result.stdout.encode("utf-8")  # bytes that are not UTF-8 would be surrogates
        objects |= {entry["file"]: entry for entry in json.loads(result.stdout)}
    return objects


def counted_by_crv(box, option, name):
    """The number in the message of crv, None if it does not read the file."""
    result = box.crv("-r", "0", option, name, "-w", "x")
    found = re.search(COUNTS[option][0], result.stdout)
    return int(found.group(1)) if found else None


def test_counts_are_those_of_crv(box):
    names = write_files(box)
    box.assertGreater(len(names), 1000)
    for form in FORMATS:
        option = form.option
        objects = described(box, option, names)
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            counts = pool.map(lambda name: counted_by_crv(box, option, name), names)
        accepted = 0
        for name, count in zip(names, counts):
            if count is None:
                continue
            accepted += 1
            described_count = objects[name].get(COUNTS[option][1])
            # crv shows a number of points below 0 as unsigned.
            box.expect(f"{option} {name}", described_count % 2**32, count)
        box.assertGreater(accepted, 100, option)


def test_text_has_no_control_characters(box):
    names = write_files(box)
    for form in FORMATS:
        for begin in range(0, len(names), FILES_OF_A_RUN):
            result = box.run_program(INFO, form.option, *names[begin:begin + FILES_OF_A_RUN])
            result.stdout.encode("utf-8")
            found = NO_LAYOUT.search(result.stdout)
            box.assertIsNone(found, form.option)


def test_examples_are_described_in_json(box):
    """Names and labels of a file are those that a chart shows."""
    box.copy_example("run1.req")
    box.copy_example("sensors.pos")
    run, sensors = json.loads(box.output_of(INFO, "--json", "run1.req", "sensors.pos"))
    box.expect("requests", [entry["identifier"] for entry in run["requests"]],
               [38, 39, 40, 52, 61, 62, 70])
    box.expect("time", (run["first_time"], run["last_time"]), (0, 3))
    box.expect("labels", [column["label"] for column in sensors["columns"]],
               ["time_s", "force_kN", "travel_mm", "temperature_C"])


def test_high_counts_take_no_memory(box):
    """A header announces more than the file has."""
    box.write("high.req", "x\ny\n2147483647\n" + "7 1 0 0 1\nNAME\n" * 3)
    box.write("high.mad", "x\ny\n2147483647 2147483647\nNAME\n")
    box.write("high.vdr", "%N\n2147483647\n%D\n1 2\n3 4\n5 6\n")
    if IS_SANITIZED:
        box.skipTest("sanitizers need more address space than the limit allows")
    result = box.run_program("sh", "-c", 'ulimit -v 200000; exec "$0" high.*', INFO)
    box.expect("status", (result.status, result.stderr), (0, ""))


def test_many_entries_are_cut(box):
    """At most 100,000 requests are listed, and a note says so."""
    box.write("many.req", "x\ny\n2147483647\n" + "7 1 0 0 0\n" * 150_000)
    entry, = json.loads(box.output_of(INFO, "--json", "many.req"))
    box.expect("listed", len(entry["requests"]), 100_000)
    box.assertIn("Only the first 100000 requests are listed", entry["notes"])


def test_full_disk_is_reported(box):
    box.copy_example("run1.req")
    with open("/dev/full", "wb") as full:
        result = box.run_program(INFO, "run1.req", stdout=full)
    box.expect_run("full disk", result, "",
                   "%crv_08-e-out, Standard output could not be written\n", 1)


main()
