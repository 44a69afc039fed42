// page/page.js - draws the curves of the page on a canvas, zooms, reads values and saves them.
const element = id => document.getElementById(id);
const plot = element("plot"), given = JSON.parse(element("view").textContent);
const chart = element("chart").getContext("2d"), pointer = element("pointer").getContext("2d");
const { isFinite } = Number, title = given.title || given.subtitle || document.title;

// ----- Data: columns and curves
// Returns the values of a column: doubles of 8 bytes, low byte first, in blocks of base64.
function decode(index) {
  const blocks = Array.from(document.querySelectorAll(`[data-column="${index}"]`),
    script => atob(script.textContent));
  const bytes = new Uint8Array(blocks.reduce((sum, block) => sum + block.length, 0));
  let at = 0;
  for (const block of blocks)
    for (let k = 0; k < block.length; k++) bytes[at++] = block.charCodeAt(k);
  return new Float64Array(bytes.buffer); // browsers run on machines with the low byte first
}

// Lowest and highest finite value of each block of 64 rows, so that a view of a million rows looks
// at some thousands; and the number of rows that cannot be drawn.
function summarize(x, y) {
  const low = new Float64Array((y.length + 63) >> 6).fill(Infinity), high = low.map(v => -v);
  let gaps = 0;
  for (let row = 0; row < y.length; row++) {
    const value = y[row], block = row >> 6;
    if (!isFinite(value) || !isFinite(x[row])) gaps++;
    if (value < low[block] && value > -Infinity) low[block] = value;
    if (value > high[block] && value < Infinity) high[block] = value;
  }
  return { low, high, gaps };
}

// A series has one hue in all files; a file has one pattern: pixels with ink and without.
const patterns = [[], [8, 4], [2, 3], [16, 4], [5, 5], [12, 8]];
const columns = given.columns.map((name, index) => {
  const values = decode(index);
  return { name, values, ascending: values.length > 0
    && values.every((x, row) => isFinite(x) && !(x < values[row - 1])) };
});
const curves = given.curves.map(([xIndex, yIndex, file, series, label]) => {
  const column = columns[xIndex], { values } = columns[yIndex];
  const x = column.values.subarray(0, values.length), rows = x.length, y = values.subarray(0, rows);
  return { label, column, x, y, rows, ascending: column.ascending, blocks: summarize(x, y),
    shown: true, hue: `hue${series % 31}`, pattern: patterns[file] || [4 * file, file - 1] };
});

// Returns the first row whose X is at least `value`, or with `after` the first above it.
function search(x, value, after) {
  let low = 0, high = x.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (x[middle] < value || (after && x[middle] === value)) low = middle + 1;
    else high = middle;
  }
  return low;
}

// Returns the lowest and highest finite value of the rows from `from` to before `to`.
function range(y, blocks, from, to) {
  let low = Infinity, high = -Infinity;
  const include = (lows, highs, k, end) => {
    for (; k < end; k++) {
      if (lows[k] < low && lows[k] > -Infinity) low = lows[k];
      if (highs[k] > high && highs[k] < Infinity) high = highs[k];
    }
  };
  const first = (from + 63) >> 6, after = Math.max(first, to >> 6);
  include(y, y, from, Math.min(to, first << 6));
  include(blocks.low, blocks.high, first, after);
  include(y, y, Math.max(from, after << 6), to);
  return [low, high];
}

// ----- View: the ranges that are shown
let view, whole; // {low, high, fixed}: range of X, and ranges of Y by panel; the range of all X
let separate = false, marks = true; // one panel for each series; marks of minimum and maximum
let panels = []; // as drawn on the screen
let cursor = null, drag = null, band = null; // point that is read; what a pointer drags; its box
const shownCurves = () => curves.filter(curve => curve.shown);
const xName = () => shownCurves()[0]?.column.name ?? "";
const short = value => String(Number(value.toPrecision(6)));
const full = value => Object.is(value, -0) ? "-0"
  : String(value).replace("Infinity", "inf").replace("NaN", "nan");

