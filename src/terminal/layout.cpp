// terminal/layout.cpp - gives rows to parts by rank, and columns to the numbers of the Y axis.
#include "terminal/layout.h"

#include <algorithm>

static constexpr int min_plot_rows = 3;
static constexpr int max_y_ticks = 12;
static constexpr int max_x_ticks = 16;
static constexpr double min_rows_per_tick = 2.1; // so that rounding leaves two
static constexpr int gap_of_x_numbers = 4;

// Takes a row from those that are left, if the part is wanted and there is one.
static bool take_row(int *rows, bool is_wanted) {
    if (!is_wanted || *rows == 0) return false;
    --*rows;
    return true;
}

static void divide_rows(crv_layout *layout, const crv_picture_parts &parts, int rows) {
    int left = rows - min_plot_rows - 2; // the lower border and the numbers are always there
    const bool has_legend = take_row(&left, parts.legend_lines > 0);
    layout->title = take_row(&left, parts.has_title);
    layout->x_label = take_row(&left, parts.has_x_label);
    layout->upper_border = take_row(&left, true);
    layout->subtitle = take_row(&left, parts.has_subtitle);
    const int further = std::max(0, parts.legend_lines - 1);
    const int taken = std::min(further, left);
    layout->legend_rows = has_legend ? 1 + taken : 0;
    layout->plot_rows = min_plot_rows + left - taken;
}

static int width_of(const std::vector<crv_tick> &ticks) {
    size_t width = 0;
    for (const crv_tick &tick : ticks) width = std::max(width, tick.text.size());
    return static_cast<int>(width);
}

// A scale needs two numbers. If there is only one, they may be in adjacent rows, but not in one.
static std::vector<crv_tick> choose_y_ticks(const crv_axis &axis, int rows, int dots_per_row) {
    const double gap = std::max(min_rows_per_tick, static_cast<double>(rows) / max_y_ticks);
    std::vector<crv_tick> ticks = crv_ChooseTicks(axis, rows, gap, -1);
    if (ticks.size() > 1) return ticks;
    std::vector<crv_tick> closer = crv_ChooseTicks(axis, rows, 1, -1);
    for (size_t k = 1; k < closer.size(); ++k)
        if (crv_FindRow(closer[k].fraction, rows, dots_per_row) ==
            crv_FindRow(closer[k - 1].fraction, rows, dots_per_row))
            return ticks;
    return closer;
}

static std::vector<crv_tick> choose_x_ticks(const crv_axis &axis, int columns) {
    const double gap = static_cast<double>(columns) / max_x_ticks;
    return crv_ChooseTicks(axis, columns, gap, gap_of_x_numbers);
}

crv_layout crv_LayOutPicture(const crv_picture_parts &parts, const crv_axes &axes,
                             const crv_terminal_format &format) {
    crv_layout layout = {};
    divide_rows(&layout, parts, format.rows);
    layout.y_ticks = choose_y_ticks(axes.y, layout.plot_rows, format.braille ? 4 : 1);
    layout.margin = width_of(layout.y_ticks) + 1;
    if (layout.margin + 2 > format.columns / 2) {
        layout.y_ticks.clear();
        layout.margin = 0;
    }
    layout.plot_columns = format.columns - layout.margin - 2;
    layout.x_ticks = choose_x_ticks(axes.x, layout.plot_columns);
    return layout;
}
