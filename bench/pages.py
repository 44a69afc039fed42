"""Jobs on pages: writing them, and drawing them in a browser against two libraries of npm."""
import json
import math
import pathlib
import re
import statistics
import subprocess
import sys

from goals import verdict

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests"))
from support.browser import Browser, find_browser  # noqa: E402  (found by the path above)

ROWS = 1_000_000
LIBRARIES = {"uPlot": ("uplot@1", "uplot/dist/uPlot.iife.min.js"),
             "plotly": ("plotly.js-basic-dist-min@2",
                        "plotly.js-basic-dist-min/plotly-basic.min.js")}

# The chart of each library has the size of the page's. A zoom shows the middle half, then all.
DRAW = {
    "crv-html": "await import(URL.createObjectURL(new Blob([own.textContent], "
                "{type: 'text/javascript'}))); await frame();",
    "uPlot": """const data = [0, 1, 2, 3].map(decode); const side = {width: 1068, height: 480};
        window.u = new uPlot({...side, series: [{}, {stroke: 'blue'}, {stroke: 'red'},
            {stroke: 'green'}], scales: {x: {time: false}}}, data, chartbox); await frame();""",
    "plotly": """const [x, ...ys] = [0, 1, 2, 3].map(decode);
        await Plotly.newPlot(chartbox, ys.map(y => ({x, y, mode: 'lines'})),
            {width: 1068, height: 480}); await frame();""",
}
ZOOM = {
    "crv-html": "document.dispatchEvent("
                "new KeyboardEvent('keydown', {key: step % 2 ? '-' : '+'}));",
    "uPlot": "u.setScale('x', step % 2 ? {min: 0, max: 100} : {min: 25, max: 75}); await null;",
    "plotly": "await Plotly.relayout(chartbox, {'xaxis.range': step % 2 ? [0, 100] : [25, 75]});",
}
MEASURE = """(async () => {
    const own = document.getElementById('own'), chartbox = document.getElementById('chartbox');
    const frame = () => new Promise(done => requestAnimationFrame(() => setTimeout(done, 0)));
    const decode = index => {
        const text = atob(document.querySelector(`[data-column="${index}"]`).textContent);
        const bytes = new Uint8Array(text.length);
        for (let k = 0; k < text.length; k++) bytes[k] = text.charCodeAt(k);
        return new Float64Array(bytes.buffer);
    };
    const begin = performance.now();
    %s
    const times = [performance.now() - begin];
    for (let step = 0; step < 11; step++) {
        const start = performance.now();
        %s
        times.push(performance.now() - start);
        await frame();
    }
    return times;
})()"""


def make_columns(path):
    """A column file: time, a slow wave with noise, noise, and steps."""
    if path.exists():
        return
    with open(path, "w") as out:
        out.write("t wave noise steps\n")
        noise = 1
        for k in range(ROWS):
            noise = noise * 48271 % 2147483647
            share = noise / 2147483647
            out.write(f"{k / 10000:.4f} {math.sin(k / 1e5) * 100 + share:.6f} {share:.6f} "
                      f"{k // 50000 % 3}\n")


def write_pages(bench):
    """crv-html against the table of crv, and the size of the page."""
    html = bench.crv + "-html"
    selection = "0," + ",".join(str(1000 + k) for k in range(1, 31))
    rows = bench.file("rows.req", "req", 30, 30000)
    page = bench.scratch / "page.html"
    command = [html, "-r", selection, "-f", rows.name, "-p", page.name]
    result = bench.job("page", "a page of 30 series x 30,000 rows, and the table of the same file",
                       rows.stat().st_size,
                       {"crv": command,
                        "crv -fd": [bench.crv, "-r", selection, "-fd", rows.name]}, [])
    bench.output(command)
    size = page.stat().st_size
    wall, cpu = (size / 1e6 / result["crv"][clock] for clock in ("wall", "cpu"))
    each = size / (31 * 30000)
    return [f"- Goal: at least 150 MB/s of page, reading included. Wall {wall:.0f}, CPU {cpu:.0f}: "
            f"{verdict(min(wall, cpu) >= 150)}.",
            f"- Goal: at most 11 bytes a value. {each:.2f}: {verdict(each <= 11)}.",
            f"\nThe row `crv` is crv-html here, and its page has {size / 1e6:.1f} MB. The piece "
            "\"page value\" below\nis writing alone; 150 MB/s are 71 ns a value."]


