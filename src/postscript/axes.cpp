// postscript/axes.cpp - places titles, axis label and axis numbers relative to the frame, in
// points.
#include "postscript/axes.h"

#include "postscript/balance.h"
#include "postscript/page.h"
#include "records/column.h"
#include "records/settings.h"
#include "system/arithmetic.h"
#include "text/number_writer.h"

// The position of the title is fixed: 435 is the centre of the frame that the driver passes.
static void write_title(FILE *stream, const crv_chart *chart) {
    fputs("[] 0 setdash 1 setlinewidth 0 setgray\n", stream);
    fputs("/Times-Italic findfont 20 scalefont setfont \n", stream);
    // Deliberate: this trace line has number 41 and the word chart2.
    if (crv_DBG == 44) printf("    _41-i-val, chart2->major_t[0] = \"%s\" \n", chart->major_t[0]);
    crv_ChkBal(chart->major_t[0]);
    fprintf(stream, "435 550 (%s) CenterHorText \n", chart->major_t[0]);
}

static void write_subtitle(FILE *stream, int x0, int y0, int w, int h, const crv_chart *chart) {
    const bool has_major = chart->major_t[1][0] != '\0';
    const bool appends = chart->story_ts[0][0] != '\0';
    if (crv_DBG == 441 || (appends && !has_major)) return;
    const char *subtitle = has_major ? chart->major_t[1] : chart->minor_t[0];
    fputs("/Courier findfont 15 scalefont setfont \n", stream);
    fprintf(stream, "%u %u ", crv_ToUnsigned(x0 + w / 2), crv_ToUnsigned(y0 + h + 20));
    crv_ChkBal(subtitle);
    fprintf(stream, "(%s) CenterHorText \n", subtitle);
}

static void write_x_label(FILE *stream, int x0, int y0, const crv_chart *chart) {
    if (chart->story_ts[0][0] != '\0') return;
    const char *label = crv_columns[0]->colname;
    fprintf(stream, "/Helvetica findfont %u scalefont setfont \n", 20U);
    fprintf(stream, "%u %u moveto ", crv_ToUnsigned(x0 + 40), crv_ToUnsigned(y0 - 40));
    crv_ChkBal(label);
    fprintf(stream, "(%s) show \n", label);
}

static void write_number(FILE *stream, int x, int y, int precision, double value) {
    fprintf(stream, "%u %u moveto ", crv_ToUnsigned(x), crv_ToUnsigned(y));
    fprintf(stream, "(%s) show \n", utl_FormatFixed(value, 7, precision).text);
}

// Returns the digits after the decimal point. Deliberate: they depend on the upper bound only, not
// on the size of the range.
static int precision_for(double upper_bound) { return upper_bound <= 0.05 ? 5 : 2; }

// Returns the value at `fraction` of the range that begins with `low`.
static double value_at(double low, double range, double fraction) {
    return utl_Add(low, utl_Multiply(fraction, range));
}

static void write_x_numbers(FILE *stream, int x0, int y0, int w, const double (&xminmax)[2]) {
    const double range = utl_Subtract(xminmax[1], xminmax[0]);
    const int precision = precision_for(xminmax[1]);
    const int left = x0 - 8;
    const int y = y0 - 15;
    write_number(stream, left, y, precision, xminmax[0]);
    write_number(stream, left + w, y, precision, xminmax[1]);
    write_number(stream, left + w / 2, y, precision, value_at(xminmax[0], range, 0.5));
    write_number(stream, left + static_cast<int>(0.25 * w), y, precision,
                 value_at(xminmax[0], range, 0.25));
    write_number(stream, left + static_cast<int>(0.75 * w), y, precision,
                 value_at(xminmax[0], range, 0.75));
}

static void write_y_numbers(FILE *stream, int x0, int y0, int h, const double (&yminmax)[2]) {
    const double range = utl_Subtract(yminmax[1], yminmax[0]);
    const int precision = precision_for(yminmax[1]);
    const int x = x0 - 60;
    const int bottom = y0 - 4;
    write_number(stream, x, bottom, precision, yminmax[0]);
    write_number(stream, x, bottom + h, precision, yminmax[1]);
    write_number(stream, x, bottom + h / 2, precision, value_at(yminmax[0], range, 0.5));
    write_number(stream, x, bottom + static_cast<int>(0.25 * h), precision,
                 value_at(yminmax[0], range, 0.25));
    write_number(stream, x, bottom + static_cast<int>(0.75 * h), precision,
                 value_at(yminmax[0], range, 0.75));
}

void crv_PlotTitles(FILE *stream, int x0, int y0, int w, int h, const crv_chart *chart) {
    write_title(stream, chart);
    write_subtitle(stream, x0, y0, w, h, chart);
    write_x_label(stream, x0, y0, chart);
    if (crv_DBG == 44) {
        printf("    _44-i-val, xmin = %f, xmax = %f \n", chart->xminmax[0], chart->xminmax[1]);
        printf("    _44-i-val, ymin = %f, ymax = %f \n", chart->yminmax[0], chart->yminmax[1]);
    }
    fputs("/Helvetica findfont 10 scalefont setfont \n", stream);
    write_x_numbers(stream, x0, y0, w, chart->xminmax);
    write_y_numbers(stream, x0, y0, h, chart->yminmax);
    // Deliberate: the first curve, which is drawn next, is black; only its legend sample is red.
    fputs("crv_line_1 \n", stream);
}
