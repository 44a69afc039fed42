"""The tests of a completion: a shell on a pseudo-terminal in which crv and the viewers are
functions that write their arguments to a file. They are those that the program would get, without
quotes."""
import pathlib
import sys

import questions

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2]))
from support import sandbox  # noqa: E402  (found by the path above)
from support.terminal import Terminal  # noqa: E402

PROGRAMS = ("crv", "crv-html", "crv-term", "crv-csv", "crv-info")
SPY = "".join(f'{program}() {{ printf "%s\\0" "$@" >took.new; command mv took.new took; }}\n'
              for program in PROGRAMS)
PROMPT = b"ready> "
# Keys to type, and the arguments that the command line then has, in every shell.
KEYS = (("crv -fm my\t", ["-fm", "my run.mad"]), ("crv -fm my\\ r\t", ["-fm", "my run.mad"]),
        ("crv -f ru\t-p", ["-f", "run1.req", "-p"]), ("crv -r 0,7\t3", ["-r", "0,70:3"]),
        ("crv -r 0,38:3=ma\t-f", ["-r", "0,38:3=max", "-f"]))
QUOTES = (('crv -fm "my r\t', ["-fm", "my run.mad"]),
          ("crv -fm '$\t", ["-fm", "$(touch pwned).mad"]), ("crv -fm x:\t", ["-fm", "x:y.mad"]),
          ("crv -fm x\t", ["-fm", "x:y.mad"]), ("crv -f ~/ho\t", ["-f", "{home}/home.req"]),
          ("crv -r 0 -f run1.req >no\t", ["-r", "0", "-f", "run1.req"]),
          # The cursor goes back to the selection.
          ("crv -r 3 -fm sled.mad" + 13 * "\x02" + "\t4", ["-r", "3:4", "-fm", "sled.mad"]))


class ShellOnTerminal(Terminal):
    def __init__(self, directory, command, environment):
        path = f"{environment['HOME']}/bin:{sandbox.SYSTEM_PATH}"  # of the sandbox
        super().__init__(command, directory, {"PATH": path, "TERM": "dumb",
                                              "LC_ALL": "C.UTF-8", **environment})
        self.took = directory / "took"
        self.wait_for(lambda: PROMPT in self.screen)

    def run(self, keys):
        """Types the keys and return; gives the arguments that crv was called with."""
        self.screen = b""
        self.type(keys + "\r")
        self.wait_for(self.took.exists)
        arguments = self.took.read_bytes().decode().split("\0")[:-1]
        self.took.unlink()
        self.wait_for(lambda: PROMPT in self.screen)
        return arguments

    def lines(self):
        """The lines of the screen, with single blanks."""
        return [" ".join(line.split()) for line in self.text().splitlines()]

    def shows(self, keys, lines):
        """Whether the keys make the shell show the lines."""
        self.screen = b""
        self.type(keys)
        shown = self.read_until(lambda: set(lines) <= set(self.lines()))
        self.type("\x15crv shown\r")
        self.wait_for(self.took.exists)
        self.took.unlink()
        self.wait_for(lambda: PROMPT in self.screen)
        return shown


class Completion(sandbox.Sandbox):
    """A shell has launch(directory, settings), which returns a ShellOnTerminal, and offered(shell,
    line), which returns the words offered after a line. `dir` has the usual files."""
    keys = KEYS
    lists = ()

    def setUp(self):
        super().setUp()
        (self.base / "home.req").write_text("")
        questions.make_usual(self)

    def tearDown(self):
        self.assertEqual([*self.base.rglob("pwned")], [], "text was run")

    def open(self, directory, settings=""):
        shell = self.launch(directory, settings)
        self.addCleanup(shell.kill)
        return shell

    def ask_in(self, directory):
        """A function that returns the words offered after a line."""
        shell = self.open(directory)
        return lambda line: self.offered(shell, line)


def expect_offers(box, sentence, asks, line, expected):
    box.expect(f"{sentence}: {line!r}", sorted(word.rstrip("/") for word in asks(line)),
               sorted(expected))


def test_usual_files(box):
    asks = box.ask_in(box.dir)
    for sentence, line, expected in questions.USUAL:
        expect_offers(box, sentence, asks, line, expected)


def test_odd_request_files(box):
    for number, (sentence, files, expected) in enumerate(questions.ODD_DIRECTORIES):
        directory = box.base / str(number)
        directory.mkdir()
        questions.make_odd(directory, files)
        expect_offers(box, sentence, box.ask_in(directory), "crv -r 0,",
                      [f"0,{request}" for request in expected])


def test_keys(box):
    """The tab key completes the word on the line, or shows the words and their help."""
    shell = box.open(box.dir)
    for keys, expected in box.keys:
        expected = [word.replace("{home}", str(box.base)) for word in expected]
        box.expect(repr(keys), shell.run(keys), expected)
    for keys, lines in box.lists:
        box.assertTrue(shell.shows(keys, lines), f"{keys!r} shows {lines}: {shell.lines()}")
    box.assertNotIn("no", box.names())  # the file after > was completed


def test_strict_settings(box):
    shell = box.open(box.dir, box.strict_settings)
    box.assertEqual(box.offered(shell, "crv -r "), ["0,", *questions.REQUESTS])


def main(kind, test):
    """Runs the tests of all shells and one more."""
    sandbox.require(kind.shell)
    tests = [test_usual_files, test_odd_request_files, test_keys, test]
    sandbox.main(sandbox.given("--crv"), kind, tests)