// Returns a range with a share of its width on either side; it has a width in any case.
function widen(low, high, share) {
  if (!(low <= high)) return [0, 1];
  const room = low < high ? (high - low) * share : Math.abs(low) * 0.1 || 0.5;
  return [low - room, high + room];
}

function show(low, high, fixed = view.fixed) {
  // A canvas computes with seven digits, so points must not be too far outside of it.
  const finest = (whole[1] - whole[0]) / Math.max(...curves.map(curve => curve.rows)) * 1e-5;
  if (!(high - low > Math.max(finest, Math.abs(low) * 1e-13) && high - low < Infinity)) return;
  view = { low, high, fixed };
  draw();
  say(`${xName()} ${short(low)} to ${short(high)}`);
}
const showAll = () => show(...whole, new Map());
const withFixed = (p, low, high) => new Map([...view.fixed, [p.key, [low, high]]]);

// Returns the panels of a picture, from the top down. Their range of Y is that of the values in
// view unless the user has fixed one. A curve whose X runs back is in view as a whole.
const margin = { left: 84, right: 16, top: 10, bottom: 42, between: 12 };
function arrange(width, top, height) {
  const shown = shownCurves();
  for (const curve of shown) {
    const { x, y, blocks, ascending } = curve;
    const rows = ascending ? [search(x, view.low), search(x, view.high, true)] : [0, curve.rows];
    const around = [Math.max(0, rows[0] - 1), Math.min(curve.rows, rows[1] + 1)]; // to the edges
    const isEmpty = rows[0] === rows[1], [low, high] = range(y, blocks, ...isEmpty ? around : rows);
    const find = value => isEmpty || low > high ? -1 : y.indexOf(value, rows[0]);
    Object.assign(curve, { low, high, lowRow: find(low), highRow: find(high), around });
  }
  const groups = separate && shown.length ? shown.map(curve => [curve]) : [shown];
  const space = (height - margin.top - margin.bottom + margin.between) / groups.length;
  return groups.map((group, k) => {
    const key = separate ? curves.indexOf(group[0]) : -1;
    const low = Math.min(...group.map(curve => curve.low));
    const high = Math.max(...group.map(curve => curve.high));
    const panelHeight = Math.max(10, space - margin.between); // 16 pixels of it for marks
    const [y0, y1] = view.fixed.get(key) || widen(low, high, 16 / Math.max(panelHeight - 32, 16));
    return { key, curves: group, x0: view.low, x1: view.high, y0, y1,
      left: margin.left, right: width - margin.right, width: width - margin.left - margin.right,
      top: top + margin.top + k * space, height: panelHeight };
  });
}

const screenX = (p, x) => p.left + ((x - p.x0) / (p.x1 - p.x0)) * p.width;
const screenY = (p, y) => p.top + p.height - ((y - p.y0) / (p.y1 - p.y0)) * p.height;
const valueX = (p, a) => p.x0 + ((a - p.left) / p.width) * (p.x1 - p.x0);
const valueY = (p, b) => p.y0 + ((p.top + p.height - b) / p.height) * (p.y1 - p.y0);
const panelAt = b => panels.find(p => b <= p.top + p.height + margin.between) || panels.at(-1);

// ----- Drawing
const color = name => getComputedStyle(document.documentElement).getPropertyValue(`--${name}`);

// Returns about `count` round numbers in a range, with their texts.
function ticks(low, high, count) {
  const least = (high - low) / count, power = 10 ** Math.floor(Math.log10(least));
  const step = power * [1, 2, 5, 10].find(k => k * power >= least * 0.999999);
  const first = Math.ceil(low / step - 1e-9), last = Math.floor(high / step + 1e-9);
  return Array.from({ length: Math.min(99, last - first + 1) }, (_, k) => {
    const value = Number(((first + k) * step).toPrecision(15)), size = Math.abs(value);
    const plain = size === 0 || (size < 1e7 && size >= 1e-4);
    return { value, text: plain ? String(value) : value.toExponential() };
  });
}

