// postscript/axes.h - chart titles, X axis label and axis numbers.
#pragma once

#include "records/chart.h"

#include <cstdio>

// Writes title, subtitle, X axis label and five numbers per axis for a frame of width `w` and
// height `h` with its lower left corner at (x0, y0), in points. Debug level 441 suppresses the
// subtitle.
void crv_PlotTitles(FILE *stream, int x0, int y0, int w, int h, const crv_chart *chart);
