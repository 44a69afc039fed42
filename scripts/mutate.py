#!/usr/bin/env python3
"""Mutation testing: changes src/ in one place at a time and lists the changes that no test detects.

    mutate.py [--fresh] [COUNT [SEED]]
        Tries COUNT mutants (default 100) drawn from SEED (default 1), in parallel.
    mutate.py --list [COUNT [SEED]]
        Lists them.
    mutate.py --change FILE:LINE OLD NEW [N]
        Tries one change: occurrence N (default 1) of OLD in that line becomes NEW.

A mutant is a program with one change; mutations.py says which there are. It is killed if a unit
test or a case fails, crashes or exceeds its time limit, and for sources that only a terminal or a
limit of memory reaches (SCRIPTS), a test of tests/cli. One that does not compile is replaced by the
next one.

Some changes cannot be seen in any output: mutate_equivalents.txt lists them, each with an argument.
They do not count towards COUNT nor the score. The status is 0 if at least 99 % of the others are
killed, the list makes at most 12 % of all mutants, and no listed mutant is killed.

The work is done below build/mutate: a copy of the tree, an unoptimised build of it, and a directory
for each worker. Results are appended to build/mutate/results-SEED.jsonl as they come. The next run
with that seed continues there: results are valid as long as the code of src/ is the same, comments
aside, and survivors are tried again when the tests have changed. --fresh starts again.
CRV_MUTATE_JOBS is the number of workers, one per processor by default.
"""
import argparse
import collections
import fcntl
import hashlib
import json
import os
import pathlib
import re
import shlex
import shutil
import signal
import subprocess
import sys
import threading
import time

from mutations import Mutation, draw_mutations, one_line, sources_of, tokens_of

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "mutate"
TREE = WORK / "tree"
BASE = WORK / "base"
EQUIVALENTS = ROOT / "scripts" / "mutate_equivalents.txt"
COPIED = ["CMakeLists.txt", "CMakePresets.json", "cmake", "scripts", "src", "tests", "bench",
          "examples", "companions", "completions", "man", "docs", "LICENSE", "README.md",
          "CHANGELOG.md"]

MIN_SCORE = 0.99
MAX_EQUIVALENT = 0.12
SCRIPTS = {"src/text/progress.cpp": "progress", "src/system/status_line.cpp": "progress",
           "src/system/status_line_posix.cpp": "progress",
           "src/system/terminal_posix.cpp": "terminal_chart",
           "src/app/main.cpp": "memory_limit", "src/app/viewer.cpp": "memory_limit"}
SCRIPT_SECONDS = 600
CPU_SECONDS = 10  # of one process of a mutant
MEMORY_KIB = 4 * 1024 * 1024
TIME_LIMIT = "a time limit"
FILE_BLOCKS = 1024 * 1024  # of 512 bytes or 1 KiB, by shell
MAINS = {"crv" + path.stem.removeprefix("main").replace("_", "-"): f"src/app/{path.name}"
         for path in sorted((ROOT / "src" / "app").glob("main*.cpp"))}  # by program
TARGETS = ("CMakeFiles/crv_core.dir/", "tests/CMakeFiles/crv_unit_tests.dir/",
           *(f"CMakeFiles/{program}.dir/" for program in MAINS))
OPTION_TEXTS = ("src/app/option_table.h", "src/app/viewer_options.h")


# ----- the copy of the tree, its build and its tests

def run(command, **more):
    return subprocess.run([str(word) for word in command], check=True, **more)


def copy_tree():
    """Copies what is built and tested; unchanged files keep their time, so that little is built."""
    TREE.mkdir(parents=True, exist_ok=True)
    wanted = set()
    for name in COPIED:
        place = ROOT / name
        for source in [place] if place.is_file() else sorted(place.rglob("*")):
            if not source.is_file() or "__pycache__" in source.parts:
                continue
            target = TREE / source.relative_to(ROOT)
            wanted.add(target)
            if target.exists() and target.read_bytes() == source.read_bytes():
                continue
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(source, target)
            os.utime(target)
    for target in [p for p in TREE.rglob("*") if p.is_file() and p not in wanted]:
        if "__pycache__" not in target.parts:
            target.unlink()
    for place in sorted((p for p in TREE.rglob("*") if p.is_dir()), reverse=True):
        if not any(place.iterdir()):
            place.rmdir()