def install_libraries(directory):
    """Returns why the libraries are missing, None if they are there."""
    command = ["npm", "install", "--no-save", "--no-audit", "--no-fund", "--prefix", str(directory),
               *(package for package, _ in LIBRARIES.values())]
    try:
        directory.mkdir(exist_ok=True)
        done = subprocess.run(command, capture_output=True, text=True, timeout=300)
    except (OSError, subprocess.TimeoutExpired) as error:
        return str(error)
    return None if done.returncode == 0 else (done.stderr or "npm failed").splitlines()[-1]


def page_for(name, page, modules):
    """The page with its script as data, so that it can be timed, or with the data of a library."""
    text = re.sub(r'<meta http-equiv="Content.*?">', "", page, flags=re.S)
    text = text.replace('<script type="module">', '<script type="text/plain" id="own">')
    if name == "crv-html":
        return text
    blocks = "".join(re.findall(r'<script type="text/plain" data-column.*?</script>\n', text))
    script = (modules / LIBRARIES[name][1]).read_text()
    return (f'<!doctype html><meta charset="utf-8"><div id="chartbox"></div>{blocks}'
            f"<script>{script}</script>")


def time_page(browser, path, name):
    """First draw, and median of the zooms after the first two, in ms."""
    browser.open(path)
    times = browser.evaluate(MEASURE % (DRAW[name], ZOOM[name]))
    return times[0], statistics.median(times[3:])


def draw_pages(bench):
    if not find_browser():
        return ["\nNo page is drawn: chromium is not installed."]
    columns = bench.files / "columns.pos"
    make_columns(columns)
    page = bench.scratch / "million.html"
    bench.output([bench.crv + "-html", "-tm", "0:1e9", "-r", "1,2,3,4", "-fp", str(columns), "-p",
                  page.name])
    modules = bench.files / "npm"
    missing = install_libraries(modules)
    names = ["crv-html", *([] if missing else LIBRARIES)]
    lines = ["| library | first draw, ms | zoom, ms |", "|---|---|---|"]
    zooms = {}
    browser = Browser(1100, 650)
    try:
        opened = []
        for _ in range(5):
            browser.open(page)
            opened.append(browser.evaluate(
                "performance.getEntriesByType('navigation')[0].loadEventEnd / 1000"))
        for name in names:
            path = bench.scratch / "timed.html"
            path.write_text(page_for(name, page.read_text(), modules / "node_modules"))
            first, zooms[name] = (statistics.median(times) for times in
                                  zip(*(time_page(browser, path, name) for _ in range(5))))
            lines.append(f"| {name} | {first:.0f} | {zooms[name]:.1f} |")
    finally:
        browser.close()
    if missing:
        lines.append(f"\nThe libraries are not there: {json.dumps(missing)}")
    seconds = statistics.median(opened)
    zoom = zooms["crv-html"]
    lines += ["\n- Goal: at most 1.5 s to open the page, from navigation to load. "
              f"{seconds:.2f}: {verdict(seconds <= 1.5)}.",
              f"- Goal: at most 16 ms a zoom. {zoom:.1f}: {verdict(zoom <= 16)}.",
              "\nA first draw is from base64 to the next frame, a zoom the time of the main "
              "thread. Medians."]
    return lines


def job_pages(bench):
    lines = write_pages(bench)
    lines += ["\n### Drawing a page of 1,000,000 rows of three series, in chromium\n",
              *draw_pages(bench)]
    print("\n".join(lines))
    bench.rows += lines
