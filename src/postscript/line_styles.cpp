// postscript/line_styles.cpp - the second section of the chart file: named line styles and the
// legend procedure.
#include "postscript/balance.h"
#include "postscript/chart_file.h"
#include "records/column.h"

#include <iterator>

// These styles take effect in the legend procedure only: curves override them with their own
// settings.
static constexpr const char *line_styles[] = {
    "/crv_line_0 {[] 0 setdash 1 setlinewidth 0 setgray 0 0 0 setrgbcolor } def \n",
    "/crv_line_1 {[] 0 setdash 1 setlinewidth 0 setgray 0 0 0 setrgbcolor } def \n",
    "/crv_line_2 {[2 2] 0 setdash 1 setlinewidth 0 setgray 0 0 0 setrgbcolor } def \n",
    "/crv_line_3 {[5 5] 0 setdash 1 setlinewidth 0 setgray 0 0 0 setrgbcolor } def \n",
    "/crv_line_4 {[8 2 2 2] 0 setdash 1 setlinewidth 0 setgray 0 0 0 setrgbcolor } def \n",
    "/crv_line_5 {[] 0 setdash 1 setlinewidth 0 setgray 0 1 1 setrgbcolor } def \n",
    " \n",
};
static_assert(std::size(line_styles) == 7);

// x y crv_Legend: draws samples and names of the curves, one below the other. The file calls it in
// a comment only, as an example for users.
static constexpr const char *legend_begin[] = {
    "/crv_Legend {  \n",
    "  /y_loc exch def /x_loc exch def \n",
    "  /charsize (M) stringwidth pop def \n",
    "  /spacesize 0.4 charsize mul def \n",
    "  /lm x_loc def \n",
    "  /y_cur y_loc charsize sub def\n",
};
static_assert(std::size(legend_begin) == 6);

static constexpr const char *legend_end[] = {
    "  0 0 0 setrgbcolor \n",
    "} def \n",
    "%% 680 500 crv_Legend \n",
    "%% --- End Drawing chart Text  ---- (crv_ module [[47]]) ---\n",
    "\n",
};
static_assert(std::size(legend_end) == 5);

static constexpr int last_style = 5; // of all curves from the fifth

static void write_legend_row(FILE *stream, int curve) {
    const char *name = crv_columns[curve]->colname;
    fprintf(stream, "  crv_line_%d ", curve < last_style ? curve : last_style);
    fputs("lm y_cur moveto 36 0 rlineto stroke\n", stream);
    crv_ChkBal(name);
    fprintf(stream, "  crv_line_0 lm 46 add y_cur moveto (%s) show\n", name);
    fputs("  /y_cur y_cur charsize sub spacesize sub def \n", stream);
}

void crv_PlotTxt(FILE *stream, int /*x0*/, int /*y0*/, int /*w*/, int /*h*/, int font_size,
                 const crv_chart *chart) {
    fputs("%% --- Begin setting Legend information - (crv_ module [[47]]) ---\n", stream);
    fprintf(stream, "/Helvetica findfont %u scalefont setfont \n",
            static_cast<unsigned>(font_size));
    for (const char *line : line_styles) fputs(line, stream);
    for (const char *line : legend_begin) fputs(line, stream);
    for (int curve = 1; curve <= chart->num_curves; ++curve) {
        if (curve >= CRV_MAXCOLS || !crv_columns[curve]) break;
        write_legend_row(stream, curve);
    }
    for (const char *line : legend_end) fputs(line, stream);
}