// Traces an ascending curve with more points than pixels: first, lowest, highest and last value of
// each column of pixels look the same as all of its points. The pattern is made of columns.
function traceColumns(g, p, { x, y, blocks, pattern }, from, to, dots) {
  const scale = (p.width * dots) / (p.x1 - p.x0), period = pattern[0] + pattern[1];
  const pixel = value => Math.max(-1e4, Math.min(1e4, screenY(p, value)));
  let pen = false;
  for (let row = from, next; row < to; row = next) {
    const column = Math.floor((x[row] - p.x0) * scale), a = p.left + (column + 0.5) / dots;
    next = Math.max(row + 1, Math.min(to, search(x, p.x0 + (column + 1) / scale)));
    const [low, high] = range(y, blocks, row, next), isFirst = isFinite(y[row]);
    const isBlank = low > high || Math.abs(Math.floor(column / dots)) % period >= pattern[0];
    if (!isBlank && !(pen && isFirst)) g.moveTo(a - 0.5 / dots, pixel(isFirst ? y[row] : low));
    pen = !isBlank && isFinite(y[next - 1]);
    if (isBlank) continue;
    if (isFirst) g.lineTo(a, pixel(y[row]));
    g.lineTo(a, pixel(low)); g.lineTo(a, pixel(high));
    if (pen) g.lineTo(a, pixel(y[next - 1]));
  }
}

// Traces the rows of a curve as they are, except steps of less than half a pixel.
function tracePoints(g, p, { x, y }, from, to) {
  let joins = false, pen = false, a0 = 0, b0 = 0; // the point before; whether the path ends there
  for (let row = from; row < to; row++) {
    const a = screenX(p, x[row]), b = screenY(p, y[row]), isPoint = isFinite(a) && isFinite(b);
    if (isPoint && pen && Math.abs(a - a0) + Math.abs(b - b0) < 0.5) continue;
    if (!joins && isPoint && !isFinite(y[row + 1])) g.rect(a - 0.8, b - 0.8, 1.6, 1.6); // alone
    const isSeen = joins && isPoint && Math.max(a, a0) >= p.left && Math.min(a, a0) <= p.right;
    if (isSeen && !pen) g.moveTo(a0, b0);
    if (isSeen) g.lineTo(a, b);
    [joins, pen, a0, b0] = [isPoint, isSeen, a, b];
  }
}

function drawCurve(g, p, curve, dots) {
  const { x, y, ascending, around: [from, to] } = curve;
  const dense = ascending && to - from > 4 * p.width * dots;
  g.strokeStyle = g.fillStyle = color(curve.hue);
  g.lineWidth = to - from > 4000 ? 1 / dots : 1.6; // lines of one pixel are three times as fast
  g.setLineDash(dense ? [] : curve.pattern);
  g.beginPath();
  (dense ? traceColumns : tracePoints)(g, p, curve, from, to, dots);
  g.stroke();
  g.setLineDash([]);
  for (let row = from; row < to && to - from < p.width / 6; row++)
    drawDot(g, screenX(p, x[row]), screenY(p, y[row]), 2.2);
}

function drawDot(g, a, b, radius) {
  g.beginPath(); g.arc(a, b, radius, 0, 7); g.fill();
}
function drawLine(g, a0, b0, a1, b1, ink, width, pattern = []) {
  [g.strokeStyle, g.lineWidth] = [color(ink), width];
  g.setLineDash(pattern);
  g.beginPath(); g.moveTo(a0, b0); g.lineTo(a1, b1); g.stroke();
}
function drawText(g, text, a, b, align, baseline, ink) {
  [g.textAlign, g.textBaseline, g.fillStyle] = [align, baseline, color(ink)];
  g.fillText(text, a, b);
}

