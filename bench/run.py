#!/usr/bin/env python3
"""Compares crv with the tools that a user would take instead, on the same work in one run.

    bench/run.py BUILD_DIR           prints the tables
    bench/run.py BUILD_DIR --write   also writes them to bench/README.md

The large files are generated once in BUILD_DIR/bench_files (3 GB). The tools of a job run in turn:
once to warm the page cache, and then five times. The tables show medians of wall time, with minimum
and maximum, and of CPU time (user and system, of all processes). Outputs are removed before each
run, because writing over a file takes longer than a new one; they go to a memory file system if
there is one. The output of other tools is compared with that of crv before they are timed.

Goals hold for wall time and for CPU time. A goal in times of `wc -l` depends on how fast `wc -l`
counts here: one is for 6 GB/s or less, one for 8.5 GB/s or more, and between them is a line.
"""
import concurrent.futures
import os
import pathlib
import platform
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

from goals import verdict
from pages import job_pages

RUNS = 5
HERE = pathlib.Path(__file__).resolve().parent


class Bench:
    def __init__(self, build):
        self.crv = str(build / "crv")
        self.make = str(build / "bench" / "crv_make_files")
        self.pieces = str(build / "bench" / "crv_bench_pieces")
        self.files = build / "bench_files"
        self.files.mkdir(exist_ok=True)
        shared = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
        self.scratch = pathlib.Path(tempfile.mkdtemp(dir=shared))
        self.kept = set()  # files of the scratch directory that are inputs
        self.wc_rate = 0.0  # GB/s, set by job b
        self.rows = []

    def file(self, name, *arguments):
        path = self.files / name
        if not path.exists():
            with open(path, "wb") as out:
                subprocess.run([self.make, *map(str, arguments)], stdout=out, check=True)
        # crv writes its table next to its input file: a link redirects it to the scratch directory
        link = self.scratch / name
        if not link.exists():
            link.symlink_to(path)
        return link

    def start(self, command, out):
        return subprocess.Popen(command, cwd=self.scratch, stdin=subprocess.DEVNULL,
                                stdout=out, stderr=subprocess.DEVNULL,
                                env={**os.environ, "CRV_PRINTCHAIN": ":", "LC_ALL": "C"})

    def output(self, command):
        return self.start(command, subprocess.PIPE).communicate()[0]

    def time(self, command):
        """Wall and CPU seconds of one run. Its output goes to a file: some tools skip their work if
        it goes to /dev/null."""
        for path in self.scratch.iterdir():
            if not path.is_symlink() and path not in self.kept:
                path.unlink()
        with open(self.scratch / "output", "wb") as out:
            begin = time.perf_counter()
            process = self.start(command, out)
            _, status, usage = os.wait4(process.pid, 0)
            wall = time.perf_counter() - begin
            process.returncode = os.waitstatus_to_exitcode(status)
        return wall, usage.ru_utime + usage.ru_stime

    def peak_kb(self, command):
        """Measured by time(1): a process that Python starts begins with the memory of Python."""
        report = self.scratch / "peak"
        self.start(["time", "-f", "%M", "-o", str(report), *command], subprocess.DEVNULL).wait()
        return int(report.read_text().split()[-1])

    def measure(self, commands):
        """Runs the commands in turn. Returns medians, bounds and peaks by name."""
        runs = {name: [] for name in commands}
        for turn in range(1 + RUNS):
            for name, command in commands.items():
                result = self.time(command)
                if turn > 0:
                    runs[name].append(result)
        results = {}
        for name, measured in runs.items():
            walls, cpus = zip(*measured)
            results[name] = {"wall": statistics.median(walls), "low": min(walls),
                             "high": max(walls), "cpu": statistics.median(cpus),
                             "kb": self.peak_kb(commands[name])}
        return results

    def job(self, letter, text, size, commands, goals):
        """Times commands and adds a table to the report. `commands` maps names to commands, crv
        first. `goals` has tuples (name, factor, kind): with '<=' crv takes at most factor times the
        time of the tool, with '>=' it is at least factor times as fast. A factor can be a pair, for
        slow and for fast memory."""
        results = self.measure(commands)
        if letter == "b":
            self.wc_rate = size / 1e9 / results["wc -l"]["wall"]
        mine = results["crv"]
        lines = ["| tool | wall s | spread | CPU s | MB/s | peak MB | wall / crv | CPU / crv |",
                 "|---|---|---|---|---|---|---|---|"]
        for name, r in results.items():
            lines.append(f"| {name} | {r['wall']:.4f} | {r['low']:.4f} to {r['high']:.4f} | "
                         f"{r['cpu']:.4f} | {size / 1e6 / r['wall']:.0f} | {r['kb'] / 1024:.1f} | "
                         f"{r['wall'] / mine['wall']:.2f} | {r['cpu'] / mine['cpu']:.2f} |")
        lines.append("")
        for name, factor, kind in goals:
            limit = self.limit(factor)
            ratios = [mine[clock] / results[name][clock] for clock in ("wall", "cpu")]
            if kind == ">=":
                ratios = [1 / ratio for ratio in ratios]
            met = all(ratio <= limit if kind == "<=" else ratio >= limit for ratio in ratios)
            meaning = f"at most {limit:.2f} times {name}" if kind == "<=" else (
                f"at least {limit:.0f} times as fast as {name}")
            lines.append(f"- Goal: {meaning}. Wall {ratios[0]:.2f}, CPU {ratios[1]:.2f}: "
                         f"{verdict(met)}.")
        self.report([f"\n### {letter}: {text}\n", *lines])
        return results

    def limit(self, factor):
        """The factor of a goal at the rate of `wc -l` here."""
        if not isinstance(factor, tuple):
            return factor
        share = min(max((self.wc_rate - 6) / (8.5 - 6), 0), 1)
        return factor[0] + share * (factor[1] - factor[0])

    def cell_goal(self, result, factor):
        """Adds the time of a cell of 30 x 30,000, reading included."""
        wall, cpu = (result["crv"][clock] / 900_000 * 1e9 for clock in ("wall", "cpu"))
        limit = self.limit(factor)
        self.report([f"- Goal: at most {limit:.0f} ns a cell, reading included. Wall {wall:.0f}, "
                     f"CPU {cpu:.0f}: {verdict(max(wall, cpu) <= limit)}."])

    def report(self, lines):
        print(*lines, sep="\n", flush=True)
        self.rows += lines


