// readers/column_file.h - reader of column files (.pos), which have one row of numbers per line.
//
//   label line   the labels of the columns, if the file has them
//   first line   the first row; its number of fields is the number of columns
//   to the end   rows
//
// Lines have at most 1,022 characters. Fields are separated by blanks and commas. Columns are
// counted from 1; column 0 is the row count 1, 2, 3, .... An unterminated last line is ignored
// unless it has 1,023 characters.
#pragma once

#include "readers/column_header.h"
#include "readers/selection.h"
#include "readers/survey.h"

#include <cstdint>

// Routine 94. Makes one column per number of `selection`: number k fills slot first_slot + k of the
// column table with the values of the rows whose count is in the time window of the settings.
// `label_line` and `first_line` are counted from 1, label_line < first_line; without labels
// `label_line` is 0 or below. Numbers without a slot in the table are skipped; the caller rejects
// such a selection.
//
// Returns the number of columns made, or 0 and makes none if a selected column does not exist. Ends
// the program with status 0 if the file cannot be read or memory runs out.
//
// Deliberate: failures end with status 0, those of a request file with 1. numpts, which the mean
// divides by, includes the rows that the time window drops; var1 and var2 are row indices from 0;
// magnitudes are compared by signed value.
int crv_ReadPost(const char *path, const crv_selection &selection, int label_line, int first_line);

// The contents of a column file, without its values.
struct crv_column_survey {
    crv_column_header header;
    crv_survey rows;
    uint64_t uneven_rows = 0; // with another number of fields than the first row
    uint64_t uneven_line = 0; // the first of them, 0 without one
};

// Reads the file as crv_ReadPost does, but prints nothing and stores no value. A failed read ends
// the file; lines->error is then set.
void crv_SurveyPost(utl_line_reader *lines, int label_line, int first_line,
                    crv_column_survey *survey);
