// records/chart.h - the chart record: titles, labels, ranges and curves of the chart to be drawn.
#pragma once

#include <cstdint>

// One curve: the slots of its X and Y column in the column table.
struct crv_curve {
    uint16_t xcol;
    uint16_t ycol;
};

constexpr int crv_curve_slots = 7;
constexpr int crv_chart_slots = 4;

struct crv_chart {
    char major_t[2][128];  // major titles (-t, -t1, -t2)
    char minor_t[2][128];  // minor titles; [0] is the title of the first column, [1] is never set
    char story_ts[8][128]; // story strings; [0] names a PostScript file to append (-s0), [4] to [7]
                           // are never set
    char xaxis_t[64];
    char yaxis_ts[8][64];
    char ylegends[8][64];
    char fig[16];
    double xminmax[2]; // ranges are pairs low, high; low above high means not set
    double yminmax[2];
    double zoomxminmax[2];
    double zoomyminmax[2];
    uint16_t style;
    uint16_t num_curves; // columns read minus one; may exceed crv_curve_slots
    crv_curve *curves[crv_curve_slots];
};

// The chart table; only slot 0 is used.
extern crv_chart *crv_charts[crv_chart_slots];

// Routine 50. Initialises the chart record of slot `index`, 0 to crv_chart_slots - 1, and returns
// it. Reuses an existing record, with a warning on standard output. If memory runs out, prints an
// error message and returns null.
//
// Curves 0 to 4 get the columns {0, k + 1}, curves 5 and 6 {0, 0}.
//
// Deliberate: curves 6 and 7 plot column 0 against itself, so that a chart has five curves.
//
// Deliberate: a reused record keeps its axis titles, legends and figure label.
crv_chart *crv_AllocCht(int index);
