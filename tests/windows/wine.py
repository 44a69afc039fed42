"""Runs the program for Windows under Wine.

Wine has a prefix of its own in the directory "wine" beside the program, where start_as.exe is too;
prefix.py makes it. As from a command interpreter, the name of the program is "crv". "lpr" is a
batch file for the interpreter under Wine. Output is compared without CR, but each line of a file
that the program writes must have one. The numbers of the system must be there, whatever they are.
"""
import pathlib
import re

HERE = pathlib.Path(__file__).resolve().parent
DIFFERENCES = HERE / "differences.md"
LPR = '@echo off\r\nfor %%w in (%*) do echo [%%w]> printed\r\n'
SYSTEM = re.compile(rb"Windows_NT [1-9]\d*\.\d+ os-[1-9]\d*\.wi-[1-9]\d*")
WRITTEN_BY_THE_PROGRAM = {".ps", ".dat", ".use", ".log"}


def environment(program, wine):
    """The environment of Wine, and the variables of crv.sh and start_as.exe."""
    return {"WINEPREFIX": str(program.parent / "wine"), "HOME": str(program.parent),
            "WINEDEBUG": "-all", "WINEDLLOVERRIDES": "mscoree,mshtml,winemenubuilder.exe=",
            "DISPLAY": "", "TZ": "UTC0", "PATH": "/usr/bin:/bin", "CRV_WINE": str(wine),
            "CRV_START_AS": str(program.parent / "start_as.exe"), "CRV_PROGRAM": str(program)}


def differences():
    """The rows of the page: by case, the files for Windows and the reason."""
    rows = re.findall(r"^\| `(\S+/\S+)` \| (.*?) \| (.*?) \|$", DIFFERENCES.read_text(), re.M)
    return {case: (what, reason) for case, what, reason in rows}


class Wine:
    """Runs the program under Wine."""

    def __init__(self, program, wine):
        self.environment = environment(pathlib.Path(program), wine)
        self.differences = differences()

    def make_tools(self, directory):
        others = pathlib.Path(self.environment["CRV_PROGRAM"]).parent.glob("crv-*.exe")
        for name in ("crv", *(path.stem for path in others)):
            (directory / name).symlink_to(HERE / "crv.sh")
        (directory / "lpr.bat").write_text(LPR)
        return {**self.environment, "PATH": f"{directory}:/usr/bin:/bin",
                "WINEPATH": f"Z:{directory}".replace("/", "\\")}

    def file_of(self, case, name):
        own = case / f"{name}.windows"
        return own if own.exists() else case / name

    def golden_path(self, case, name, data):
        """A file *.windows only where the output differs."""
        own = case / f"{name}.windows"
        if name == "out":
            usual = {str(p.relative_to(case / name)): p.read_bytes()
                     for p in (case / name).rglob("*") if p.is_file()}
        else:
            usual = (case / name).read_bytes() if (case / name).exists() else b""
        if data != usual:
            return own
        if own.exists() and name != "out":
            own.unlink()
        return None

    def normalize(self, name, data):
        text = SYSTEM.sub(b"Windows_NT MAJOR.MINOR os-BUILD.wi-BOTH", data.replace(b"\r\n", b"\n"))
        lines = data.count(b"\n")
        if pathlib.Path(name).suffix in WRITTEN_BY_THE_PROGRAM and data.count(b"\r\n") != lines:
            return b"Not all line ends are CR LF.\n" + text
        return text

    def reason_to_skip(self, name):
        what, reason = self.differences.get(name, ("", None))
        return reason if what == "left out" else None
