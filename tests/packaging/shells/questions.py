"""The words that every shell must offer: lines that end where the tab key is pressed, and the
answers, with the files of the directory."""
import functools
import os
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[3]
sys.path.insert(0, str(ROOT / "scripts"))
import option_table  # noqa: E402  (found by the path above)

REQUESTS = ["38:", "39:", "40:", "52:", "61:", "62:", "70:"]
ODD_NAMES = ["my run.mad", "$(touch pwned).mad", "-x.mad", "x:y.mad"]


@functools.cache
def options():
    """The options of the program, except those that end with any number. The variable
    CRV_PRINT_OPTIONS names the program that prints the option table; without it one is compiled."""
    forms, _ = option_table.read(os.environ.get("CRV_PRINT_OPTIONS"))
    return sorted(form.spelling for form in forms if form.summary and form.rest != "number")


@functools.cache
def viewer_options():
    """The options of a viewer that have an effect there."""
    forms, _ = option_table.read(os.environ.get("CRV_PRINT_OPTIONS"))
    offered = [form.spelling for form in forms
               if form.summary and form.rest != "number" and form.viewer]
    return sorted({*offered, "--help", "--version"} - {"-p1", "-p2"})


def file_options(prefix):
    return [form for form in options() if form.startswith(prefix)]


def make_usual(box):
    for name in ("run1.req", "sled.mad", "sensors.pos", "bumper.vdr"):
        box.copy_example(name)
    for name in [*ODD_NAMES, "old.ps", "story.ps", "notes.txt", "sub/deep.req"]:
        box.write(name, "")


USUAL = [
    ("options begin with a dash", "crv -", options()),
    ("-f selects options", "crv -f", file_options("-f")),
    ("-fr takes request files and directories", "crv -r 0 -fr ", ["run1.req", "sub"]),
    ("-f takes request files and directories", "crv -r 0 -f ", ["run1.req", "sub"]),
    ("files in a directory are found", "crv -r 0 -f sub/", ["sub/deep.req"]),
    ("-fa takes request files", "crv -r 0 -fa ", ["run1.req", "sub"]),
    ("-fm takes Madymo files of any name", "crv -r 0 -fm ",
     ["$(touch pwned).mad", "my run.mad", "sled.mad", "sub", "x:y.mad"]),
    ("-fmd takes Madymo files", "crv -r 0 -fmd s", ["sled.mad", "sub"]),
    ("-fp takes column files", "crv -r 0 -fp ", ["sensors.pos", "sub"]),
    ("-fp with a number takes column files", "crv -r 0 -fp12 ", ["sensors.pos", "sub"]),
    ("-fg takes frame files", "crv -r 0 -fg ", ["bumper.vdr", "sub"]),
    ("other files are not offered", "crv -r 0 -fg sub/", []),
    ("-f with another letter takes no file", "crv -r 0 -fx b", []),
    ("-s0 takes PostScript files", "crv -s0 ", ["old.ps", "story.ps", "sub"]),
    ("-s1 takes any text", "crv -s1 o", []),
    ("-p takes the names of charts", "crv -p ", ["crv.ps", "old.ps", "story.ps", "sub"]),
    ("-p takes the names of input files, not that of the user file",
     "crv -s0 story.ps -r 0 -fp sensors.pos -f run1.req -p ",
     ["crv.ps", "old.ps", "run1.ps", "sensors.ps", "sub"]),
    ("after -p an option would name the chart", "crv -r 0 -f run1.req -p -", []),
    ("-r takes time and the requests of the file", "crv -r ", ["0,", *REQUESTS]),
    ("-r takes further requests", "crv -r 0,", [f"0,{request}" for request in REQUESTS]),
    ("-r selects requests", "crv -r 0,38:3,6", ["0,38:3,61:", "0,38:3,62:"]),
    ("-r takes items after a colon", "crv -r 0,38:", [f"0,38:{item}" for item in range(1, 9)]),
    ("-r takes conditions after an equals sign", "crv -r 0,38:3=",
     [f"0,38:3={word}" for word in ("max", "min", "amax", "amin")]),
    ("-r selects conditions", "crv -r 0,38:3=am", ["0,38:3=amax", "0,38:3=amin"]),
    ("-r takes requests of the last Madymo file on the line", "crv -r 0 -fm sled.mad -r 0,",
     ["0,1:", "0,2:", "0,3:"]),
    ("-r takes the numbers of its lines", "crv -r 0 -fm sled.mad -r 2:",
     ["2:1", "2:2", "2:3", "2:4"]),
    ("-r takes the columns of the last column file", "crv -r 0 -fp sensors.pos -r ",
     ["0,", "1", "2", "3", "4"]),
    ("a label line has a number", "crv -r 0 -fp3 sensors.pos -r 0,", ["0,1", "0,2", "0,3", "0,4"]),
    ("a frame file has no series to select", "crv -r 0 -fg bumper.vdr -r ", ["0,"]),
    ("a request that the file does not have has no items", "crv -r 0,99:", []),
    ("a range may begin with a dash", "crv -x -", []),
    ("a title is any text", "crv -t r", []),
    ("a title can be left out", "crv -t -al", ["-all"]),
    ("options follow a value", "crv -r 0 -f run1.req -al", ["-all"]),
    ("a table takes no option for its file", "crv -r 0 -fc -", []),
    ("a chart may have no file name", "crv -r 0 -fm -al", ["-all"]),
    ("nothing follows the file of a table", "crv -r 0 -fc run1.req -", []),
    ("nothing follows the file of a Madymo table", "crv -r 0 -fma sled.mad -", []),
    ("a viewer has its own options", "crv-csv -", viewer_options()),
    ("a viewer takes files", "crv-term -r 0 -f ", ["run1.req", "sub"]),
    ("-p of crv-html takes the names of pages", "crv-html -r 0 -f run1.req -p ",
     ["crv.html", "run1.html", "sub"]),
    ("-p of crv-csv takes the names of tables", "crv-csv -r 0 -fm sled.mad -p s",
     ["sled.csv", "sub"]),
    ("a viewer takes requests", "crv-html -r 0,6", ["0,61:", "0,62:"]),
    ("crv-info has its own options", "crv-info -",
     ["-f", "-fr", "-fm", "-fp", "-fg", "--json", "--pairs", "-h", "--help", "--version"]),
    ("crv-info takes result files", "crv-info s", ["sled.mad", "sensors.pos", "sub"]),
    ("crv-info takes several files", "crv-info sled.mad b", ["bumper.vdr"]),
    ("a viewer takes no condition", "crv-csv -r 0,38:3=", []),
]


