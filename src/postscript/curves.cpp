// postscript/curves.cpp - the fourth section of the chart file: legend entries and curves.
//
// Points go to the file as they are met: no list of them is made, however long the curve is.
#include "postscript/axes.h"
#include "postscript/balance.h"
#include "postscript/chart_file.h"
#include "records/column.h"
#include "system/console.h"
#include "text/number_writer.h"

#include <climits>
#include <cstring>
#include <iterator>

static constexpr int legend_spacing = 15;     // points from row to row
static constexpr int linetos_per_line = 5;    // keeps lines short for printer spoolers
static constexpr int points_per_stroke = 900; // keeps paths below the limit of a printer

// What the curves look like: the named style, and after it what is drawn. Deliberate: every curve
// from the fifth on looks the same, and the explicit settings override the named style.
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

// The frame on the page and the ranges that fill it.
struct plot_area {
    int x0, y0, w, h;
    double x_low, x_high;
    double y_low, y_high;
};

static bool is_zero_range(double range) { return range >= -0.0005 && range <= 0.0005; }

// Truncates toward zero; what no whole number holds becomes the smallest one.
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

// Bounds belong to the area; a comparison with a NaN fails.
static bool is_inside(const plot_area &area, double x, double y) {
    return area.x_low <= x && x <= area.x_high && area.y_low <= y && y <= area.y_high;
}

static constexpr size_t point_room = 3 * utl_max_number_chars; // of one point with its operator

// A path under way: every fifth lineto ends its line in the file, and after 900 points a new path
// begins where the old one ended. Its text goes to the stream in pieces: a call for each point
// costs more than making its text.
struct polyline {
    FILE *stream;
    bool begun;
    int on_line;
    int in_stroke;
    size_t length; // of the text
    char text[16384];
};

static void flush_path(polyline *path) {
    fwrite(path->text, 1, path->length, path->stream);
    path->length = 0;
}

// Writes "%u %u" and the operator.
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

// Pairs the values of the two columns in step, up to the end of the shorter list, and draws those
// inside. Returns false when there are none. A column can be paired with itself.
static bool draw_points(FILE *stream, const plot_area &area, crv_column *x_column,
                        crv_column *y_column) {
    polyline path;
    path.stream = stream;
    path.begun = false;
    path.length = 0;
    crv_value *x = x_column->val_list;
    crv_value *y = y_column->val_list;
    for (; x && y; x = x->next, y = y->next)
        if (is_inside(area, x->val, y->val))
            draw_to(&path, page_x(area, x->val), page_y(area, y->val));
    flush_path(&path);
    x_column->val_cur = x;
    y_column->val_cur = y;
    return path.begun;
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

// Curve 1 brings the titles and the axis numbers with it.
static void write_curve(FILE *stream, const plot_area &area, int curve, const crv_chart *chart) {
    const bool has_legend = chart->story_ts[0][0] == '\0';
    const int row = area.y0 - 30 - legend_spacing * (curve - 1);
    const crv_curve *slot = chart->curves[curve - 1];

    if (has_legend) write_legend_label(stream, area, row, curve);
    write_style(stream, curve);
    if (has_legend) write_legend_sample(stream, area, row);
    if (curve == 1) crv_PlotTitles(stream, area.x0, area.y0, area.w, area.h, chart);
    fputs("%% --- Begin drawing chart points - (crv_ module [[44]]) ---\n", stream);
    if (!draw_points(stream, area, crv_columns[slot->xcol], crv_columns[slot->ycol]))
        printf("%%crv_44-w-out, Curve \"%u\" is out of Plot range \n",
               static_cast<unsigned>(curve));
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
