// readers/column_builder.h - steps that several readers do alike with the columns they make:
// titles, means, trace lines. Request and frame files set their means themselves.
#pragma once

#include "records/column.h"
#include "text/line_reader.h"

#include <cstddef>
#include <span>

// Copies the first `max_length` characters of a line to the text `to` of max_length + 1 characters
// or more. The line end counts as the last of them, so that a shorter line keeps it.
void crv_CopyLine(char *to, utl_line line, size_t max_length);

// Sets the title of the column to the first 79 characters of a line, without trailing blanks.
//
// Deliberate: a shorter title keeps its line end and the blanks before it.
void crv_SetTitle(crv_column *column, utl_line line);

// Sets the mean of each column from its sum and count. Without values it is the result of a
// division by 0.
void crv_SetMeans(std::span<crv_column *const> columns);

// Print trace lines of `routine`: a record as it was read; the columns with extremes and values;
// the values alone, numbered from 1. The val_cur of a printed column is null afterwards.
void crv_TraceRecord(utl_line line, int routine);
void crv_ListColumns(std::span<crv_column *const> columns, int routine);
void crv_ListValues(crv_column *column, int routine);