function drawGrid(g, p, isLowest) {
  const bottom = p.top + p.height, crisp = pixel => Math.round(pixel) + 0.5;
  for (const { value, text } of ticks(p.x0, p.x1, Math.max(2, p.width / 90))) {
    const a = crisp(screenX(p, value));
    drawLine(g, a, p.top, a, bottom, "grid", 1);
    if (isLowest) drawText(g, text, a, bottom + 6, "center", "top", "faint");
  }
  for (const { value, text } of ticks(p.y0, p.y1, Math.max(3, p.height / 40))) {
    const b = crisp(screenY(p, value));
    drawLine(g, p.left, b, p.right, b, "grid", 1);
    drawText(g, text, p.left - 6, b, "right", "middle", "faint");
  }
  g.strokeRect(crisp(p.left), crisp(p.top), Math.round(p.width), Math.round(p.height));
}

// Marks minimum and maximum with a triangle, and with their text where the texts before leave room.
function drawMarks(g, p, texts) {
  for (const { x, y, hue, lowRow, highRow } of p.curves)
    for (const [row, up] of [[lowRow, -7], [highRow, 7]]) {
      if (row < 0) continue;
      const a = screenX(p, x[row]), b = screenY(p, y[row]), middle = b - up;
      g.fillStyle = color(hue);
      g.beginPath(); g.moveTo(a, b); g.lineTo(a - 4, b - up); g.lineTo(a + 4, b - up); g.fill();
      const text = `${short(y[row])} at ${short(x[row])}`, width = g.measureText(text).width;
      const left = a + width + 10 < p.right ? a + 7 : a - 7 - width;
      const meets = t => Math.abs(middle - t.middle) < 13
        && left < t.left + t.width && t.left < left + width;
      if (texts.some(meets)) continue;
      texts.push({ left, width, middle });
      drawText(g, text, left, middle, "left", "middle", hue);
      [g.strokeStyle, g.lineWidth] = [color("paper"), 3];
      g.strokeText(text, left, middle); g.fillText(text, left, middle);
    }
}

// Paints the chart below `top` of a picture and returns its panels.
function paint(g, width, top, height, dots) {
  const painted = arrange(width, top, height);
  g.setTransform(dots, 0, 0, dots, 0, 0);
  g.fillStyle = color("paper");
  g.fillRect(0, 0, width, top + height);
  g.font = "12px system-ui, sans-serif";
  for (const p of painted) {
    drawGrid(g, p, p === painted.at(-1));
    g.save();
    g.beginPath(); g.rect(p.left, p.top, p.width, p.height); g.clip();
    for (const curve of p.curves) drawCurve(g, p, curve, dots);
    const [name, left, middle] = [p.key >= 0 ? p.curves[0].label : "", p.left + 6, p.top + 10];
    if (marks) drawMarks(g, p, [{ left, width: g.measureText(name).width, middle }]);
    drawText(g, name, left, middle, "left", "middle", "ink");
    g.restore();
  }
  drawText(g, xName(), width / 2, top + height - 4, "center", "bottom", "ink");
  return painted;
}

// Returns a canvas with the chart below its title and legend, or the chart only.
function picture(width, height, dots, hasHead) {
  const legend = hasHead ? shownCurves() : [], top = hasHead ? 40 + 20 * legend.length : 0;
  const canvas = document.createElement("canvas"), g = canvas.getContext("2d"), { left } = margin;
  [canvas.width, canvas.height] = [width * dots, (top + height) * dots];
  paint(g, width, top, height, dots);
  if (hasHead) drawText(g, title, left, 22, "left", "bottom", "ink");
  legend.forEach(({ label, hue, pattern }, k) => {
    drawLine(g, left, 40 + 20 * k, left + 28, 40 + 20 * k, hue, 2, pattern);
    drawText(g, label, left + 36, 40 + 20 * k, "left", "middle", "ink");
  });
  return canvas;
}

