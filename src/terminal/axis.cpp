// terminal/axis.cpp - extremes of the finite points, and ranges that can be divided.
#include "terminal/axis.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

static constexpr double smallest_value = 1e-290; // smaller magnitudes are drawn as 0
static constexpr double smallest_extent = 1e-12; // in relation to the values

namespace {

struct extremes {
    double low = DBL_MAX;
    double high = -DBL_MAX;
};

struct point_extremes {
    extremes x, y;
};

} // namespace

static void include_value(extremes *range, double value) {
    range->low = std::min(range->low, value);
    range->high = std::max(range->high, value);
}

// Returns the extremes of all finite points of the curves that are inside `x`.
static point_extremes find_extremes(const crv_view &view, const extremes &inside) {
    point_extremes found;
    for (const crv_view_curve &curve : view.curves) {
        const crv_value *x = curve.x->val_list;
        const crv_value *y = curve.y->val_list;
        for (; x && y; x = x->next, y = y->next) {
            if (!std::isfinite(x->val) || !std::isfinite(y->val)) continue;
            if (x->val < inside.low || x->val > inside.high) continue;
            include_value(&found.x, x->val);
            include_value(&found.y, y->val);
        }
    }
    return found;
}

static bool is_set(const double (&range)[2]) {
    return std::isfinite(range[0]) && std::isfinite(range[1]) && range[0] < range[1];
}

static crv_axis make_axis(const double (&range)[2], const extremes &found) {
    if (is_set(range)) return crv_MakeAxis(range[0], range[1]);
    if (found.low > found.high) return crv_MakeAxis(0, 1);
    return crv_MakeAxis(found.low, found.high);
}

crv_axes crv_FindAxes(const crv_view &view) {
    const bool has_x = is_set(view.x_range);
    const extremes everything = {-DBL_MAX, DBL_MAX};
    const extremes inside = has_x ? extremes{view.x_range[0], view.x_range[1]} : everything;
    point_extremes found = find_extremes(view, inside);
    if (found.y.low > found.y.high) found = find_extremes(view, everything);
    return {make_axis(view.x_range, found.x), make_axis(view.y_range, found.y)};
}

crv_axis crv_MakeAxis(double low, double high) {
    const double size = std::max(std::fabs(low), std::fabs(high));
    if (size < smallest_value) {
        low = -1;
        high = 1;
    } else if (high * 0.5 - low * 0.5 < size * 0.5 * smallest_extent) {
        const double middle = low * 0.5 + high * 0.5;
        low = std::max(middle - 0.1 * size, -DBL_MAX);
        high = std::min(middle + 0.1 * size, DBL_MAX);
    }
    const double shrink = size > 1e300 ? 0.25 : 1.0;
    return {low, high, shrink, high * shrink - low * shrink};
}

int crv_FindRow(double fraction, int rows, int dots_per_row) {
    const double dot = (1 - fraction) * (rows * dots_per_row - 1);
    return static_cast<int>(std::lround(dot)) / dots_per_row;
}
