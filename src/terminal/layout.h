// terminal/layout.h - divides the rows and columns of the picture among its parts.
#pragma once

#include "terminal/axis.h"
#include "terminal/picture.h"

#include <vector>

// What the picture has to show.
struct crv_picture_parts {
    bool has_title;
    bool has_subtitle;
    bool has_x_label;
    int legend_lines;
};

// From above: titles, upper border, plot area, lower border, numbers of X, X label, legend. From
// the left: numbers of Y, left border, plot area, right border.
struct crv_layout {
    bool title, subtitle, upper_border, x_label; // whether there is a row for it
    int legend_rows;
    int plot_rows;
    int plot_columns;
    int margin; // columns to the left of the left border
    std::vector<crv_tick> x_ticks, y_ticks;
};

// Returns the layout. The plot area has three rows at least; the rest is for the parts in this
// order: one line of the legend, title, X label, upper border, subtitle, further lines of the
// legend. Numbers of Y that leave less than half of the columns to the plot area are left out.
crv_layout crv_LayOutPicture(const crv_picture_parts &parts, const crv_axes &axes,
                             const crv_terminal_format &format);
