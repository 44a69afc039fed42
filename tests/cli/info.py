#!/usr/bin/env python3
"""crv-info counts the steps that crv counts, and prints valid UTF-8 and JSON: for every example and
every input of the fuzz corpus, in all four formats."""
import concurrent.futures
import json
import os
import pathlib
import re
import shutil
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


def write_unusual_files(box):
    """Writes the files of the cases and two long ones, and returns their names."""
    names = []
    for path in sorted((sandbox.ROOT / "tests/cases/info").glob("*/in/*")):
        names.append(f"{path.parent.parent.name}-{path.name}")
        box.write(names[-1], path.read_bytes())
    box.write("long.req", "\nlong\n1\n7 1 0 0 0\n" + "1\n10\n" * 40_000)
    box.write("long.mad", "Title\n\n1 0\nSLED\n" + "1\n1 2\n" * 40_000)
    box.write("long.pos", "a b\n" + "1 2\n" * 40_000)
    box.write("long.vdr", "%N\n40000\n%D\n" + "1 2\n" * 40_000)
    return [*names, "long.req", "long.mad", "long.pos", "long.vdr"]


def command_fault(box, name, command):
    """What is wrong with the command for a file: it must draw a chart and end as usual."""
    directory = box.path(f"draw-{name}")
    directory.mkdir()
    (directory / name).symlink_to(box.path(name))
    result = box.shell(command, cwd=directory, CRV_PRINTCHAIN=":")
    is_page = command.startswith("crv-html ")
    drawn = (directory / ("crv.html" if is_page else "crv.ps")).exists()
    shutil.rmtree(directory)
    return "" if drawn and result.status == (0 if is_page else 1) else f"{command}: {result}"


def test_commands_draw_charts(box):
    """Each command that is suggested, as the shell runs it."""
    unusual, names = write_unusual_files(box), write_files(box)
    for form in FORMATS:
        found = described(box, form.option, unusual + names).items()
        commands = [(name, entry["command"]) for name, entry in found if entry.get("command")]
        box.assertGreater(len(commands), 30, form.option)
        some = [pair for k, pair in enumerate(commands)
                if pair[0] in unusual or k % (len(commands) // 100 + 1) == 0]
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            faults = pool.map(lambda pair: command_fault(box, *pair), some)
        box.assertEqual([fault for fault in faults if fault], [], form.option)


def test_commands_read_standard_input(box):
    box.environment["CRV_PRINTCHAIN"] = ":"
    for option, name in (("-f", "run1.req"), ("-fm", "sled.mad"), ("-fp", "sensors.pos"),
                         ("-fg", "bumper.vdr")):
        box.copy_example(name)
        entry, = json.loads(box.output_of("sh", "-c", f"crv-info --json {option} - <{name}"))
        result = box.shell(f"{entry['command']} <{name}")
        box.expect(name, (result.status, box.take("crv.ps")[-10:]), (1, b"showpage \n"))


KINDS = {"request": "request file", "madymo": "Madymo file", "column": "column file",
         "frame": "frame file"}


def text_of(entry):
    """The text for a file, made of its JSON object whose numbers are texts."""
    lines = [f"{entry['file']}: {KINDS[entry['format']]}, {entry['size']} bytes"]

    def add(name, value):
        if value:
            lines.append(f"  {name:9} {value}")

    def add_range(name, pair):
        if pair:
            add(name, " to ".join(value or "null" for value in pair))

    def add_table(heading, rows):
        lines.extend(["", heading, *rows] if rows else [])
    add("title", entry["title"])
    if "steps" in entry:
        add("steps", entry["steps"])
        if entry["steps"] != "0":
            add_range("time", (entry["first_time"], entry["last_time"]))
    add_format = {"request": add_requests, "madymo": add_places, "column": add_columns,
                  "frame": add_frame}[entry["format"]]
    add_format(entry, add, add_range, add_table)
    for note in entry["notes"]:
        add("note", note)
    add("chart", entry["command"])
    return [line.rstrip() for line in lines if line]


def add_requests(entry, add, _, add_table):
    magnitudes = ("of X Y Z", "of A1 A2 A3")
    items = [f"{k} {item}" for k, item in enumerate(entry["items"], 1)]
    items[6:] = [f"{item} {of}" for item, of in zip(items[6:], magnitudes)]
    add("items", ", ".join(items))
    add("requests", str(len(entry["requests"])))
    width = max([7, *(len(request["identifier"]) for request in entry["requests"])])
    add_table(f"  {'request':>{width}}  type   name",
              [f"  {request['identifier']:>{width}}  {request['type']:5}  {request['name']}"
               for request in entry["requests"]])


def add_places(entry, add, _, add_table):
    add("requests", str(len(entry["requests"])))
    add_table("  request  numbers  name",
              [f"  {request['place']:>7}  {request['numbers'] or '-':>7}  {request['name']}"
               for request in entry["requests"]])
    add_table("     item  description",
              [f"  {k:7}  {text}" for k, text in enumerate(entry["descriptions"], 1)])


def add_columns(entry, add, _, add_table):
    add("rows", entry["rows"])
    add("columns", str(len(entry["columns"])))
    add_table("   column  label",
              [f"  {column['number']:>7}  {column['label'] or ''}" for column in entry["columns"]])


def add_frame(entry, add, add_range, _):
    add("points", entry["points"])
    for axis in ("x", "y"):
        add(axis.upper(), entry[axis]["label"])
        for kind in ("data", "range"):
            add_range(f"{axis.upper()} {kind}", entry[axis][kind])
    for number, title in entry["y_titles"].items():
        add(f"Y title {number}", title)
    add("style", entry["style"])


def test_json_equals_text(box):
    """For each file that can be read, in every format."""
    names = write_unusual_files(box) + write_files(box)
    for form in FORMATS:
        for begin in range(0, len(names), FILES_OF_A_RUN):
            files = names[begin:begin + FILES_OF_A_RUN]
            text = box.run_program(INFO, form.option, *files).stdout
            # JSON has no text for these numbers.
            text = re.sub(r"^(  (?:time|[XY] \w+) +)(.*)$", lambda line: line[1] + re.sub(
                r"-?\b(?:inf|nan)\b", "null", line[2]), text, flags=re.M)
            entries = json.loads(box.run_program(INFO, "--json", form.option, *files).stdout,
                                 parse_int=str, parse_float=str)
            wanted = [line for entry in entries if "error" not in entry for line in text_of(entry)]
            box.expect(form.option, [line.rstrip() for line in text.split("\n") if line], wanted)


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
