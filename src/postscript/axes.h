// postscript/axes.h - the texts around the chart, written with its first curve.
#pragma once

#include "records/chart.h"

#include <cstdio>

// Title, subtitle, X axis label and five numbers on each axis. Debug level 441 leaves the subtitle
// out.
void crv_PlotTitles(FILE *stream, int x0, int y0, int w, int h, const crv_chart *chart);
