"""What every shell must offer: lines that end where the tabulator is pressed, and the answers, in folders for each."""
import os
import pathlib
import shutil
import sys

ROOT = pathlib.Path(__file__).resolve().parents[3]
sys.path.insert(0, str(ROOT / "tests/docs"))
import program_facts  # noqa: E402  (found by the path above)

REQUESTS = ["38:", "39:", "40:", "52:", "61:", "62:", "70:"]
ODD_NAMES = ["my run.mad", "$(touch pwned).mad", "-x.mad", "x:y.mad"]


def options():
    """The options of the program, but for those with a number of one's own."""
    return sorted(form for form in program_facts.option_forms(ROOT) if not form.endswith("N"))


def file_options(prefix):
    return [form for form in options() if form.startswith(prefix)]


def make_usual(folder):
    for name in ("run1.req", "sled.mad", "sensors.pos", "bumper.vdr"):
        shutil.copyfile(ROOT / "examples" / name, folder / name)
    for name in [*ODD_NAMES, "old.ps", "story.ps", "notes.txt"]:
        (folder / name).write_text("")
    (folder / "sub").mkdir()
    (folder / "sub/deep.req").write_text("")


USUAL = [
    ("options begin with a dash", "crv -", options()),
    ("-f narrows the options down", "crv -f", file_options("-f")),
    ("-fr takes request files and folders", "crv -r 0 -fr ", ["run1.req", "sub"]),
    ("-f takes request files and folders", "crv -r 0 -f ", ["run1.req", "sub"]),
    ("files below a folder are found", "crv -r 0 -f sub/", ["sub/deep.req"]),
    ("-fa takes request files", "crv -r 0 -fa ", ["run1.req", "sub"]),
    ("-fm takes Madymo files, whatever is in their names", "crv -r 0 -fm ", ["$(touch pwned).mad", "my run.mad",
                                                                           "sled.mad", "sub", "x:y.mad"]),
    ("-fmd takes Madymo files", "crv -r 0 -fmd s", ["sled.mad", "sub"]),
    ("-fp takes column files", "crv -r 0 -fp ", ["sensors.pos", "sub"]),
    ("-fp with a number takes column files", "crv -r 0 -fp12 ", ["sensors.pos", "sub"]),
    ("-fg takes frame files", "crv -r 0 -fg ", ["bumper.vdr", "sub"]),
    ("where there is no such file, others are not offered", "crv -r 0 -fg sub/", []),
    ("-f with another letter takes no file", "crv -r 0 -fx b", []),
    ("-s0 takes PostScript files", "crv -s0 ", ["old.ps", "story.ps", "sub"]),
    ("-s1 takes any text", "crv -s1 o", []),
    ("-p takes the names of charts", "crv -p ", ["crv.ps", "old.ps", "story.ps", "sub"]),
    ("-p takes the names of the files that are read, and not that of the file to be pasted",
     "crv -s0 story.ps -r 0 -fp sensors.pos -f run1.req -p ", ["crv.ps", "old.ps", "run1.ps", "sensors.ps", "sub"]),
    ("behind -p an option would name the chart", "crv -r 0 -f run1.req -p -", []),
    ("-r takes time and the requests of the file", "crv -r ", ["0,", *REQUESTS]),
    ("-r takes further requests", "crv -r 0,", [f"0,{request}" for request in REQUESTS]),
    ("-r narrows the requests down", "crv -r 0,38:3,6", ["0,38:3,61:", "0,38:3,62:"]),
    ("-r takes items behind a colon", "crv -r 0,38:", [f"0,38:{item}" for item in range(1, 9)]),
    ("-r takes conditions behind an equals sign", "crv -r 0,38:3=", [f"0,38:3={word}" for word in
                                                                   ("max", "min", "amax", "amin")]),
    ("-r narrows the conditions down", "crv -r 0,38:3=am", ["0,38:3=amax", "0,38:3=amin"]),
    ("a range may begin with a dash", "crv -x -", []),
    ("a title is any text", "crv -t r", []),
    ("a title can be left out", "crv -t -al", ["-all"]),
    ("behind a value come options", "crv -r 0 -f run1.req -al", ["-all"]),
    ("a table takes no option for its file", "crv -r 0 -fc -", []),
    ("a chart can do without the name of its file", "crv -r 0 -fm -al", ["-all"]),
    ("behind the file of a table comes nothing", "crv -r 0 -fc run1.req -", []),
    ("behind the file of a Madymo table comes nothing", "crv -r 0 -fma sled.mad -", []),
]


def header(lines, count=None):
    return "a run\nits title\n%s\n%s" % (len(lines) if count is None else count, "".join(f"{line}\n" for line in lines))


STEPS = "0.0\n1 2 3 4 5 6\n"
EVIL = "$(touch pwned)`touch pwned`\x1b]0;pwned\x07%n'\""

# Request files of every kind: what lies in the folder, and the requests that -r offers behind "0,".
ODD_FOLDERS = [
    ("no request file", {}, []),
    ("two request files", {"a.req": header(["7 1 0 0 0"]), "b.req": header(["8 1 0 0 0"])}, []),
    ("names behind the flag", {"a.req": header(["7 1 0 0 5", "8 2 0 0 0", "9 1 0 0 0"], 2) + STEPS}, ["7:", "9:"]),
    ("commas and line ends of another system", {"a.req": header(["7,1,0,0,0\r", " 8, 1, 0, 0, 0\r"])}, ["7:", "8:"]),
    ("a request that stands there twice", {"a.req": header(["7 1 0 0 0", "7 2 0 0 0"])}, ["7:"]),
    ("more requests announced than there are", {"a.req": header(["7 1 0 0 0"], 2000000000)}, ["7:"]),
    ("no number of requests", {"a.req": header(["7 1 0 0 0"], "x")}, []),
    ("a number of requests below 0", {"a.req": header(["7 1 0 0 0"], -3)}, []),
    ("text that a shell would run", {"a.req": header([f"{EVIL} 1 0 0 0", "7 1 0 0 1", EVIL, "8;touch_pwned 1", "9 1"], 4)},
     ["7:", "9:"]),
    ("no text at all", {"a.req": bytes(range(256)) * 300}, []),
    ("an empty file", {"a.req": ""}, []),
    ("a file of two lines", {"a.req": "a run\nits title\n"}, []),
    ("a header of more than a megabyte", {"a.req": header(["7 1 0 0 1", "x" * 1200000, "8 1 0 0 0"], 2)}, ["7:"]),
    ("a name that looks like an option", {"-a.req": header(["7 1 0 0 0"])}, ["7:"]),
    ("a folder and a pipe beside it", {"a.req": header(["7 1 0 0 0"]), "b.req/": None, "c.req|": None}, ["7:"]),
]


def make_odd(folder, files):
    for name, text in files.items():
        if name.endswith("/"):
            (folder / name).mkdir()
        elif name.endswith("|"):
            os.mkfifo(folder / name[:-1])
        elif isinstance(text, bytes):
            (folder / name).write_bytes(text)
        else:
            (folder / name).write_bytes(text.encode())
