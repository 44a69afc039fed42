// postscript/curves.cpp - the fourth section of the chart file: legend entries and curves.
//
// Each point inside the ranges is scaled to the page and written at once: memory does not grow with
// the length of a curve.
#include "postscript/axes.h"
#include "postscript/balance.h"
#include "postscript/chart_file.h"
#include "records/column.h"
#include "system/console.h"
#include "text/number_writer.h"

#include <climits>
#include <cstdint>
#include <cstring>
#include <iterator>

static constexpr int legend_spacing = 15;  // points between rows, 1.5 times the font size
static constexpr int linetos_per_line = 5; // 5 of 15 characters: printer spoolers need short lines
static constexpr int points_per_stroke = 900; // below the path limit of printers, see draw_to

// Styles of the curves: the named style, then the settings for line and colour. Deliberate: all
// curves from the fifth look the same, and the settings override the named style.
struct curve_style {
    const char *named;
    const char *line;
    const char *colour;
};
static constexpr curve_style curve_styles[] = {
    {"crv_line_1\n", "[] 0 setdash 1 setlinewidth 0 setgray\n", "1 0 0 setrgbcolor \n"},
    {"crv_line_2\n", "[3] 0 setdash 0.5 setlinewidth .1 setgray\n", "0 1 0 setrgbcolor \n"},
    {"crv_line_3\n", "[3 5] 6 setdash 1 setlinewidth .2 setgray\n", "0 0 1 setrgbcolor \n"},
    {"crv_line_4\n", "[2 3] 11 setdash 1.5 setlinewidth .3 setgray\n", "1 1 0 setrgbcolor \n"},
    {"crv_line_5\n", "[] 0 setdash 1 setlinewidth 0 setgray\n", "0 1 1 setrgbcolor \n"},
};
static_assert(std::size(curve_styles) == 5);

// The frame on the page in points, and the ranges that it shows.
struct plot_area {
    int x0, y0, w, h;
    double x_low, x_high;
    double y_low, y_high;
};

// Points of a curve.
struct point_counts {
    uint64_t drawn;
    uint64_t outside;  // the ranges of the chart
    uint64_t unpaired; // values of the longer column after the end of the shorter one
};

static bool is_zero_range(double range) { return range >= -0.0005 && range <= 0.0005; }

// Truncates toward zero. A position outside the range of int becomes INT_MIN, as by the conversion
// instruction of x86; in C++ the conversion is undefined.
static unsigned truncate_to_point(double position) {
    const bool fits = position > -2147483649.0 && position < 2147483648.0;
    return static_cast<unsigned>(fits ? static_cast<int>(position) : INT_MIN);
}

static unsigned page_x(const plot_area &area, double x) {
    return truncate_to_point((x - area.x_low) / (area.x_high - area.x_low) * area.w + area.x0);
}

static unsigned page_y(const plot_area &area, double y) {
    return truncate_to_point((y - area.y_low) / (area.y_high - area.y_low) * area.h + area.y0);
}

// The bounds are inside; a NaN is outside, because its comparisons are false.
static bool is_inside(const plot_area &area, double x, double y) {
    return area.x_low <= x && x <= area.x_high && area.y_low <= y && y <= area.y_high;
}

// Buffer size of one point: two numbers and an operator of at most 9 characters.
static constexpr size_t point_room = 3 * utl_max_number_chars;

// A path being written. Its text is buffered and written to the stream in blocks of 16 KiB, about a
// thousand points: a call per point takes longer than formatting the point.
struct polyline {
    FILE *stream;
    bool begun;
    int on_line;   // linetos of the current line of the file
    int in_stroke; // points of the current stroke
    size_t length; // of the text
    char text[16384];
};

static void flush_path(polyline *path) {
    fwrite(path->text, 1, path->length, path->stream);
    path->length = 0;
}

// Writes "%u %u" and the operator `name`.
template <size_t size>
static void write_point(polyline *path, unsigned x, unsigned y, const char (&name)[size]) {
    if (path->length + point_room > sizeof path->text) flush_path(path);
    char *end = utl_WriteUnsigned(path->text + path->length, x);
    *end++ = ' ';
    end = utl_WriteUnsigned(end, y);
    memcpy(end, name, size - 1);
    end += size - 1;
    path->length = static_cast<size_t>(end - path->text);
}

// Begins a path at its first point and continues it at each further one. Every fifth lineto ends a
// line of the file. After 900 points a new path begins at the last point: a Level 1 printer limits
// a path to 1,500 points (PostScript Language Reference Manual, appendix B).
static void draw_to(polyline *path, unsigned x, unsigned y) {
    if (!path->begun) {
        write_point(path, x, y, " moveto \n");
        path->begun = true;
        path->on_line = path->in_stroke = 1;
        return;
    }
    ++path->in_stroke;
    if (path->on_line < linetos_per_line) {
        write_point(path, x, y, " lineto ");
        ++path->on_line;
    } else {
        write_point(path, x, y, " lineto \n");
        path->on_line = 1;
    }
    if (path->in_stroke > points_per_stroke) {
        flush_path(path);
        fputs("stroke \n", path->stream);
        write_point(path, x, y, " moveto \n");
        path->in_stroke = 1;
    }
}

