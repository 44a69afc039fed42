// readers/series.h - what every reader does with the columns that it makes.
#pragma once

#include "records/column.h"
#include "util/line_reader.h"

#include <cstddef>

// Appends `value` to the column's list and makes it the current one. Returns false with errno set when memory runs out.
// The statistics of the value are kept before it is appended.
bool crv_AppendValue(crv_column *column, double value);

// Prints the column's values, numbered from 1, as trace lines of `routine`. The column's val_cur is null afterwards.
void crv_ListValues(crv_column *column, int routine);

constexpr size_t crv_title_length = 79;

// Makes the title line of a file the column's title: its first 79 characters without the blanks at their end.
//
// Deliberate: a title shorter than that keeps its line end, and so keeps blanks before it.
void crv_SetTitle(crv_column *column, utl_line line);