def configure():
    """The unit tests include GoogleTest from a precompiled header; a change of a header compiles
    many of them again."""
    hook = WORK / "precompile.cmake"
    hook.write_text("cmake_language(DEFER CALL target_precompile_headers crv_unit_tests PRIVATE\n"
                    "  <gmock/gmock.h> <gtest/gtest.h> <fstream> <string> <vector>)\n")
    linker = ["-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld"] if shutil.which("ld.lld") else []
    run(["cmake", "-S", TREE, "-B", BASE, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
         "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DCRV_TESTS=ON",
         f"-DCMAKE_PROJECT_crv_INCLUDE={hook}"] + linker, stdout=subprocess.DEVNULL,
        env=os.environ | {"SOURCE_DATE_EPOCH": "0"})  # the copy has no commits


def build_base(jobs):
    configure()
    run(["ninja", "-C", BASE, "-j", jobs, "programs", "crv_unit_tests"], stdout=subprocess.DEVNULL)


class Build:
    """How the build compiles and links, read from it."""

    def __init__(self):
        self.compile = {}  # the command, by source
        for entry in json.loads((BASE / "compile_commands.json").read_text()):
            source = pathlib.Path(entry["file"])
            words = shlex.split(entry["command"])
            # Other programs compile some of the sources again; the header is precompiled once.
            is_linked = words[words.index("-o") + 1].startswith(TARGETS)
            if is_linked and source.is_relative_to(TREE):
                self.compile[source.relative_to(TREE).as_posix()] = words
        self.links = {program: self.link_command(program) for program in MAINS}
        self.unit_link = self.link_command("tests/crv_unit_tests")
        self.dependents = self.read_dependents()

    @staticmethod
    def link_command(target):
        text = run(["ninja", "-C", BASE, "-t", "commands", "-s", target],
                   capture_output=True, text=True).stdout.strip().splitlines()[-1]
        words = shlex.split(text)
        words = words[words.index("&&") + 1:] if "&&" in words else words
        return words[:words.index("&&")] if "&&" in words else words

    def read_dependents(self):
        """The sources that include each header."""
        listing = run(["ninja", "-C", BASE, "-t", "deps"], capture_output=True, text=True).stdout
        dependents, target = collections.defaultdict(set), None
        by_object = {self.object_of(source): source for source in self.compile}
        for line in listing.splitlines():
            if line and not line.startswith(" "):
                target = line.split(":")[0]
            elif line.strip().startswith(str(TREE / "src")) and target in by_object:
                header = pathlib.Path(line.strip()).relative_to(TREE).as_posix()
                dependents[header].add(by_object[target])
        return dependents

    def object_of(self, source):
        words = self.compile[source]
        return words[words.index("-o") + 1]


class Timeout(Exception):
    pass


def run_limited(words, seconds, cwd, environment):
    """Runs a command of a mutant with limits. Returns its status and output."""
    limits = f"ulimit -t {CPU_SECONDS}; ulimit -v {MEMORY_KIB}; ulimit -f {FILE_BLOCKS}"
    words = ["sh", "-c", limits + '; exec "$@"', "sh"] + [str(word) for word in words]
    output = pathlib.Path(cwd) / "output"
    with open(output, "wb") as out:
        process = subprocess.Popen(words, cwd=cwd, env=environment, stdin=subprocess.DEVNULL,
                                   stdout=out, stderr=subprocess.STDOUT, start_new_session=True)
        try:
            status = process.wait(timeout=seconds)
        except subprocess.TimeoutExpired:
            raise Timeout() from None
        finally:
            try:
                os.killpg(process.pid, signal.SIGKILL)  # whatever the tests have left
            except ProcessLookupError:
                pass
            process.wait()
    with open(output, "rb") as lines:
        return status, lines.read(1 << 24).decode("utf-8", "replace")