// ----- Screen: chart, legend and what the cursor reads
// Has screen readers announce a text once nothing else happens.
let timer = 0;
const say = text => {
  clearTimeout(timer);
  timer = setTimeout(() => { element("spoken").textContent = text; }, 250);
};

function resize() {
  const size = [plot.clientWidth, plot.clientHeight].map(length => length * devicePixelRatio);
  for (const { canvas } of [chart, pointer]) [canvas.width, canvas.height] = size;
  draw();
}

function draw() {
  plot.style.minHeight = separate ? `${80 * shownCurves().length + 52}px` : "";
  panels = paint(chart, plot.clientWidth, 0, plot.clientHeight, devicePixelRatio);
  plot.dataset.panels = JSON.stringify(panels.map(({ curves: _, ...panel }) => panel));
  [element("panels").ariaPressed, element("marks").ariaPressed] = [separate, marks];
  for (const { shown, button, extremes, low, high, lowRow, highRow, x } of curves) {
    button.ariaPressed = shown;
    extremes.textContent = !shown ? "" : lowRow < 0 ? "no values in view"
      : `min ${full(low)} at ${full(x[lowRow])}, max ${full(high)} at ${full(x[highRow])}`;
  }
  drawPointer();
}

// Returns the row of a curve that the cursor reads: the nearest in X, or where X runs back that of
// the nearest point.
function nearestRow(p, { column, x, y, rows, ascending }) {
  if (cursor.column === column) return cursor.row;
  let best = ascending ? search(x, cursor.x) : 0, least = Infinity;
  const isNearer = best > 0 && !(x[best] - cursor.x < cursor.x - x[best - 1]);
  if (ascending) return isNearer ? best - 1 : best;
  for (let row = 0; row < rows; row++) {
    const distance = (screenX(p, x[row]) - screenX(p, cursor.x)) ** 2
      + (screenY(p, y[row]) - cursor.b) ** 2;
    if (distance < least) [least, best] = [distance, row];
  }
  return best;
}

function drawPointer() {
  const words = [];
  pointer.setTransform(devicePixelRatio, 0, 0, devicePixelRatio, 0, 0);
  pointer.clearRect(0, 0, plot.clientWidth, plot.clientHeight);
  pointer.fillStyle = color("band");
  if (band) pointer.fillRect(...band);
  for (const { value } of curves) value.textContent = "";
  let main; // X of the first series; others show their own where it differs
  for (const p of panels) {
    if (!cursor) break;
    const line = Math.round(screenX(p, cursor.x)) + 0.5;
    drawLine(pointer, line, p.top, line, p.top + p.height, "faint", 1, [3, 3]);
    for (const curve of p.curves) {
      const row = nearestRow(p, curve), x = curve.x[row], y = curve.y[row];
      if (x === undefined) continue;
      curve.value.textContent = full(y) + (x === (main ??= x) ? "" : ` at ${full(x)}`);
      words.push(`${curve.label} ${curve.value.textContent}`);
      const a = screenX(p, x), b = screenY(p, y);
      pointer.fillStyle = color(curve.hue);
      if (b >= p.top && b <= p.top + p.height && a >= p.left - 1) drawDot(pointer, a, b, 4.5);
    }
  }
  element("readout").textContent = main === undefined ? "" : `${xName()} ${full(main)}`;
  if (words.length) say([element("readout").textContent, ...words].join("; "));
}

for (const curve of curves) {
  const button = element("entry").content.firstElementChild.cloneNode(true);
  const part = name => button.querySelector(name), { gaps } = curve.blocks;
  part("b").textContent = part("b").title = curve.label; // a text never becomes markup
  part("line").style.stroke = `var(--${curve.hue})`;
  part("line").setAttribute("stroke-dasharray", curve.pattern.join(" "));
  part(".gaps").textContent = gaps ? `${gaps} of ${curve.rows} points not finite, not drawn` : "";
  Object.assign(curve, { button, value: part(".value"), extremes: part(".extremes") });
  button.onclick = () => { curve.shown = !curve.shown; draw(); };
  element("legend").append(button);
}

