// readers/frame_file.h - reads frame files (.vdr): directives, each followed by the lines that it
// governs.
//
//   %N              1 line    number of data points
//   %S              1 line    chart style
//   %T              1 line    title, 80 characters
//   %XA, %YA        1 line    label of X or Y, 31 characters
//   %YA1 to %YA6    1 line    Y axis titles 1 to 6, 32 characters
//   %XR, %YR        2 lines   range of X or Y: low, high
//   %XY                       prints that reading begins
//   %D              a line per data point: X and Y, separated by blanks and commas
//
// A directive stands at the start of its line; other lines are skipped. Lines hold at most 126
// characters, a longer one is read in pieces. A last line without its line end counts.
#pragma once

// Routine 85. Makes two columns, X in slot first_slot of the column table and Y in the next, and
// sets style and axis titles of chart 0, which must be there. No value is screened. The minimum and
// maximum of each column are rounded for the chart, or those that the file gives.
//
// Returns 2, or 0 when the name begins with '^', which stands for no name, or when a data block has
// less than three points. A file that cannot be read and memory that runs out end the program with
// status 0.
//
// Deliberate: %S sets the number of data points too; texts of %YA1 to %YA6 are one character longer
// than those of %XA; the sum of the columns stays 0.
int crv_ReadVDR(const char *path, int first_slot);