class Suites:
    """The names of unit tests and cases, and the order in which they are likely to kill."""

    def __init__(self):
        self.by_source = collections.defaultdict(list)
        for path in sorted((TREE / "tests" / "unit").glob("*_test.cpp")):
            text = path.read_text()
            suites = sorted(set(re.findall(r"^TEST(?:_[FP])?\((\w+),", text, re.MULTILINE)))
            stem = path.stem.removesuffix("_test")
            for source in sources_of(TREE):
                name = source.relative_to(TREE / "src").as_posix()
                header = re.sub(r"(_posix)?\.(cpp|h)$", ".h", name)
                same_name = re.sub(r"_posix$", "", source.stem) == stem
                same_directory = source.parent.name == stem
                if same_name or same_directory or f'#include "{header}"' in text:
                    self.by_source["src/" + name] += suites
        cases = TREE / "tests" / "cases"
        self.cases = sorted(str(p.parent.relative_to(cases)) for p in cases.rglob("cmd"))
        self.kills = collections.defaultdict(collections.Counter)

    def likely_units(self, file):
        return ":".join(f"{suite}.*" for suite in self.by_source[file])

    def ordered_cases(self, file):
        kills, directory = self.kills[file], self.kills[os.path.dirname(file)]
        return sorted(self.cases, key=lambda case: (-kills[case], -directory[case], case))

    def note_kill(self, file, killer):
        self.kills[file][killer] += 1
        self.kills[os.path.dirname(file)][killer] += 1


