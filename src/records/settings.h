// records/settings.h - what the options set for the whole run. The options write it, everybody else
// reads.
#pragma once

#include <cstdint>

// The debug level (-d, -v, -m): a routine prints its trace lines when the level equals its own
// number.
extern int crv_DBG;

// Bits of the columnize flags.
constexpr uint32_t AbsoluteDat = 1;   // -abs
constexpr uint32_t StatisticsAll = 2; // -all

// Ranges are pairs low, high; a pair with low above high is not set.
struct crv_run_settings {
    double time_window[2] = {-100.0, 10000.0}; // -tm: points outside are dropped, bounds included
    double x_filter[2] = {100.0, -100.0};      // copied from the X range by every -x option
    uint32_t columnize_flags = 0;
    int menu_panes = 0; // -n: stored only
    int print_flag = 0; // the chart goes to the printer without a question
};

extern crv_run_settings crv_settings;
