// postscript/grid.cpp - the fifth section of the chart file: grid, ticks and frame.
#include "postscript/chart_file.h"
#include "postscript/page.h"

// Returns 1 % of a side in points, truncated.
static int tick_length(int side) { return static_cast<int>(side * 0.01); }

static void write_major_lines(FILE *stream, int x0, int y0, int w, int h) {
    const int x_step = w / 4;
    const int y_step = h / 4;
    fputs("%%  --- Begin drawing Major ticks  \n", stream);
    fputs("[] 0 setdash 0 setlinewidth .3 setgray\n", stream);
    fprintf(stream, "%u %u %u { \n", crv_ToUnsigned(x0 + x_step), crv_ToUnsigned(x_step),
            crv_ToUnsigned(x0 + w - x_step));
    fputs("  /x_pos exch def \n", stream);
    fprintf(stream, "  x_pos %u moveto x_pos %u lineto stroke  %%%% --- X major ticks\n",
            crv_ToUnsigned(y0), crv_ToUnsigned(y0 + h));
    fputs("} for\n", stream);
    fprintf(stream, "%u %u %u { \n", crv_ToUnsigned(y0 + y_step), crv_ToUnsigned(y_step),
            crv_ToUnsigned(y0 + h - y_step));
    fputs("  /y_pos exch def \n", stream);
    fprintf(stream, "  %u y_pos moveto %u y_pos lineto stroke  %%%% --- Y major ticks\n",
            crv_ToUnsigned(x0), crv_ToUnsigned(x0 + w));
    fputs("} for\n", stream);
}

static void write_minor_ticks(FILE *stream, int x0, int y0, int w, int h) {
    const int x_tick = tick_length(w); // on the bottom and top edges
    const int y_tick = tick_length(h); // on the left and right edges
    fputs("%%  --- Minor ticks for Drawing Grid (crv_ module [[42]])\n", stream);
    fputs("[] 0 setdash 0 setlinewidth\n", stream);
    fprintf(stream, "%u %u %u { \n", crv_ToUnsigned(x0), crv_ToUnsigned(w / 4 / 5),
            crv_ToUnsigned(x0 + w));
    fputs("  /x_pos exch def \n", stream);
    fprintf(stream, "  x_pos %u moveto x_pos %u lineto stroke  %%%% --- X minor ticks (bottom)\n",
            crv_ToUnsigned(y0), crv_ToUnsigned(y0 + x_tick));
    fprintf(stream, "  x_pos %u moveto x_pos %u lineto stroke  %%%% --- X minor ticks (top)\n",
            crv_ToUnsigned(y0 + h - x_tick), crv_ToUnsigned(y0 + h));
    fputs("} for\n ", stream); // Deliberate: the blank begins the next line.
    fprintf(stream, "%u %u %u { \n", crv_ToUnsigned(y0), crv_ToUnsigned(h / 4 / 5),
            crv_ToUnsigned(y0 + h));
    fputs("  /y_pos exch def \n", stream);
    fprintf(stream, "  %u y_pos moveto %u y_pos lineto stroke  %%%% --- Y minor ticks (left)\n",
            crv_ToUnsigned(x0), crv_ToUnsigned(x0 + y_tick));
    // Deliberate: these ticks are on the right edge, and their comment says left.
    fprintf(stream, "  %u y_pos moveto %u y_pos lineto stroke  %%%% --- Y minor ticks (left)\n",
            crv_ToUnsigned(x0 + w - y_tick), crv_ToUnsigned(x0 + w));
    fputs("} for\n", stream);
}

static void write_frame(FILE *stream, int x0, int y0, int w, int h) {
    fputs("%%  --- Begin drawing  chart axis  (crv_ module [[42]]) \n", stream);
    fputs("0 0 0 setrgbcolor \n", stream);
    fprintf(stream, "newpath %u %u moveto ", crv_ToUnsigned(x0), crv_ToUnsigned(y0));
    fprintf(stream, "%d %d rlineto ", w, 0);
    fprintf(stream, "%d %d rlineto \n", 0, h);
    fprintf(stream, "%d %d rlineto closepath 2 setlinewidth 0 setgray stroke\n", -w, 0);
    fputs("[] 0 setdash 0 setlinewidth 0 setgray \n", stream);
    fputs("%%  --- End Drawing Grid  (crv_ module [[42]]) \n", stream);
}

void crv_PlotGrid(FILE *stream, int x0, int y0, int w, int h) {
    write_major_lines(stream, x0, y0, w, h);
    write_minor_ticks(stream, x0, y0, w, h);
    write_frame(stream, x0, y0, w, h);
}
