// terminal/curve_path.cpp - points to dots. Points in one column of dots become one vertical line.
#include "terminal/curve_path.h"

#include <algorithm>
#include <cmath>

namespace {

// A position in dots, which need not be on the canvas.
struct position {
    double x, y;
};

struct dot {
    int x, y;
};

// The pen draws pieces of a curve, which end where a value is not finite.
struct pen {
    crv_canvas *canvas;
    int curve;
    uint16_t dash;
    double last_x, last_y; // position of the last column and row of dots
    unsigned path;         // dots of this piece so far
    bool has_previous;     // the piece has begun
    bool is_inside;        // the previous point is on the canvas
    position previous;
    dot at;        // the last dot, if is_inside
    int low, high; // rows of dots in the column of `at` that are not drawn yet
};

} // namespace

static bool is_on_canvas(const pen &pen, const position &p) {
    return p.x >= 0 && p.x <= pen.last_x && p.y >= 0 && p.y <= pen.last_y;
}

static dot round_to_dot(const position &p) {
    return {static_cast<int>(std::lround(p.x)), static_cast<int>(std::lround(p.y))};
}

static void draw_dot(pen *pen, int x, int y) {
    const unsigned bit = pen->path++ % 16;
    if (pen->dash >> bit & 1) crv_SetDot(pen->canvas, x, y, pen->curve);
}

// Draws the rows of the current column that the points there have touched.
static void draw_column(pen *pen) {
    for (int y = pen->low; y <= pen->high; ++y) draw_dot(pen, pen->at.x, y);
}

// Draws the dots between two others (the algorithm of Bresenham), neither of which is drawn.
static void draw_between(pen *pen, dot from, const dot &to) {
    const int dx = std::abs(to.x - from.x);
    const int dy = -std::abs(to.y - from.y);
    const int step_x = from.x < to.x ? 1 : -1;
    const int step_y = from.y < to.y ? 1 : -1;
    int error = dx + dy;
    for (;;) {
        const int twice = 2 * error;
        if (twice >= dy) {
            error += dy;
            from.x += step_x;
        }
        if (twice <= dx) {
            error += dx;
            from.y += step_y;
        }
        if (from.x == to.x && from.y == to.y) return;
        draw_dot(pen, from.x, from.y);
    }
}

static void begin_column(pen *pen, const dot &at) {
    pen->at = at;
    pen->low = pen->high = at.y;
}

// Joins the current dot to another one on the canvas, which becomes the current dot.
static void move_to(pen *pen, const dot &to) {
    if (to.x == pen->at.x) {
        pen->low = std::min(pen->low, to.y);
        pen->high = std::max(pen->high, to.y);
        pen->at.y = to.y;
        return;
    }
    draw_column(pen);
    draw_between(pen, pen->at, to);
    begin_column(pen, to);
}

// Cuts the interval {from, to} of the line to where start + t * distance is within 0 and `limit`
// (the algorithm of Liang and Barsky). Returns false if nothing is left.
static bool clip_to_limit(double start, double distance, double limit, double *from, double *to) {
    if (distance == 0) return start >= 0 && start <= limit;
    const double at_zero = -start / distance;
    const double at_limit = (limit - start) / distance;
    *from = std::max(*from, std::min(at_zero, at_limit));
    *to = std::min(*to, std::max(at_zero, at_limit));
    return *from <= *to;
}

static position point_on_line(const pen &pen, const position &a, const position &b, double t) {
    return {std::clamp(a.x + t * (b.x - a.x), 0.0, pen.last_x),
            std::clamp(a.y + t * (b.y - a.y), 0.0, pen.last_y)};
}

// Draws the part that is on the canvas of the line from the previous point to `next`, at least one
// of which is outside.
static void draw_clipped(pen *pen, const position &next) {
    const position &previous = pen->previous;
    double from = 0;
    double to = 1;
    if (clip_to_limit(previous.x, next.x - previous.x, pen->last_x, &from, &to) &&
        clip_to_limit(previous.y, next.y - previous.y, pen->last_y, &from, &to)) {
        if (!pen->is_inside)
            begin_column(pen, round_to_dot(point_on_line(*pen, previous, next, from)));
        move_to(pen, round_to_dot(point_on_line(*pen, previous, next, to)));
        draw_column(pen);
    } else if (pen->is_inside) {
        draw_column(pen);
    }
}

static void draw_cross(const pen &pen, const dot &center) {
    const int columns = crv_CountDotsAcross(*pen.canvas);
    const int rows = crv_CountDotsDown(*pen.canvas);
    constexpr dot offsets[] = {{0, 0}, {-1, 0}, {1, 0}, {0, -1}, {0, 1}};
    for (const dot &offset : offsets) {
        const dot to = {center.x + offset.x, center.y + offset.y};
        if (to.x >= 0 && to.x < columns && to.y >= 0 && to.y < rows)
            crv_SetDot(pen.canvas, to.x, to.y, pen.curve);
    }
}

static void end_piece(pen *pen) {
    if (pen->has_previous && pen->is_inside) {
        const bool is_point = pen->path == 0 && pen->low == pen->high;
        if (is_point && pen->canvas->dots_per_column > 1) {
            draw_cross(*pen, pen->at);
        } else {
            draw_column(pen);
        }
    }
    pen->has_previous = pen->is_inside = false;
    pen->path = 0;
}

static void draw_point(pen *pen, const position &next) {
    const bool is_inside = is_on_canvas(*pen, next);
    if (is_inside && pen->is_inside) {
        move_to(pen, round_to_dot(next));
    } else {
        if (pen->has_previous) draw_clipped(pen, next);
        if (is_inside) begin_column(pen, round_to_dot(next));
    }
    pen->previous = next;
    pen->is_inside = is_inside;
    pen->has_previous = true;
}

// Positions far outside are limited, so that their differences are finite.
static double find_position(const crv_axis &axis, double value, double last) {
    constexpr double far = 1e150;
    return std::clamp(crv_FindFraction(axis, value) * last, -far, far);
}

void crv_DrawCurve(crv_canvas *canvas, const crv_axes &axes, const crv_view_curve &curve,
                   int number, uint16_t dash) {
    pen pen = {};
    pen.canvas = canvas;
    pen.curve = number;
    pen.dash = canvas->dots_per_column > 1 ? dash : 0xFFFF;
    pen.last_x = crv_CountDotsAcross(*canvas) - 1;
    pen.last_y = crv_CountDotsDown(*canvas) - 1;
    const crv_value *x = curve.x->val_list;
    const crv_value *y = curve.y->val_list;
    for (; x && y; x = x->next, y = y->next) {
        if (!std::isfinite(x->val) || !std::isfinite(y->val)) {
            end_piece(&pen);
            continue;
        }
        const double down = pen.last_y - find_position(axes.y, y->val, pen.last_y);
        draw_point(&pen, {find_position(axes.x, x->val, pen.last_x), down});
    }
    end_piece(&pen);
}