// Draws the pairs of values of both columns that are inside the area, up to the end of the shorter
// list. Both columns may be the same. Deliberate: a point outside is left out and its neighbors are
// joined; the curve is not clipped at the frame.
static point_counts draw_points(FILE *stream, const plot_area &area, crv_column *x_column,
                                crv_column *y_column) {
    point_counts counts = {};
    polyline path = {};
    path.stream = stream;
    crv_value *x = x_column->val_list;
    crv_value *y = y_column->val_list;
    for (; x && y; x = x->next, y = y->next)
        if (is_inside(area, x->val, y->val)) {
            draw_to(&path, page_x(area, x->val), page_y(area, y->val));
            ++counts.drawn;
        } else {
            ++counts.outside;
        }
    flush_path(&path);
    x_column->val_cur = x;
    y_column->val_cur = y;
    for (const crv_value *rest = x ? x : y; rest; rest = rest->next) ++counts.unpaired;
    return counts;
}

// The neighbours of a point that is left out are joined, which can look like data.
static void warn_left_out(int curve, const point_counts &counts) {
    const unsigned long long points = counts.outside + counts.drawn;
    if (counts.outside > 0)
        fprintf(utl_ErrorStream(),
                "%%crv_44-w-pts, Curve %d: %llu of %llu points are outside the ranges of the chart"
                " and left out\n",
                curve, static_cast<unsigned long long>(counts.outside), points);
    if (counts.unpaired > 0)
        fprintf(
            utl_ErrorStream(),
            "%%crv_44-w-len, Curve %d: the last %llu values of the longer column are left out\n",
            curve, static_cast<unsigned long long>(counts.unpaired));
}

static void warn_column_against_itself(int curve, int column) {
    fprintf(utl_ErrorStream(),
            "%%crv_44-w-slf, Curve %d shows column %d against itself, not the series of its legend:"
            " a chart has 5 curves\n",
            curve, column);
}

static void write_legend_label(FILE *stream, const plot_area &area, int row, int curve) {
    const char *label = crv_columns[curve]->colname;
    fprintf(stream, "%d %d moveto ", area.x0 + 500, row);
    crv_ChkBal(label);
    fprintf(stream, "(%s) show \n", label);
}

static void write_legend_sample(FILE *stream, const plot_area &area, int row) {
    fprintf(stream, "%d %d moveto ", area.x0 + 410, row);
    // Deliberate: the blank begins the next line.
    fprintf(stream, "%d %d lineto stroke \n ", area.x0 + 490, row);
}

static void write_style(FILE *stream, int curve) {
    constexpr int last = std::size(curve_styles);
    const curve_style &style = curve_styles[(curve < last ? curve : last) - 1];
    fputs(style.named, stream);
    fputs(style.line, stream);
    fputs(style.colour, stream);
}

// Writes legend entry and path of curve `curve`, counted from 1. With curve 1 it also writes titles
// and axis numbers.
static void write_curve(FILE *stream, const plot_area &area, int curve, const crv_chart *chart) {
    const bool has_legend = chart->story_ts[0][0] == '\0';
    const int row = area.y0 - 30 - legend_spacing * (curve - 1);
    const crv_curve *slot = chart->curves[curve - 1];

    if (has_legend) write_legend_label(stream, area, row, curve);
    write_style(stream, curve);
    if (has_legend) write_legend_sample(stream, area, row);
    if (curve == 1) crv_PlotTitles(stream, area.x0, area.y0, area.w, area.h, chart);
    fputs("%% --- Begin drawing chart points - (crv_ module [[44]]) ---\n", stream);
    const point_counts counts =
        draw_points(stream, area, crv_columns[slot->xcol], crv_columns[slot->ycol]);
    if (counts.drawn == 0)
        printf("%%crv_44-w-out, Curve \"%u\" is out of Plot range \n",
               static_cast<unsigned>(curve));
    warn_left_out(curve, counts);
    if (slot->xcol == slot->ycol) warn_column_against_itself(curve, slot->xcol);
    fputs("stroke \n", stream);
    fputs("crv_line_0\n", stream);
    fputs("%% --- End Drawing chart Data  ---- (crv_ module [[44]]) ---\n", stream);
}

void crv_PlotData(FILE *stream, int x0, int y0, int w, int h, crv_chart *chart) {
    const plot_area area = {
        x0, y0, w, h, chart->xminmax[0], chart->xminmax[1], chart->yminmax[0], chart->yminmax[1]};
    if (is_zero_range(area.x_high - area.x_low)) {
        printf("%%crv_44-e-zero, X range is zero \n");
        return;
    }
    if (is_zero_range(area.y_high - area.y_low)) {
        printf("%%crv_44-e-zero, Y range is zero \n");
        return;
    }
    fputs("%% --- Begin drawing chart data  -- (crv_ module [[44]]) ---\n", stream);
    fputs("/Helvetica findfont 10 scalefont setfont \n", stream);

    for (int curve = 1; curve <= chart->num_curves && curve <= crv_curve_slots; ++curve)
        write_curve(stream, area, curve, chart);
    if (chart->num_curves > crv_curve_slots)
        fprintf(utl_ErrorStream(), "%%crv_44-w-cur, Only the first %d of %d curves are drawn\n",
                crv_curve_slots, int{chart->num_curves});
}
