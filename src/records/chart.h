// records/chart.h - titles, labels, ranges and curve assignments of the chart to be drawn.
#pragma once

#include <cstdint>

// One curve: which columns of the column table it plots.
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
    uint16_t num_curves; // columns read less one; can be more than there are slots
    crv_curve *curves[crv_curve_slots];
};

// The chart table; only slot 0 is used.
extern crv_chart *crv_charts[crv_chart_slots];

// Routine 50. Gives the initialised chart record of slot `index`, or null when memory runs out,
// which it reports. A record that is there already is used again, with a warning.
//
// Curve k plots column 0 against column k + 1, except the last two slots, which stay {0, 0}.
//
// Deliberate: a record used again keeps its axis titles, legends and figure label.
crv_chart *crv_AllocCht(int index);
