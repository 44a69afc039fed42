// postscript/chart_file.h - writes the chart file, a one-page PostScript program, section by
// section.
//
//   crv_PlotHead   preamble.cpp          constants, fonts, story strings, page, text procedures
//   crv_PlotTxt    line_styles.cpp       line styles and the legend procedure
//   crv_PlotAppen  appended.cpp          a PostScript file of the user, if one is named
//   crv_PlotData   curves.cpp, axes.cpp  titles, axis numbers, legend, curves
//   crv_PlotGrid   grid.cpp              grid, ticks and frame, over the curves
//   crv_PlotEnd    trailer.cpp           trailer; closes and prints the file
//
// The page is US Letter in landscape: x runs from 0 to 792 points along the long side, y from 0 to
// 612. The arguments x0, y0, w and h are the left edge, bottom edge, width and height of the chart
// frame in points.
//
// User text is written into PostScript strings unchanged; crv_ChkBal reports unbalanced parentheses
// and braces.
//
// Deliberate: write errors on the stream are ignored: on a full disk an incomplete chart is sent to
// the printer.
#pragma once

#include "records/chart.h"

#include <cstdio>

// Routine 41. Creates the chart file `path` and writes the preamble. Returns the stream for the
// other sections. If the file cannot be opened, prints an error message and ends the program with
// status 0.
FILE *crv_PlotHead(const char *path, const crv_chart *chart);

// Routine 47. Writes the line styles and a legend procedure with the labels of columns 1 to
// num_curves in a font of `font_size` points. The frame is not used.
void crv_PlotTxt(FILE *stream, int x0, int y0, int w, int h, int font_size, const crv_chart *chart);

// Routine 46. Copies the text file `user_file`, each line cut to 81 characters, and returns 1. If
// it cannot be opened, or is the chart file `path` itself, prints an error message and ends the
// program with status 0.
//
// Deliberate: an unterminated last line is not copied; a line of 1,023 characters or more is copied
// in parts of 1,023, each cut to 81.
int crv_PlotAppen(FILE *stream, const char *user_file, const char *path);

// Routines 44 and 58. Draws the first seven of num_curves curves; points outside the ranges of the
// chart are omitted. Warns on standard error of points outside the ranges, of values without a
// partner, and of curves that show a column against itself. Prints a message and writes nothing if
// a range is zero. Afterwards the val_cur of a drawn column is its first node beyond the end of the
// shorter list, or null.
void crv_PlotData(FILE *stream, int x0, int y0, int w, int h, crv_chart *chart);

// Routine 42. Draws grid, ticks and frame: four major divisions per axis with five minor ones each,
// independent of the data.
void crv_PlotGrid(FILE *stream, int x0, int y0, int w, int h);

// Routine 45. Writes the trailer, closes the file and runs the printer command: the environment
// variable CRV_PRINTCHAIN or else "lpr ", a blank, and `path`. Asks the user first unless the print
// flag of the settings is set.
void crv_PlotEnd(const char *path, FILE *stream);
