// fuzz/column_check.h - what must hold of every column, whatever file it came from.
#pragma once

#include "harness.h"

#include "records/column.h"

#include <cstdint>
#include <string>
#include <vector>

// A copy of a column: all of its fields but the pointers, and its values.
struct column_copy {
    crv_column fields;
    std::vector<double> values;
};

// What a reader made of a file: its result and the columns of the table.
struct reading {
    int count = -100; // none, as it ended the program
    std::vector<column_copy> columns;
};

// The header line of a fuzz input of a reader: selection, time window, X filter, first slot, debug
// level and size of a piece, separated by '|'; a ':' separates the two numbers of a range.
struct reader_input {
    std::string selection;
    double time_window[2];
    double x_filter[2];
    int first_slot;
    int debug_level;
    size_t read_piece;
    std::string bytes; // of the file
};
reader_input take_reader_input(const uint8_t *data, size_t size);

// Reads the file unchanged, in pieces, and with CR LF for each line end, which must make no
// difference; and once more with a disk that fails. Returns the result of the first.
using file_reader = int (*)(const char *path, const reader_input &input);
reading check_reading(const reader_input &input, file_reader reader, outcome *result);

// The number of columns of the selection, limited by the slots from `first_slot`.
int wanted_columns(const reader_input &input, int first_slot);

// The statistics of a format that stores them all are those of the values: count in 16 bits,
// extremes, first and last value, magnitudes, sum and mean.
void check_statistics(const column_copy &column);

// Single statistics, for formats that store fewer.
void check_count(const column_copy &column);
void check_extremes(const column_copy &column);
void check_sum(const column_copy &column);
void check_mean(const column_copy &column, double sum);

// The values added up in reading order.
double sum_of(const column_copy &column);