// ----- Pointer and wheel
const fingers = new Map(); // pointers that are down, with their places
const zoom = (x, factor) => show(x - (x - view.low) * factor, x + (view.high - x) * factor);
const pan = length => show(view.low + length, view.high + length);
const clamp = (value, low, high) => Math.max(low, Math.min(high, value));

plot.onpointerdown = event => {
  if (event.button) return;
  plot.setPointerCapture(event.pointerId);
  fingers.set(event.pointerId, [event.offsetX, event.offsetY]);
  const moves = event.shiftKey || event.pointerType === "touch";
  drag = { from: [...fingers.values()], p: panelAt(event.offsetY), moves };
  plot.onpointermove(event);
};
plot.onpointermove = ({ pointerId, offsetX: a, offsetY: b }) => {
  cursor = { x: valueX(panels[0], a), b };
  if (fingers.has(pointerId)) dragTo(...fingers.set(pointerId, [a, b]).values());
  drawPointer();
};
plot.onpointerup = plot.onpointercancel = event => {
  const [left, top, width, height] = band || [], { p, tall } = drag || {};
  fingers.clear();
  if (band && event.type === "pointerup") show(valueX(p, left), valueX(p, left + width),
    tall ? withFixed(p, valueY(p, top + height), valueY(p, top)) : view.fixed);
  band = null;
  drawPointer();
};
plot.onpointerleave = event => { if (event.pointerType !== "touch") cursor = null; drawPointer(); };
plot.ondblclick = showAll;
plot.onwheel = event => {
  event.preventDefault();
  zoom(valueX(panels[0], event.offsetX), event.deltaY < 0 ? 0.8 : 1.25);
};

// Moves the view, zooms it with two fingers, which keep their values, or chooses a range.
function dragTo([a, b], other) {
  const { from: [[a0, b0], second], p, moves } = drag;
  if (second && other && Math.abs(a - other[0]) > 10) {
    const scale = (valueX(p, a0) - valueX(p, second[0])) / (a - other[0]);
    const low = valueX(p, a0) - (a - p.left) * scale;
    show(low, low + p.width * scale);
  } else if (moves) {
    const dx = valueX(p, a) - valueX(p, a0), dy = valueY(p, b) - valueY(p, b0);
    const fixed = view.fixed.has(p.key) ? withFixed(p, p.y0 - dy, p.y1 - dy) : view.fixed;
    show(p.x0 - dx, p.x1 - dx, fixed);
  } else if (Math.hypot(a - a0, b - b0) > 4) {
    drag.tall = Math.abs(b - b0) > 40;
    const ends = drag.tall ? [b0, b] : [0, Infinity];
    const x = [a0, a].map(pixel => clamp(pixel, p.left, p.right));
    const y = ends.map(pixel => clamp(pixel, p.top, p.top + p.height));
    band = [Math.min(...x), Math.min(...y), Math.abs(x[1] - x[0]), Math.abs(y[1] - y[0])];
  }
}

// ----- Commands and keys
// Reads the point that is some rows further on the first series, and moves it into view.
function step(direction, isLarge) {
  const [curve] = shownCurves(), { x, y, rows, column, ascending } = curve || {};
  if (!rows) return;
  let row = cursor ? nearestRow(panels[0], curve) + direction : ascending ? search(x, view.low) : 0;
  if (isLarge && ascending) row = search(x, x[row] + direction * (view.high - view.low) / 20);
  row = clamp(row, 0, rows - 1);
  cursor = { x: x[row], b: screenY(panels[0], y[row]), column, row };
  pan(x[row] - clamp(x[row], view.low, view.high));
  drawPointer();
}

// Moves the ranges of Y of all panels by a share of their width, and widens them by another.
function changeY(up, wider) {
  show(view.low, view.high, new Map(panels.map(({ key, y0, y1 }) =>
    [key, widen(y0 + up * (y1 - y0), y1 + up * (y1 - y0), wider)])));
}