def require_same(name, one, other):
    if one != other:
        sys.exit(f"{name}: the answers differ")


def awk_request(requests, wanted):
    """An awk program that prints the time and items of requests of a generated request file in the
    format of crv's table."""
    cells = "".join(f'if(k=={request}) v{n}=value({item});'
                    for n, (request, item) in enumerate(wanted))
    printed = ",".join(["t", *(f"v{n}" for n in range(len(wanted)))])
    picture = "%11.4e " * (len(wanted) + 1)
    return f"""function value(i) {{
  if (i <= 6) return $(i ? i : 1)
  if (i == 7) return sqrt(($2*$2+$1*$1)+$3*$3)
  return sqrt(($5*$5+$4*$4)+$6*$6)
}}
NR > {requests + 3} {{
  k = (NR - {requests + 4}) % {requests + 1}
  if (k == 0) t = $1
  {cells}
  if (k == {requests}) printf "{picture}\\n", {printed}
}}"""


def awk_table(requests, wanted, names, title):
    """An awk program whose output equals crv's table with all statistics, byte for byte."""
    count = len(wanted) + 1
    keep = "".join(f"keep({n}, {'t' if n == 0 else f'v{n - 1}'});" for n in range(count))
    row = "%11.4e " * count
    cells = ", ".join(["t", *(f"v{n}" for n in range(count - 1))])
    program = awk_request(requests, wanted)
    program = program[:program.rindex(f"if (k == {requests}) printf")]
    labels = "".join(f'name[{n}] = "{name}";' for n, name in enumerate(names))
    keep += f' line[step] = sprintf("{row}", {cells})'
    return program + f"""if (k == {requests}) {{ ++step; {keep} }}
}}
function keep(i, v,   a) {{
  a = v < 0 ? -v : v
  if (step == 1) {{
    lo[i] = hi[i] = first[i] = v; al[i] = ah[i] = a; sum[i] = 0
    los[i] = his[i] = als[i] = ahs[i] = bs[i] = step; lot[i] = hit[i] = alt[i] = aht[i] = bt[i] = t
  }}
  if (v > hi[i]) {{ hi[i] = v; his[i] = step; hit[i] = t }}
  if (v < lo[i]) {{ lo[i] = v; los[i] = step; lot[i] = t }}
  sum[i] += v; last[i] = v; es[i] = step; et[i] = t
  if (a > ah[i]) {{ ah[i] = a; ahs[i] = step; aht[i] = t }}
  if (a < al[i]) {{ al[i] = a; als[i] = step; alt[i] = t }}
}}
function words(text,   i) {{ for (i = 0; i < {count}; ++i) printf "%s", text; print "" }}
function numbers(picture, x,   i) {{ for (i = 0; i < {count}; ++i) printf picture, x[i]; print "" }}
function group(x, s, t, label) {{
  numbers("%11.4e ", x); numbers("s=%9d ", s); numbers("t=%9.2e ", t); words(label)
}}
END {{
  {labels}
  for (i = 0; i < {count}; ++i) {{ range[i] = hi[i] - lo[i]; mean[i] = sum[i] / step }}
  printf "\\n%-78s\\n\\n\\n", "{title}"
  words("----------- "); numbers("%-11.11s ", name)
  group(lo, los, lot, "Minimum ^^^ "); group(hi, his, hit, "Maximum ^^^ "); words("----------- ")
  group(al, als, alt, "ABSMIN  ^^^ "); group(ah, ahs, aht, "ABSMAX  ^^^ "); words("----------- ")
  group(first, bs, bt, "BEGINVal^^^ "); group(last, es, et, "ENDVal  ^^^ "); words("----------- ")
  numbers("%11.4e ", range); words("Range   ^^^ "); numbers("%11.4e ", mean); words("Mean    ^^^ ")
  words("=========== ")
  for (i = 1; i <= step; ++i) print line[i]
}}"""


