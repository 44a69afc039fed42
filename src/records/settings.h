// records/settings.h - global settings of the run and the debug level. The options write them;
// other code reads them, except the print flag, which is set before a chart is printed.
#pragma once

#include <cstdint>

// The debug level (-d, -v, -m). A routine prints trace lines if the level is its number.
extern int crv_DBG;

// Bits of the columnize flags.
constexpr uint32_t AbsoluteDat = 1;   // -abs
constexpr uint32_t StatisticsAll = 2; // -all

// Ranges are pairs {low, high}; low above high means not set.
struct crv_run_settings {
    double time_window[2] = {-100.0, 10000.0}; // -tm: points outside are dropped; bounds are inside
    bool time_window_given = false;            // by -tm, valid or not
    double x_filter[2] = {100.0, -100.0};      // a copy of the X range of the last -x
    uint32_t columnize_flags = 0;
    int menu_panes = 0; // -n: stored, not used
    int print_flag = 0; // print the chart without asking

    // Set by the viewers, which use all of a file and say what is missing; off in crv. A time
    // window drops points only if -tm gave it. Counts are those of the kept values, without
    // wrapping. A row of a column file that is too short has values that are not a number. A last
    // line or step that is incomplete is warned about.
    bool keeps_all_data = false;
};

extern crv_run_settings crv_settings;