class Worker:
    """Builds and tests mutants in a directory of its own."""

    def __init__(self, number, build, suites, limits):
        self.place = WORK / f"worker-{number}"
        self.build, self.suites, self.limits = build, suites, limits
        self.scratch = self.place / "scratch"

    def clear(self):
        shutil.rmtree(self.place, ignore_errors=True)
        (self.place / "objects").mkdir(parents=True)
        self.scratch.mkdir()

    def environment(self):
        leaks = TREE / "tests" / "unit" / "leaks.supp"
        return {"PATH": os.environ["PATH"], "HOME": str(self.scratch), "TMPDIR": str(self.scratch),
                "TEST_TMPDIR": f"{self.scratch}/", "TZ": os.environ.get("TZ", ""),
                "LSAN_OPTIONS": f"suppressions={leaks}:print_suppressions=0"}

    def compile(self, sources):
        """Compiles the sources with the changed file before the others. Returns the objects by
        those of the build, or None if one does not compile."""
        objects = {}
        for source in sources:
            words = list(self.build.compile[source])
            target = self.place / "objects" / source.replace("/", "_")
            original = self.build.object_of(source)
            words[words.index("-o") + 1] = f"{target}.o"
            changed = self.place / source
            if changed.exists():
                words[words.index("-c") + 1] = str(changed)
            words[1:1] = [f"-I{self.place / 'src'}"]
            words += ["-Werror=return-type"]
            if subprocess.run(words, cwd=BASE, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, check=False).returncode:
                return None
            objects[original] = f"{target}.o"
        return objects

    def link(self, words, name, objects):
        """Links as the build does. Objects of the library stand before it, which hides those that
        it contains; the main routines of other programs are left out."""
        target = str(self.place / name)
        others = {self.build.object_of(main) for main in MAINS.values()} - set(words)
        objects = {old: new for old, new in objects.items() if old not in others}
        words = [objects.get(word, word) for word in words]
        words[words.index("-o") + 1] = target
        library = next(k for k, word in enumerate(words) if word.endswith("libcrv_core.a"))
        words[library:library] = [new for new in objects.values() if new not in words]
        done = subprocess.run(words, cwd=BASE, capture_output=True, check=False)
        if done.returncode:
            raise RuntimeError(f"link failed: {done.stderr.decode()}")
        return target

    def run_units(self, program, selection):
        words = [program, "--gtest_brief=1", "--gtest_fail_fast", f"--gtest_filter={selection}"]
        status, output = run_limited(words, self.limits["units"], self.scratch, self.environment())
        if status == 0:
            return None
        failed = re.findall(r"\[  FAILED  \] (\w+\.\w+)", output)
        return failed[0] if failed else f"crash of the unit tests (status {status})"

    def run_cases(self, program, names):
        words = [sys.executable, TREE / "tests" / "run_cases.py", "--crv", program, "--fail-fast"]
        status, output = run_limited(words + names, self.limits["cases"], self.scratch,
                                     self.environment())
        if status == 0:
            return None
        failed = re.findall(r"^FAIL (\S+)", output, re.MULTILINE)
        return failed[0] if failed else f"crash of a case (status {status})"

    def run_script(self, program, name):
        words = [sys.executable, TREE / "tests" / "cli" / f"{name}.py", "--crv", program]
        status, _ = run_limited(words, SCRIPT_SECONDS, self.scratch, self.environment())
        return f"{name}.py" if status else None

    def run_option_check(self):
        """The texts of the option table are seen in the documents and completions only."""
        program = str(self.place / "print_options")
        subprocess.run(["g++", "-std=c++20", f"-I{self.place / 'src'}", f"-I{TREE / 'src'}",
                        TREE / "scripts/print_options.cpp", "-o", program], check=True)
        status, _ = run_limited([sys.executable, TREE / "scripts/generate_options.py", "--check",
                                 program], self.limits["cases"], self.scratch, self.environment())
        return "lint/options" if status else None

    def link_programs(self, objects):
        """Returns crv; the others are beside it, where the cases look for them."""
        for program, words in self.build.links.items():
            self.link(words, program, objects)
        return str(self.place / "crv")

    def find_killer(self, file, objects):
        likely = self.suites.likely_units(file)
        units = None
        if file in OPTION_TEXTS:
            killer = self.run_option_check()
            if killer:
                return killer
        if likely:
            units = self.link_units(file, objects)
            killer = self.run_units(units, likely)
            if killer:
                return killer
        crv = self.link_programs(objects)
        killer = self.run_cases(crv, self.suites.ordered_cases(file))
        if killer:
            return killer
        units = units or self.link_units(file, objects)
        killer = self.run_units(units, "-" + likely if likely else "*")
        if not killer and file in SCRIPTS:
            killer = self.run_script(crv, SCRIPTS[file])
        return killer

    def link_units(self, file, objects):
        tests = [s for s in sorted(self.build.dependents[file]) if s.startswith("tests/")]
        objects = objects | (self.compile(tests) or {})
        return self.link(self.build.unit_link, "crv_unit_tests", objects)

    def try_mutant(self, mutation, text):
        """Returns the result: invalid, killed or survived, and the test that killed."""
        self.clear()
        changed = self.place / mutation.file
        changed.parent.mkdir(parents=True)
        changed.write_text(text)
        sources = [mutation.file] if mutation.file in self.build.compile else \
            [s for s in sorted(self.build.dependents[mutation.file]) if s.startswith("src/")]
        if not sources:
            raise RuntimeError(f"{mutation.file}: nothing includes it")
        objects = self.compile(sources)
        if objects is None:
            return "invalid", None
        try:
            killer = self.find_killer(mutation.file, objects)
        except Timeout:
            killer = TIME_LIMIT
        return ("killed", killer) if killer else ("survived", None)


# ----- results

def fingerprint(parts):
    return hashlib.sha256("\0".join(parts).encode()).hexdigest()[:16]


def code_fingerprint():
    return fingerprint(f"{p.relative_to(TREE)} {t.text}" for p in sources_of(TREE)
                       for t in tokens_of(p.read_text()))


def tests_fingerprint():
    files = sorted(p for name in ("tests", "examples") for p in (TREE / name).rglob("*")
                   if p.is_file() and "__pycache__" not in p.parts)
    return fingerprint(f"{p} {hashlib.sha256(p.read_bytes()).hexdigest()}" for p in files)


class Results:
    """What is known from earlier runs, and what comes."""

    def __init__(self, path, fresh):
        self.path = path
        self.code, self.tests = code_fingerprint(), tests_fingerprint()
        self.known = {}
        if fresh:
            path.unlink(missing_ok=True)
        for line in path.read_text().splitlines() if path.exists() else []:
            entry = json.loads(line)
            if entry["code"] != self.code:
                continue
            if entry["result"] == "survived" and entry["tests"] != self.tests:
                self.known.pop(entry["key"], None)
                continue
            self.known[entry["key"]] = entry

    def add(self, mutation, result, killer, seconds):
        entry = {"code": self.code, "tests": self.tests, "key": mutation.key, "result": result,
                 "killer": killer, "seconds": round(seconds, 2)}
        self.known[mutation.key] = entry
        with open(self.path, "a") as out:
            out.write(json.dumps(entry) + "\n")