def job_b(bench):
    big = bench.file("big.req", "req", 300, 30000)
    awk = 'NR>303{k=(NR-304)%301;if(k==0)t=$1;else if(k==150)printf"%11.4e %11.4e \\n",t,$3}'
    crv = [bench.crv, "-r", "0,1150:3", "-fd", big.name]
    perl_program = """next if $.<=303;
$k=($.-304)%301;
if($k==0){($t)=split} elsif($k==150){@f=split; printf "%11.4e %11.4e \\n",$t,$f[2]}"""
    python_program = """import sys
k=-1
with open(sys.argv[1]) as f:
 for n,line in enumerate(f,1):
  if n<=303: continue
  k=(n-304)%301
  if k==0: t=float(line)
  elif k==150: print('%11.4e %11.4e '%(t,float(line.split()[2])))"""
    commands = {
        "crv": crv,
        "wc -l": ["wc", "-l", big.name],
        "cat": ["cat", big.name],
        "mawk": ["mawk", awk, big.name],
        "gawk": ["gawk", awk, big.name],
        "perl": ["perl", "-ne", perl_program, big.name],
        "python3": ["python3", "-c", python_program, big.name],
    }
    bench.output(crv)
    table = (bench.scratch / "big.dat").read_bytes()
    for name in ("mawk", "gawk", "perl", "python3"):
        require_same(f"b {name}", bench.output(commands[name]), table)
    text = ("time and one item of one request of a request file, "
            "300 requests x 30,000 steps, as a table")
    result = bench.job("b", text, big.stat().st_size, commands,
                       [("wc -l", (1.02, 1.05), "<="), ("mawk", 11, ">=")])
    return result["crv"]["kb"] / 1024


