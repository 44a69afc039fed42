// postscript/chart_file.h - the sections of the chart file, a one-page PostScript program, in
// order.
//
//   crv_PlotHead   preamble.cpp          constants, fonts, story strings, page, text procedures
//   crv_PlotTxt    line_styles.cpp       line styles and the legend procedure
//   crv_PlotAppen  appended.cpp          a PostScript file of the user, if one is named
//   crv_PlotData   curves.cpp, axes.cpp  titles, axis numbers, legend, curves
//   crv_PlotGrid   grid.cpp              grid, ticks and frame, over the curves
//   crv_PlotEnd    trailer.cpp           trailer; the file is closed and printed
//
// The page is US Letter in landscape: x runs from 0 to 792 points along the long side, y from 0 to
// 612. The chart frame is passed as left edge, bottom edge, width and height, whole numbers in
// points.
//
// User text goes into PostScript strings as it is; crv_ChkBal reports what will not balance.
//
// Deliberate: write errors on the stream are ignored, so that a chart on a full disk is incomplete
// and goes to the printer all the same.
#pragma once

#include "records/chart.h"

#include <cstdio>

// Routine 41. Creates the chart file `path` and writes the preamble. Returns the stream for the
// sections that follow. When the file cannot be opened, it reports that and ends the program with
// status 0.
FILE *crv_PlotHead(const char *path, const crv_chart *chart);

// Routine 47. Reads the labels of columns 1 to num_curves. The frame is not used; the font size is
// in points.
void crv_PlotTxt(FILE *stream, int x0, int y0, int w, int h, int font_size, const crv_chart *chart);

// Routine 46. Copies the text file `user_file`, its lines cut to 81 characters, and returns 1. When
// it cannot be opened, or is the chart file `path` itself, reports that and ends the program with
// status 0.
//
// Deliberate: a last line without a line end is not copied, and a line of more than 1,023
// characters is copied in pieces of 1,023, each cut to 81.
int crv_PlotAppen(FILE *stream, const char *user_file, const char *path);

// Routines 44 and 58. Draws the first seven of num_curves curves, clipped to the ranges of the
// chart. A range of zero leaves the section out. The val_cur of the columns drawn is where their
// walk ended.
void crv_PlotData(FILE *stream, int x0, int y0, int w, int h, crv_chart *chart);

// Routine 42. Four major divisions an axis, five minor ones in each, whatever the data.
void crv_PlotGrid(FILE *stream, int x0, int y0, int w, int h);

// Routine 45. Writes the trailer, closes the file and hands it to the printer command: the
// environment's CRV_PRINTCHAIN, or "lpr ", then a blank and the path. Asks first unless the print
// flag of the settings is set.
void crv_PlotEnd(const char *path, FILE *stream);
