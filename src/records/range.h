// records/range.h - ranges as pairs {low, high}: test and assignment.
#pragma once

// Returns true if low <= value <= high; false if any of them is not a number.
inline bool crv_InRange(double value, const double (&range)[2]) {
    return range[0] <= value && value <= range[1];
}

inline void crv_SetRange(double *range, double low, double high) {
    range[0] = low;
    range[1] = high;
}