def job_c(bench):
    mid = bench.file("mid.req", "req", 300, 6600)
    wanted = [(1, 1), (30, 2), (60, 3), (90, 4), (120, 5), (150, 6), (180, 7), (210, 8), (240, 1),
              (300, 2)]
    kinds = ["Displ", "Veloc", "Accel", "Force", "User "]  # in the order of the generator
    kinds = [kinds[request % 5] for request, _ in wanted]
    items = {1: "X ", 2: "Y ", 3: "Z ", 4: "A1", 5: "A2", 6: "A3", 7: "M ", 8: "AM"}
    names = ["Time (sec) ", *(f"{kind} {1000 + request}, {items[item]} "
                              for kind, (request, item) in zip(kinds, wanted))]
    program = awk_table(300, wanted, names, "A long run")
    selection = "0," + ",".join(f"{1000 + request}:{item}" for request, item in wanted)
    crv = [bench.crv, "-all", "-r", selection, "-fa", mid.name]
    bench.output(crv)
    table = (bench.scratch / "mid.dat").read_bytes()
    for tool in ("mawk", "gawk"):
        require_same(f"c {tool}", bench.output([tool, program, mid.name]), table)
    commands = {
        "crv": crv,
        "wc -l": ["wc", "-l", mid.name],
        "mawk": ["mawk", program, mid.name],
        "gawk": ["gawk", program, mid.name],
    }
    text = ("time and ten items of ten requests with all statistics, "
            "300 requests x 6,600 steps")
    bench.job("c", text, mid.stat().st_size, commands,
              [("wc -l", (1.40, 1.55), "<="), ("mawk", 20, ">=")])


def gnuplot(script):
    return ["gnuplot", "-e", script]


def job_d(bench):
    big = bench.file("big.pos", "pos", 10, 5_000_000)
    crv = [bench.crv, "-tm", "0:1e9", "-r", "1,3", "-fp", big.name, "-p", "d.ps"]
    plot = gnuplot(f"set terminal postscript landscape color; set output 'gnuplot.ps'; unset key; "
                   f"plot '{big.name}' every ::1 using 1:3 with lines")
    program = ("NR>1{for(i=1;i<=3;i+=2){v=$i+0;a=v<0?-v:v;"
               "if(!(i in lo)){lo[i]=hi[i]=v;al[i]=ah[i]=a}if(v<lo[i])lo[i]=v;"
               "if(v>hi[i])hi[i]=v;if(a<al[i])al[i]=a;if(a>ah[i])ah[i]=a;s[i]+=v}}"
               "END{for(i=1;i<=3;i+=2)printf \"%f %f\\n\",lo[i],hi[i]}")
    # Debug level 49 shows the extremes of both columns before they are rounded for the chart.
    trace = bench.output([bench.crv, "-v", "49", "-tm", "0:1e9", "-r", "1,3", "-fp", big.name,
                          "-w", "x"]).decode()
    extremes = bench.output(["mawk", program, big.name]).decode().split()
    mine = [word.rstrip(",") for line in trace.splitlines() if "Before:" in line
            for word in line.split() if "." in word]
    require_same("d mawk", extremes, mine)
    datamash = ("datamash -W --header-in min 1 max 1 mean 1 min 3 max 3 mean 3"
                f" < {big.name}")
    commands = {
        "crv": crv,
        "wc -l": ["wc", "-l", big.name],
        "gnuplot": plot,
        "mawk": ["mawk", program, big.name],
        "gawk": ["gawk", program, big.name],
        "datamash": ["sh", "-c", datamash],
    }
    text = "columns 1 and 3 of a column file, 10 columns x 5,000,000 rows: statistics and chart"
    result = bench.job("d", text, big.stat().st_size, commands,
                       [("wc -l", (3.7, 4.4), "<="), ("gnuplot", 10, ">=")])
    return result["crv"]["kb"] / 1024


def job_e(bench):
    small = bench.file("small.req", "req", 3, 2000)
    crv = [bench.crv, "-r", "0,1001:1,1002:1,1003:1", "-f", small.name, "-p", "e.ps"]
    rows = bench.scratch / "small.txt"
    bench.output([bench.crv, "-r", "0,1001:1,1002:1,1003:1", "-fd", small.name])
    shutil.copyfile(bench.scratch / "small.dat", rows)
    bench.kept.add(rows)
    plot = gnuplot(f"set terminal postscript landscape color; set output 'gnuplot.ps'; "
                   f"plot for [k=2:4] '{rows.name}' using 1:k with lines")
    bench.job("e", "chart of a request file of 2,000 points with three curves",
              small.stat().st_size, {"crv": crv, "gnuplot (rows made before)": plot},
              [("gnuplot (rows made before)", 6, ">=")])