def header(lines, count=None):
    count = len(lines) if count is None else count
    return "\n".join(["a run", "its title", str(count), *lines, ""])


STEPS = "0.0\n1 2 3 4 5 6\n"
EVIL = "$(touch pwned)`touch pwned`\x1b]0;pwned\x07%n'\""

# The files of a directory, and the requests that -r offers after "0,".
ODD_DIRECTORIES = [
    ("no request file", {}, []),
    ("two request files", {"a.req": header(["7 1 0 0 0"]), "b.req": header(["8 1 0 0 0"])}, []),
    ("names after the flag",
     {"a.req": header(["7 1 0 0 5", "8 2 0 0 0", "9 1 0 0 0"], 2) + STEPS}, ["7:", "9:"]),
    ("commas and line ends of Windows",
     {"a.req": header(["7,1,0,0,0\r", " 8, 1, 0, 0, 0\r"])}, ["7:", "8:"]),
    ("one request twice", {"a.req": header(["7 1 0 0 0", "7 2 0 0 0"])}, ["7:"]),
    ("a high number of requests", {"a.req": header(["7 1 0 0 0"], 2000000000)}, ["7:"]),
    ("no number of requests", {"a.req": header(["7 1 0 0 0"], "x")}, []),
    ("a number of requests below 0", {"a.req": header(["7 1 0 0 0"], -3)}, []),
    ("text that a shell would run",
     {"a.req": header([f"{EVIL} 1 0 0 0", "7 1 0 0 1", EVIL, "8;touch_pwned 1", "9 1"], 4)},
     ["7:", "8:", "9:"]),
    ("bytes that are not text", {"a.req": bytes(range(256)) * 300}, []),
    ("an empty file", {"a.req": ""}, []),
    ("a file of two lines", {"a.req": "a run\nits title\n"}, []),
    ("a header of more than a megabyte",
     {"a.req": header(["7 1 0 0 1", "x" * 1200000, "8 1 0 0 0"], 2)}, ["7:"]),
    ("a name that looks like an option", {"-a.req": header(["7 1 0 0 0"])}, ["7:"]),
    ("one Madymo file", {"a.mad": "run\n\n2 0\nSLED\nCHEST\n0\n1 2\n3\n"}, ["1:", "2:"]),
    ("two Madymo files", {"a.mad": "run\n\n1 0\nSLED\n0\n1\n", "b.mad": ""}, []),
    ("one column file with labels that a shell would run",
     {"a.pos": "$(touch pwned),`touch pwned`,'\\\n1 2 3\n"}, ["1", "2", "3"]),
    ("one frame file", {"a.vdr": "%N\n3\n"}, []),
    ("a directory and a pipe beside it",
     {"a.req": header(["7 1 0 0 0"]), "b.req/": None, "c.req|": None}, ["7:"]),
]


def make_odd(directory, files):
    for name, text in files.items():
        if name.endswith("/"):
            (directory / name).mkdir()
        elif name.endswith("|"):
            os.mkfifo(directory / name[:-1])
        else:
            (directory / name).write_bytes(text if isinstance(text, bytes) else text.encode())
