// readers/frame_header.h - directives of a frame file other than its data: title, labels, ranges,
// number of points. The layout of the file is in readers/frame_file.h.
#pragma once

#include "text/line_reader.h"

#include <cstddef>
#include <cstdint>

// Maximum length of a line: 126 characters and the line end.
constexpr size_t crv_frame_line_limit = 127;
constexpr size_t crv_frame_title_length = 80;
constexpr size_t crv_frame_label_length = 31;
constexpr size_t crv_frame_numbered_label_length = 32;
// Data points that a file must have.
constexpr int crv_frame_min_points = 3;

// A text that the file gives or leaves out, with its line end if it is short enough.
template <size_t length> struct crv_frame_text {
    bool given;
    char text[length + 1];
};

// Ranges are pairs {low, high}; low above high means not given.
struct crv_frame_header {
    int num_points = 0;               // NUMDATA
    bool has_points_of_style = false; // the last %S was after the last %N
    bool has_style = false;
    uint16_t style = 0;
    crv_frame_text<crv_frame_title_length> title = {};
    crv_frame_text<crv_frame_label_length> x_label = {};
    crv_frame_text<crv_frame_label_length> y_label = {};
    crv_frame_text<crv_frame_numbered_label_length> y_titles[7] = {}; // 1 to 6
    double x_range[2] = {10.0, -10.0};
    double y_range[2] = {10.0, -10.0};
};

// What a line of the file is, beyond what the header record keeps.
enum class crv_frame_event {
    none,    // a directive without further effect
    text,    // another line
    empty,   // a line of blanks
    begin,   // %XY
    x_range, // the range of X, which may be reversed
    y_range,
    data, // the data points follow
    end,  // of the file
};

// Reads the next line, and the lines of its directive.
crv_frame_event crv_ReadFrameDirective(utl_line_reader *lines, crv_frame_header *header);