def job_f(bench):
    rows = bench.file("rows.req", "req", 30, 30000)
    wanted = [(k, 1) for k in range(1, 31)]
    program = awk_request(30, wanted).replace('printf "%11.4e ', 'printf "')
    program = program.replace("\\n\", t,", '\\n", ')
    crv = [bench.crv, "-r", ",".join(str(1000 + k) for k in range(1, 31)), "-fd", rows.name]
    bench.output(crv)
    mawk = ["mawk", program, rows.name]
    require_same("f mawk", bench.output(mawk), (bench.scratch / "rows.dat").read_bytes())
    result = bench.job("f", "30 columns x 30,000 rows as a table", rows.stat().st_size,
                       {"crv": crv, "mawk": mawk, "wc -l": ["wc", "-l", rows.name]}, [])
    bench.cell_goal(result, (52, 65))


def job_info(bench):
    big = bench.file("big.req", "req", 300, 30000)
    bench.job("info", "contents of the request file of job b", big.stat().st_size,
              {"crv": [bench.crv + "-info", big.name], "wc -l": ["wc", "-l", big.name]},
              [("wc -l", (1.02, 1.05), "<=")])


def job_csv(bench):
    rows = bench.file("rows.req", "req", 30, 30000)
    program = awk_request(30, [(k, 1) for k in range(1, 31)])
    program = program.replace('printf "' + "%11.4e " * 31, 'printf "' + ",".join(["%.17g"] * 30))
    program = program.replace('\\n", t,', '\\n", ')
    crv = [bench.crv + "-csv", "-r", ",".join(str(1000 + k) for k in range(1, 31)), "-f", rows.name]
    mawk = ["mawk", program, rows.name]
    _, *mine = bench.output(crv).decode().splitlines()
    numbers = [[float(cell) for cell in line.split(",")] for line in mine]
    theirs = bench.output(mawk).decode().splitlines()
    require_same("csv mawk", [[float(cell) for cell in line.split(",")] for line in theirs],
                 numbers)
    result = bench.job("csv", "30 columns x 30,000 rows as CSV with all digits",
                       rows.stat().st_size, {"crv": crv, "mawk": mawk}, [("mawk", 8, ">=")])
    bench.cell_goal(result, 70)


def job_g(bench):
    loop = "i=0; while [ $i -lt 300 ]; do %s > /dev/null; i=$((i+1)); done"
    bench.job("g", "300 starts", 0,
              {"crv": ["sh", "-c", loop % (bench.crv + " -h")],
               "true": ["sh", "-c", loop % shutil.which("true")]},
              [("true", 1.2, "<=")])


def job_h(bench):
    big = bench.file("big.mad", "mad", 20, 13, 50000)
    text = "time, five values of a Madymo request, all statistics, 20 x 13 values x 50,000 steps"
    bench.job("h", text, big.stat().st_size,
              {"crv": [bench.crv, "-all", "-r", "0,7:1,7:3,7:5,7:8,7:13", "-fms", big.name],
               "wc -l": ["wc", "-l", big.name]},
              [("wc -l", (1.45, 1.65), "<=")])


def job_v(bench):
    big = bench.file("big.vdr", "vdr", 2_000_000)
    plot = gnuplot(f"set terminal postscript landscape color; set output 'gnuplot.ps'; unset key; "
                   f"plot '{big.name}' every ::10 using 1:2 with lines")
    bench.job("v", "chart of a frame file of 2,000,000 pairs", big.stat().st_size,
              {"crv": [bench.crv, "-r", "0", "-fg", big.name, "-p", "v.ps"], "gnuplot": plot},
              [("gnuplot", 7, ">=")])


