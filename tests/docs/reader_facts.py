"""Facts about the readers, found by runs with small files: items, labels, directives and limits."""
import itertools
import math
import re
import string

NUMBERS = [3, 4, 12, 1, 2, 2]
MAX_COLUMNS_TRIED = 200


def request_file(headers, values=NUMBERS, times=(0, 1)):
    steps = "".join(
        f"{time}\n" + f"{' '.join(map(str, values))}\n" * len(headers) for time in times
    )
    return f"run\ntitle\n{len(headers)}\n" + "".join(f"{header}\n" for header in headers) + steps


def madymo_file(values):
    step = f"{' '.join(map(str, values))}\n"
    return f"title\n\n1 0\nSLED\n0\n{step}1\n{step}"


def columns(box, name, text, option, selection):
    """Label and mean of each column that a run reads."""
    box.write(name, text)
    _, printed = box.run("crv", "-r", selection, option, name, "-d", "86", "-w", "x")
    return list(
        zip(
            re.findall(r'colname  = "(.*?) *"', printed),
            map(float, re.findall(r'mean     = "(.*)"', printed)),
        )
    )


def request_items(box):
    """Label and value of each item from 0 to 9 of a request with NUMBERS."""
    selection = ",".join(f"7:{item}" for item in range(10))
    found = columns(box, "items.req", request_file(["7 1 0 0 0"]), "-f", selection)
    return [(label.rpartition(", ")[2], value) for label, value in found]


def request_types(box):
    """The label of each type from 0 to 9."""
    headers = [f"{kind + 1} {kind} 0 0 0" for kind in range(10)]
    selection = ",".join(f"{kind + 1}:1" for kind in range(10))
    return [
        label.split()[0]
        for label, _ in columns(box, "types.req", request_file(headers), "-f", selection)
    ]


def madymo_items(box):
    """Label and value of each item that does not end the run, where number n has the value 10 n."""
    text, found = madymo_file(range(10, 1000, 10)), []
    for item in range(100):
        read = columns(box, "items.mad", text, "-fm", f"1:{item},1:{item}")
        if not read:
            break
        label, value = read[0]
        found.append((label.rpartition(",")[2].strip(), value))
    return found


def frame_output(box, directive):
    box.write("a.vdr", f"%N\n3\n%{directive}\n4\n7\n%D\n1 2\n3 4\n5 6\n")
    return box.run("crv", "-r", "0", "-fg", "a.vdr", "-d", "86", "-w", "x")


def frame_directives(box):
    """The shortest words after % that change the result of a frame file, and the digits after YA
    that name another label than YA itself."""
    without = frame_output(box, "")
    words = {letter for letter in string.ascii_uppercase if frame_output(box, letter) != without}
    others = [letter for letter in string.ascii_uppercase if letter not in words]
    words |= {
        first + second
        for first, second in itertools.product(others, string.ascii_uppercase)
        if frame_output(box, first + second) != without
    }
    digits = [
        digit
        for digit in string.digits
        if frame_output(box, f"YA{digit}") != frame_output(box, "YA")
    ]
    return words, digits


def padded(begin, end, length):
    return begin + " " * (length - len(begin) - len(end)) + end


# A file whose result depends on the end of a line of the given length.
LONG_LINES = {
    "Request files (.req)": [
        (
            "-f",
            "0,7:6",
            lambda length: request_file(["7 1 0 0 0"]).replace(
                "1 2 2\n1\n", padded("1", " 2 2", length - 7) + "\n1\n", 1
            ),
        )
    ],
    "Madymo files (.mad)": [
        (
            "-fm",
            "0,1:2",
            lambda length: madymo_file([5, 6]).replace("title", padded("t", "e", length)),
        ),
        (
            "-fm",
            "0,1:2",
            lambda length: madymo_file([5, 6]).replace("5 6", padded("5", "6", length), 1),
        ),
    ],
    "Column files (.pos)": [
        ("-fp", "0,2", lambda length: f"A B\n{padded('1', '2', length)}\n3 4\n5 6\n")
    ],
    "Frame files (.vdr)": [
        ("-fg", "0", lambda length: f"%N\n3\n%D\n{padded('1', '2', length)}\n3 4\n5 6\n")
    ],
}


def longest_line(box, option, selection, text_of, limits):
    """The first of `limits` for which a line of this length reads as a short one does, and a
    longer one does not."""

    def result(length):
        box.write("long.txt", text_of(length))
        box.write("long.ps", "")
        box.run("crv", "-r", selection, option, "long.txt", "-p", "long.ps")
        return re.sub(r"(?m)^\(?t +e|t +e", "title", box.text("long.ps"))

    short = result(20)
    return next((limit for limit in limits if result(limit) == short != result(limit + 1)), None)


def max_columns(box):
    """The number of columns that a run can read."""
    box.write("many.req", request_file(["7 1 0 0 0"]))

    def fits(count):
        return "-f-col" not in box.run("crv", "-r", ",".join(["7"] * count), "-f", "many.req")[1]

    return next(count for count in range(2, MAX_COLUMNS_TRIED) if not fits(count + 1))


def max_curves(box):
    """The number of curves that a chart draws without a message."""
    box.write("curves.req", request_file(["7 1 0 0 0"]).replace("1\n3 4", "1\n5 4"))

    def draws(count):
        selection = ",".join(["0"] + ["7"] * count)
        return "_44-w-" not in box.run("crv", "-r", selection, "-f", "curves.req", "-p", "m.ps")[1]

    return next(count for count in range(1, MAX_COLUMNS_TRIED) if not draws(count + 1))


def read_times(box, *options):
    """The times from -102 to 10002 that a run reads from a request file."""
    box.write("times.req", request_file(["7 1 0 0 0"], times=range(-102, 10003, 2)))
    box.run("crv", *options, "-r", "0,7", "-fd", "times.req")
    return [float(line.split()[0]) for line in box.text("times.dat").splitlines() if line.strip()]


def last_row(box):
    """The number of the last row that a run reads from a column file of 10,005 rows."""
    box.write("rows.pos", "A B\n" + "1 2\n" * 10005)
    printed = box.run("crv", "-r", "0,1", "-fp", "rows.pos", "-d", "86", "-w", "x")[1]
    return int(float(re.search(r'max      = "(.*)"', printed).group(1)))


def expected_request_values():
    """The value of each item as the words of the manual page have it."""
    words = [f"{word} number" for word in ("first", "second", "third", "fourth", "fifth", "sixth")]
    return dict(zip(words, NUMBERS)) | {
        "magnitude of the first three": math.hypot(*NUMBERS[:3]),
        "magnitude of the fourth to sixth": math.hypot(*NUMBERS[3:]),
    }
