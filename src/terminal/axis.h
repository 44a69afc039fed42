// terminal/axis.h - ranges of the picture: extremes of the data, positions, and round numbers with
// their texts.
#pragma once

#include "records/view.h"

#include <string>
#include <vector>

// The values at both ends of an axis, finite, with low < high.
struct crv_axis {
    double low;
    double high;
    double shrink; // factor that keeps differences of huge values finite
    double extent; // (high - low) * shrink
};

struct crv_axes {
    crv_axis x, y;
};

// Returns the ranges of the view; those not set come from the points, as picture.h explains.
// Without any finite point a range is 0 to 1.
crv_axes crv_FindAxes(const crv_view &view);

// Returns an axis from `low` to `high`, finite values. A range with less extent than a
// millionth of a millionth of its values is widened.
crv_axis crv_MakeAxis(double low, double high);

// Returns the position of `value` as a fraction: 0 at the low end, 1 at the high one.
inline double crv_FindFraction(const crv_axis &axis, double value) {
    return (value * axis.shrink - axis.low * axis.shrink) / axis.extent;
}

// A number at an axis.
struct crv_tick {
    double fraction; // position, 0 to 1
    std::string text;
};

// Returns ascending multiples of 1, 2 or 5 times a power of ten. All texts have the same number of
// digits after the point, enough to distinguish neighbors, except a 0 among numbers with exponents.
// Chooses the smallest step whose numbers are at least `min_gap` apart and, unless `text_gap` is
// negative, leave at least that gap between their texts. The length of the axis and both gaps are
// in characters. Returns one number if no two fit, and none if the axis has no such multiple.
std::vector<crv_tick> crv_ChooseTicks(const crv_axis &axis, int length, double min_gap,
                                      int text_gap);

// Returns the row of the character at `fraction` of a Y axis of `rows` rows, counted from above,
// each of `dots_per_row` dots: that of the nearest dot.
int crv_FindRow(double fraction, int rows, int dots_per_row);
