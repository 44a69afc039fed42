// readers/column_builder.h - what every reader does with the columns that it makes.
#pragma once

#include "records/column.h"
#include "text/line_reader.h"

#include <cstddef>
#include <span>

// Whether low <= value <= high.
inline bool crv_InRange(double value, const double (&range)[2]) {
    return range[0] <= value && value <= range[1];
}

// Appends `value` to the column's list and makes it the current one. Returns false with errno set
// when memory runs out. The statistics of the value are kept before it is appended.
bool crv_AppendValue(crv_column *column, double value);

// Copies the first `most` characters of a line to the text `to` of most + 1 characters or more. Its
// line end counts as the last of them: a shorter line keeps it.
void crv_CopyLine(char *to, utl_line line, size_t most);

// Makes the title line of a file the column's title: its first 79 characters without the blanks at
// their end.
//
// Deliberate: a title shorter than that keeps its line end, and so keeps blanks before it.
void crv_SetTitle(crv_column *column, utl_line line);

// Sets the mean of each column from its sum and count. Of no values it is what a division by 0
// gives.
void crv_SetMeans(std::span<crv_column *const> columns);

// Trace lines of `routine`: a record as it was read; the columns with extremes and values; the
// values alone, numbered from 1. The val_cur of a column listed is null afterwards.
void crv_TraceRecord(utl_line line, int routine);
void crv_ListColumns(std::span<crv_column *const> columns, int routine);
void crv_ListValues(crv_column *column, int routine);
