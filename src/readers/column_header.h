// readers/column_header.h - header of a column file: labels and number of columns. The layout of
// the file is in readers/column_file.h.
#pragma once

#include "text/line_reader.h"

#include <cstddef>
#include <string>
#include <string_view>

// Maximum length of a line: 1,022 characters and the line end.
constexpr size_t crv_column_line_limit = 1023;

struct crv_column_header {
    char labels[crv_column_line_limit + 1]; // the label line, empty without one
    utl_line_status labels_status;          // whether it has its line end
    int num_columns;                        // fields of the first row
};

// Reads the lines up to the first row, and returns the first row. `label_line` and `first_line` are
// counted from 1; with a first line below 1 nothing is read, and there are no columns.
utl_line crv_ReadColumnHeader(utl_line_reader *lines, int label_line, int first_line,
                              crv_column_header *header);

// Returns a label as it is shown, with "%%" replaced by "%".
std::string crv_ColumnLabel(std::string_view label);
