// readers/input.h - an open result file: path, lines, and the warnings that all readers give.
#pragma once

#include "records/column.h"
#include "records/range.h"
#include "records/settings.h"
#include "text/line_reader.h"

#include <cstdint>
#include <span>

struct crv_input {
    const char *path = nullptr;
    utl_line_reader *lines = nullptr;
    int routine = 0;           // number of the reader in its messages
    bool is_silent = false;    // no warnings, for a pass that reports what it finds in another way
    uint64_t missing_line = 0; // the first line with missing numbers, 0 without one
    bool warned_long = false;
    uint64_t points = 0;         // steps or rows read
    uint64_t points_dropped = 0; // of these, outside the time window
};

// Counts a step or a row, with `value` compared with the time window of the settings. Returns true
// if it is in the window, or if the settings keep all data and -tm gave no window.
inline bool crv_CountPoint(crv_input *in, double value) {
    const bool in_window = (crv_settings.keeps_all_data && !crv_settings.time_window_given) ||
                           crv_InRange(value, crv_settings.time_window);
    ++in->points;
    in->points_dropped += !in_window;
    return in_window;
}

// Warns on standard error that the default time window drops points. A window of the user is not
// warned about.
void crv_WarnDefaultWindow(const crv_input &in);

// Warns on standard error of each column whose 16-bit count has wrapped, as its mean is the sum
// divided by that count.
void crv_WarnWrappedCounts(const crv_input &in, std::span<crv_column *const> columns);

// Notes the line number of the first line that has fewer numbers than are read from it, and warns
// of it on standard error; the missing numbers count as 0.0.
void crv_WarnMissingNumbers(crv_input *in);

// Warns on standard error, once per file, that a line is longer than its limit and is read in
// parts; only if the settings keep all data.
void crv_WarnLongLine(crv_input *in);

// Warn on standard error that the file ends within step `step`, or within its last line; only if
// the settings keep all data.
void crv_WarnIncompleteStep(const crv_input &in, uint32_t step);
void crv_WarnIncompleteLine(const crv_input &in);

// Returns true with errno set if a read failed; the lines then ended early.
bool crv_ReadFailed(const crv_input &in);
