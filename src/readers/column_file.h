// readers/column_file.h - reads column files (.pos): one row of numbers per line.
//
//   label line   the labels of the columns, when there is such a line
//   first line   the first row; the number of its fields is the number of columns
//   to the end   rows
//
// Lines hold at most 1,022 characters. Fields are separated by blanks and commas. Columns are
// counted from 1; column 0 is the row count, 1, 2, 3, .... The last line counts only with its line
// end; a piece of 1,023 characters counts at the very end too.
#pragma once

#include "readers/selection.h"

// Routine 94. Makes one column per number of `selection`: number k fills slot first_slot + k of the
// column table with the values of the rows whose count lies in the time window of the settings.
// Lines are counted from 1; a label line of 0 or below is none, and label_line < first_line.
// Numbers for which the table has no slot are left out; the caller refuses such a selection.
//
// Returns the number of columns made, or 0 when a selected column does not exist (none is made
// then). A file that cannot be read and memory that runs out end the program with status 0.
//
// Deliberate: failures end with 0, where those of a request file end with 1; numpts counts the rows
// that the time window drops, and the mean divides by it; var1 and var2 are row indices counted
// from 0; and magnitudes are compared with their sign.
int crv_ReadPost(const char *path, const crv_selection &selection, int label_line, int first_line);