def read_equivalents():
    """Entries are separated by empty lines: FILE: OLD -> NEW, the line of the source, and the
    argument."""
    entries = {}
    text = EQUIVALENTS.read_text() if EQUIVALENTS.exists() else ""
    blocks = re.split(r"\n\s*\n", re.sub(r"^#.*\n", "", text, flags=re.MULTILINE).strip())
    for block in filter(None, blocks):
        lines = block.splitlines()
        if len(lines) < 3:
            sys.exit(f"{EQUIVALENTS}: an entry without an argument: {lines[0]}")
        file, change = lines[0].split(": ", 1)
        entries[file, one_line(lines[1]), change.strip()] = one_line(" ".join(lines[2:]))
    return entries


def is_listed(mutation, equivalents):
    return (mutation.file, mutation.text, mutation.change) in equivalents


def stale_entries(equivalents):
    for file, text, change in equivalents:
        path = TREE / file
        if not path.exists() or text not in {one_line(line) for line in
                                             path.read_text().splitlines()}:
            yield f"{file}: {change}\n        {text}"


class Session:
    """Hands out mutants to the workers until `count` valid ones, equivalents aside, are known."""

    def __init__(self, count, seed, results, equivalents, workers):
        self.count, self.results, self.equivalents = count, results, equivalents
        self.mutations = draw_mutations(TREE, seed)
        self.lock = threading.Condition()
        self.workers = workers
        self.counted = self.in_flight = 0
        self.drawn = []
        self.stopped = False
        self.failed = False  # a worker

    def next_mutation(self):
        """The next mutant to be tried, or None if there are enough."""
        with self.lock:
            while not self.stopped:
                if self.counted + self.in_flight < self.count:
                    drawn = next(self.mutations, None)
                    if not drawn:
                        return None
                    self.drawn.append(drawn[0])
                    known = self.results.known.get(drawn[0].key)
                    if known:
                        self.count_result(drawn[0], known["result"])
                        continue
                    self.in_flight += 1
                    return drawn
                if self.in_flight == 0:
                    return None
                self.lock.wait()
        return None

    def count_result(self, mutation, result):
        if result != "invalid" and not is_listed(mutation, self.equivalents):
            self.counted += 1

    def finish(self, mutation, result, killer, seconds):
        with self.lock:
            self.results.add(mutation, result, killer, seconds)
            self.in_flight -= 1
            self.count_result(mutation, result)
            word = f"killed by {killer}" if killer else result
            print(f"{self.counted:4}/{self.count} {seconds:5.1f} s  {mutation.file}:{mutation.line}"
                  f" {mutation.change}: {word}", flush=True)
            self.lock.notify_all()

    def work(self, worker):
        try:
            while drawn := self.next_mutation():
                mutation, new = drawn
                source = (TREE / mutation.file).read_text()
                begin = time.monotonic()
                result, killer = worker.try_mutant(
                    mutation, source[:mutation.start] + new + source[mutation.end:])
                if killer:
                    worker.suites.note_kill(mutation.file, killer)
                self.finish(mutation, result, killer, time.monotonic() - begin)
        except BaseException:
            self.failed = True
            raise
        finally:
            with self.lock:
                self.stopped = True
                self.lock.notify_all()

    def run(self):
        threads = [threading.Thread(target=self.work, args=(w,), daemon=True) for w in self.workers]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()


