// records/view.h - what a viewer shows: curves over their abscissas, with texts and ranges. The
// viewers fill it from their files; the outputs page, terminal and csv read it.
#pragma once

#include "records/column.h"

#include <string>
#include <vector>

// One curve: the values of `y` over those of `x`, pair by pair. The shorter list ends the curve.
// Values are doubles of any kind, infinite and not-a-number ones included; `x` need not ascend.
struct crv_view_curve {
    const crv_column *x;
    const crv_column *y;
    int file; // index in crv_view::files of the file of `y`
};

// A file that has been read, with the columns that it gave.
struct crv_view_file {
    std::string path;
    const crv_column *x; // abscissa of its curves: its own, or that of the first file
    bool has_own_x;      // the first file, and those whose selection begins with time
    std::vector<const crv_column *> columns; // its curves, in the order of the selection
};

// Texts are as the user or the file gave them: any bytes but NUL, which need not be UTF-8, without
// blanks and line ends at both ends; so are the labels of the columns. Ranges are pairs {low,
// high}; low above high means not set. num_values of a column is the length of its list.
struct crv_view {
    std::string title;    // of -t, otherwise that of the first file; may be empty
    std::string subtitle; // of -t2, otherwise that of the first file if -t gave the title
    std::vector<crv_view_file> files;
    std::vector<crv_view_curve> curves; // of all files, in the order of reading
    double x_range[2] = {100.0, -100.0};
    double y_range[2] = {100.0, -100.0};
};