def drain(terminal):
    """Reads what is shown until the terminal is closed, so that no writer waits."""
    shown = bytearray()
    try:
        while piece := os.read(terminal, 65536):
            shown += piece
    except OSError:  # the end, on Linux
        pass
    return bytes(shown)


def job_progress(bench):
    """The pipe makes reading last, and every read looks whether there is something to be read."""
    big = bench.file("big.req", "req", 300, 30000)
    copies = 6
    command = f"cat {' '.join([big.name] * copies)} | {bench.crv}-info -f - 2>"
    terminal, shell_side = os.openpty()
    with concurrent.futures.ThreadPoolExecutor() as pool:
        shown = pool.submit(drain, terminal)
        bench.job("progress", f"{copies} files of job b through a pipe; crv shows progress",
                  copies * big.stat().st_size,
                  {"crv": ["sh", "-c", command + os.ttyname(shell_side)],
                   "no terminal": ["sh", "-c", command + "/dev/null"]},
                  [("no terminal", 1.02, "<=")])
        os.close(shell_side)
    os.close(terminal)
    if b" MB  " not in shown.result():
        sys.exit("progress: nothing was shown")


def growth(bench):
    lines = ["\n### Growth: job b on files of 10 MB, 100 MB and 1 GB\n",
             "| MB | wall s | ns a byte | peak MB |", "|---|---|---|---|"]
    for steps in (366, 3660, 36600):
        path = bench.file(f"grow{steps}.req", "req", 300, steps)
        r = bench.measure({"crv": [bench.crv, "-r", "0,1150:3", "-fd", path.name]})["crv"]
        size = path.stat().st_size
        lines.append(f"| {size / 1e6:.0f} | {r['wall']:.4f} | "
                     f"{r['wall'] / size * 1e9:.3f} | {r['kb'] / 1024:.1f} |")
    bench.report(lines)


def pieces(bench):
    out = subprocess.run([bench.pieces, "--benchmark_format=csv"],
                         capture_output=True, text=True, check=True).stdout
    lines = ["\n### Pieces\n", "| piece | ns each |", "|---|---|"]
    for line in out.splitlines():
        cells = line.split(",")
        if len(cells) > 6 and cells[6].replace(".", "").replace("e+", "").isdigit():
            piece = cells[0].strip('"').replace("_", " ")
            lines.append(f"| {piece} | {1e9 / float(cells[6]):.1f} |")
    bench.report(lines)


def machine():
    model = next((line.split(":")[1].strip() for line in open("/proc/cpuinfo")
                  if line.startswith("model name")), "")
    release = platform.release().split("-")[0]
    return f"{model}, {os.cpu_count()} cores, {platform.system()} {release}"


def main():
    bench = Bench(pathlib.Path(sys.argv[1]).resolve())
    try:
        peak_b = job_b(bench)
        job_c(bench)
        peak_d = job_d(bench)
        for job in (job_e, job_f, job_csv, job_info, job_g, job_h, job_v, job_progress,
                    job_pages, growth, pieces):
            job(bench)
        kept = 2 * 5_000_000 * 16 / 1024 / 1024
        extra = peak_d - kept
        memory = ("\n### Memory\n\n"
                  f"Job b peaks at {peak_b:.1f} MB; the goal is 6: {verdict(peak_b < 6)}.\n"
                  f"Job d stores 10,000,000 values of 16 bytes, {kept:.1f} MB, and peaks\n"
                  f"{extra:.1f} MB above that; the goal is 6: {verdict(extra < 6)}.")
        bench.report([memory])
    finally:
        shutil.rmtree(bench.scratch)
    if "--write" in sys.argv:
        readme = HERE / "README.md"
        mark = "<!-- The rest is written by run.py --write. -->\n"
        head = readme.read_text().split(mark)[0]
        when = time.strftime("%Y-%m-%d", time.gmtime())
        measured = (f"\nMeasured on {when}: {machine()},\non which `wc -l` counts at "
                    f"{bench.wc_rate:.1f} GB/s. Medians of {RUNS} runs.\n")
        readme.write_text(head + mark + measured + "\n".join(bench.rows) + "\n")


if __name__ == "__main__":
    main()
