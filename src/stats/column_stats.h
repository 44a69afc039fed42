// stats/column_stats.h - the statistics of a column, kept as its values arrive.
//
// A reader calls, for each value that it keeps, the routines for the statistics that it keeps, and
// appends the value afterwards: a column whose list is empty waits for its first value, which sets
// everything. Comparisons are strict, so that of equal values the earliest keeps the extreme.
//
// `step` counts from 1, `time` is in the unit of the file, `abscissa` is what the value is plotted
// against. A format without steps passes 0 for step and time, which leaves those fields as they
// were made.
#pragma once

#include "records/column.h"

#include <cmath>
#include <cstdint>

// Minimum and maximum; their abscissas are var1 and var2.
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
    column->sum = column->val_list ? column->sum + value : value;
}

// First and last value.
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

// Smallest and largest magnitude.
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

// Smallest and largest magnitude of column files. Deliberate: the value is compared with its sign,
// so that a column of negative values keeps the magnitude of the first as its largest, and of the
// last that was below it as its smallest.
inline void crv_UpdateAbsMinMaxBySign(crv_column *column, double value) {
    const bool first = !column->val_list;
    const double magnitude = std::fabs(value);
    if (first || column->absmin > value) column->absmin = magnitude;
    if (first || value > column->absmax) column->absmax = magnitude;
}

// The mean of a column. The count is signed and 16 bits wide; of no values it is what a division by
// 0 gives.
inline double crv_MeanOf(double sum, int16_t count) { return sum / count; }
