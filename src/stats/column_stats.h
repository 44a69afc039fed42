// stats/column_stats.h - running statistics of a column: extremes, sum, first and last value, mean.
//
// For each value, a reader calls the routines of its statistics and then appends the value: the
// list must be empty at the first value, which initialises the statistics. Comparisons are strict:
// of equal values the first is the extreme.
//
// `step` counts from 1, `time` has the unit of the file, `abscissa` is the time or row index of the
// value. A format without steps passes 0 for step and time, so that those fields stay 0.
#pragma once

#include "records/column.h"
#include "records/settings.h"
#include "system/arithmetic.h"

#include <cmath>
#include <cstdint>

// Updates minimum and maximum with their steps and times; their abscissas go to var1 and var2.
inline void crv_UpdateMinMax(crv_column *column, double value, uint32_t step, double time,
                             double abscissa) {
    const bool first = !column->val_list;
    if (first || value > column->max) {
        column->max = value;
        column->max_step = step;
        column->max_time = time;
        column->var2 = abscissa;
    }
    if (first || value < column->min) {
        column->min = value;
        column->min_step = step;
        column->min_time = time;
        column->var1 = abscissa;
    }
}

inline void crv_AccumulateSum(crv_column *column, double value) {
    column->sum = column->val_list ? utl_Add(column->sum, value) : value;
}

// Sets the first value once, and the last value, with their steps and times.
inline void crv_UpdateFirstLast(crv_column *column, double value, uint32_t step, double time) {
    if (!column->val_list) {
        column->begin_val = value;
        column->begin_step = step;
        column->begin_time = time;
    }
    column->end_val = value;
    column->end_step = step;
    column->end_time = time;
}

// Updates the smallest and largest magnitude with their steps and times.
inline void crv_UpdateAbsMinMax(crv_column *column, double value, uint32_t step, double time) {
    const bool first = !column->val_list;
    const double magnitude = std::fabs(value);
    if (first || magnitude > column->absmax) {
        column->absmax = magnitude;
        column->absmax_step = step;
        column->absmax_time = time;
    }
    if (first || magnitude < column->absmin) {
        column->absmin = magnitude;
        column->absmin_step = step;
        column->absmin_time = time;
    }
}

// Updates the smallest and largest magnitude of column files. Deliberate: the signed value is
// compared with the magnitudes, so that in a column of negative values the largest stays that of
// the first value, and the smallest becomes that of each further value.
inline void crv_UpdateAbsMinMaxBySign(crv_column *column, double value) {
    const bool first = !column->val_list;
    const double magnitude = std::fabs(value);
    if (first || column->absmin > value) column->absmin = magnitude;
    if (first || value > column->absmax) column->absmax = magnitude;
}

// Returns the number of values that the mean divides by: the signed 16-bit count, or that without
// wrapping if the settings keep all data.
inline int64_t crv_CountOf(const crv_column *column) {
    return crv_settings.keeps_all_data ? static_cast<int64_t>(column->num_values) : column->numpts;
}

// Returns the mean; all four readers use it. `count` is that of crv_CountOf; without values the
// result is that of a division by 0.
inline double crv_MeanOf(double sum, int64_t count) {
    return utl_Divide(sum, static_cast<double>(count));
}
