// text/line_scan.h - searches for line ends, the one step that every byte of a file goes through.
//
// Each routine has a scalar form and one that compares 16 characters at once, or 64 where the
// processor has vectors of 32 characters: a mask for each character that is searched for. The text
// of the vector forms must be followed by utl_padding readable characters.
#pragma once

#include <cstddef>

// True if the processor has wide vectors. Tests set it to false.
extern bool utl_uses_wide_vectors;

// The first line of a text.
struct utl_line_scan {
    size_t length;      // characters before its line end, or all characters if it has none
    bool ended;         // its line end was found
    bool has_lt_or_nul; // it contains a '<' or a NUL
};

// Searches the first `max_length` characters at `begin` for a line end.
utl_line_scan utl_ScanLine(const char *begin, size_t max_length);
utl_line_scan utl_ScanLineScalar(const char *begin, size_t max_length);

// A run of complete lines.
struct utl_line_run {
    size_t lines;
    size_t length; // of all of them, line ends included
};

// Counts at most `max_lines` lines in the `length` characters at `begin`: lines with a line end,
// with fewer than `limit` characters before it and without '<'. Stops before the first other line.
// `max_lines` is at least 1.
utl_line_run utl_ScanLineRun(const char *begin, size_t length, size_t limit, size_t max_lines);
utl_line_run utl_ScanLineRunScalar(const char *begin, size_t length, size_t limit,
                                   size_t max_lines);
