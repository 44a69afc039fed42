// readers/frame_file.h - reader of frame files (.vdr), which have directives followed by their
// lines.
//
//   %N              1 line    number of data points
//   %S              1 line    chart style
//   %T              1 line    title, 80 characters
//   %XA, %YA        1 line    label of X or Y, 31 characters
//   %YA1 to %YA6    1 line    Y axis titles 1 to 6, 32 characters
//   %XR, %YR        2 lines   range of X or Y: low, high
//   %XY             none      prints that reading begins
//   %D              a line per data point: X and Y, separated by blanks and commas
//
// A directive is at the start of its line; other lines are skipped. Lines have at most 126
// characters; a longer one is read in parts. An unterminated last line is used.
#pragma once

#include "readers/frame_header.h"
#include "readers/survey.h"

#include <cstdint>

// Routine 85. Makes two columns, X in slot first_slot of the column table and Y in the next, and
// sets style and axis titles of chart 0, which must exist. The time window and the X filter are not
// used. The minimum and maximum of each column are the range of the file if it gives one, otherwise
// the extremes of the values, rounded for the chart.
//
// Returns 2. Returns 0 if the path begins with '^', which means no name, or if a data block has
// less than three points. Ends the program with status 0 if the file cannot be read or memory runs
// out.
//
// Deliberate: %S also sets the number of data points; texts of %YA1 to %YA6 can be one character
// longer than those of %XA; the sum of the columns stays 0.
int crv_ReadVDR(const char *path, int first_slot);

// The contents of a frame file, without its values.
struct crv_frame_survey {
    crv_frame_header header;
    uint64_t num_found = 0;     // data points of all blocks
    uint64_t num_blocks = 0;    // data blocks
    bool ends_early = false;    // the file ends within a data block
    bool too_few = false;       // a block with too few points ended the pass
    double extremes[2][2] = {}; // lowest and highest X, lowest and highest Y; not a number only if
                                // no value is one
    uint64_t missing_line = 0;  // the first data line with less than two numbers, 0 without one
};

// Reads the file as crv_ReadVDR does, but prints nothing and stores no value. A failed read ends
// the file; lines->error is then set.
void crv_SurveyVDR(utl_line_reader *lines, crv_frame_survey *survey);