// Returns what is shown as CSV: the columns of each X side by side.
function csv() {
  const groups = [...new Set(shownCurves().map(curve => curve.column))].map((column, k) => {
    const { name, values } = column, mine = shownCurves().filter(curve => curve.column === column);
    return { names: [k ? `${name}_${k + 1}` : name, ...mine.map(curve => curve.label)],
      lists: [values, ...mine.map(curve => curve.y)],
      rows: [...values.keys()].filter(row => values[row] >= view.low && values[row] <= view.high) };
  });
  const quote = text => (/["\r\n,]/.test(text) ? `"${text.replaceAll('"', '""')}"` : text);
  const lines = [groups.flatMap(group => group.names.map(quote)).join(",")];
  for (let k = 0; groups.some(group => k < group.rows.length); k++)
    lines.push(groups.flatMap(({ lists, rows }) =>
      lists.map(list => (list[rows[k]] === undefined ? "" : full(list[rows[k]])))).join(","));
  return lines.join("\n") + "\n";
}

function save(blob, suffix) {
  const link = document.createElement("a"), href = URL.createObjectURL(blob);
  Object.assign(link, { href, download: document.title + suffix });
  link.click();
  setTimeout(() => URL.revokeObjectURL(href), 60000);
}

const middle = () => cursor?.x ?? (view.low + view.high) / 2;
const keys = {
  ArrowLeft: event => step(-1, event.shiftKey), ArrowRight: event => step(1, event.shiftKey),
  ArrowUp: () => changeY(0.1, 0), ArrowDown: () => changeY(-0.1, 0),
  y: () => changeY(0, -0.25), Y: () => changeY(0, 0.5),
  PageUp: () => pan((view.low - view.high) / 2), PageDown: () => pan((view.high - view.low) / 2),
  "+": () => zoom(middle(), 0.5), "=": () => zoom(middle(), 0.5), "-": () => zoom(middle(), 2),
  Home: showAll,
  Escape() { band = cursor = null; drawPointer(); },
  p() { separate = !separate; draw(); },
  m() { marks = !marks; draw(); },
  c() { save(new Blob([csv()], { type: "text/csv" }), ".csv"); },
  i() { picture(plot.clientWidth, plot.clientHeight, 2, true).toBlob(blob => save(blob, ".png")); },
  "?"() { element("keys").showModal(); },
  0() { curves.filter(curve => !curve.shown).forEach(curve => curve.button.click()); },
};
for (let k = 1; k <= 9; k++) keys[k] = () => curves[k - 1]?.button.click();
for (const button of document.querySelectorAll("[data-key]"))
  button.onclick = keys[button.dataset.key];
document.onkeydown = event => {
  const isOther = event.ctrlKey || event.altKey || event.metaKey || element("keys").open;
  if (isOther || !Object.hasOwn(keys, event.key)) return;
  event.preventDefault();
  keys[event.key](event);
};

// ----- Printing, and the start
// What is drawn on a canvas now is not printed; an image of it is.
addEventListener("beforeprint", () => {
  document.documentElement.classList.add("on-paper");
  element("paper").src = picture(1040, 560, 3, false).toDataURL();
});
addEventListener("afterprint", () => document.documentElement.classList.remove("on-paper"));
matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => draw());

element("title").textContent = title; // the title of a document has no runs of blanks
element("subtitle").textContent = given.subtitle === title ? "" : given.subtitle;
const ends = curves.map(({ x, ascending }) => ascending && x.length ? [x[0], x[x.length - 1]]
  : range(x, summarize(x, x), 0, x.length));
whole = widen(Math.min(...ends.map(pair => pair[0])), Math.max(...ends.map(pair => pair[1])), 0);
const [low, high] = given.x_range || whole, { y_range } = given;
view = { low, high, fixed: new Map(y_range && [-1, ...curves.keys()].map(key => [key, y_range])) };
new ResizeObserver(resize).observe(plot); // also draws for the first time