def report(session, seed):
    by_result = collections.defaultdict(list)
    wrong = []
    for mutation in session.drawn:
        entry = session.results.known.get(mutation.key)
        if not entry or entry["result"] == "invalid":
            continue
        if is_listed(mutation, session.equivalents):
            by_result["equivalent"].append(mutation)
            if entry["result"] == "killed":
                wrong.append((mutation, entry["killer"]))
        else:
            by_result[entry["result"]].append(mutation)
    killed, survived = len(by_result["killed"]), len(by_result["survived"])
    equivalent = len(by_result["equivalent"])
    slow = sum(session.results.known[m.key]["killer"] == TIME_LIMIT for m in by_result["killed"])
    for mutation in by_result["survived"]:
        print(f"SURVIVED {mutation}")
    for mutation, killer in wrong:
        print(f"LISTED AS EQUIVALENT, killed by {killer}: {mutation}")
    for entry in stale_entries(session.equivalents):
        print(f"LISTED, no longer in the source: {entry}")
    if session.failed or killed + survived == 0:
        sys.exit("incomplete")
    score, share = killed / (killed + survived), equivalent / (killed + survived + equivalent)
    print(f"seed {seed}: {killed} of {killed + survived} killed ({100 * score:.1f} %), {slow} of "
          f"them by a time limit; {equivalent} more are equivalent ({100 * share:.1f} % of all)")
    return score >= MIN_SCORE and share <= MAX_EQUIVALENT and not wrong


def measure_limits(build, suites):
    """The tests must pass on the unchanged program; their time gives the limits."""
    limits = {"units": 600, "cases": 600}
    worker = Worker("base", build, suites, limits)
    worker.clear()
    begin = time.monotonic()
    killer = worker.run_units(str(BASE / "tests" / "crv_unit_tests"), "*")
    units = time.monotonic()
    killer = killer or worker.run_cases(str(BASE / "crv"), suites.cases)
    cases = time.monotonic()
    for name in sorted(set(SCRIPTS.values())):
        killer = killer or worker.run_script(str(BASE / "crv"), name)
    if killer:
        sys.exit(f"the unchanged program fails: {killer}")
    print(f"unit tests {units - begin:.1f} s, cases {cases - units:.1f} s")
    return {"units": 15 + 5 * (units - begin), "cases": 15 + 5 * (cases - units)}


def try_change(place, old, new, nth, build, suites, limits):
    file, line = place.rsplit(":", 1)
    text = (TREE / file).read_text()
    at = sum(len(part) for part in text.splitlines(True)[:int(line) - 1]) - 1
    for _ in range(nth):
        at = text.find(old, at + 1)
    mutation = Mutation("change", file, 0, at, at + len(old), int(line), "", old, new, nth)
    if at < 0 or text.count("\n", 0, at) + 1 != int(line):
        sys.exit(f"{place}: no `{old}`")
    worker = Worker("change", build, suites, limits)
    result, killer = worker.try_mutant(mutation, text[:at] + new + text[at + len(old):])
    print(f"{place}: {old} -> {new}: {result}" + (f" by {killer}" if killer else ""))
    return result == "killed"


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--fresh", action="store_true")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--change", nargs="+")
    parser.add_argument("count", nargs="?", type=int, default=100)
    parser.add_argument("seed", nargs="?", type=int, default=1)
    given = parser.parse_args()
    jobs = int(os.environ.get("CRV_MUTATE_JOBS") or os.cpu_count() or 1)

    WORK.mkdir(parents=True, exist_ok=True)
    lock = open(WORK / "lock", "w")
    try:
        fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except BlockingIOError:
        sys.exit(f"another run uses {WORK}")
    copy_tree()
    if given.list:
        drawn = draw_mutations(TREE, given.seed)
        print(*(next(drawn)[0] for _ in range(given.count)), sep="\n")
        return
    build_base(jobs)
    build, suites = Build(), Suites()
    limits = measure_limits(build, suites)
    if given.change:
        place, old, new, *nth = given.change
        sys.exit(0 if try_change(place, old, new, int(nth[0]) if nth else 1, build, suites, limits)
                 else 1)
    results = Results(WORK / f"results-{given.seed}.jsonl", given.fresh)
    workers = [Worker(k, build, suites, limits) for k in range(jobs)]
    session = Session(given.count, given.seed, results, read_equivalents(), workers)
    session.run()
    sys.exit(0 if report(session, given.seed) else 1)


if __name__ == "__main__":
    main()
