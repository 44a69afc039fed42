// terminal/picture.cpp - puts the parts of the picture together, line by line.
#include "terminal/picture.h"

#include "terminal/axis.h"
#include "terminal/canvas.h"
#include "terminal/curve_marks.h"
#include "terminal/curve_path.h"
#include "terminal/curve_style.h"
#include "terminal/layout.h"
#include "terminal/legend.h"
#include "terminal/styled_text.h"
#include "text/text_columns.h"

#include <algorithm>
#include <cmath>

namespace {

// Characters of the frame.
struct frame_style {
    const char *horizontal, *vertical;
    const char *upper_left, *upper_right, *lower_left, *lower_right;
    const char *y_tick, *x_tick;
    const char *grid; // where the lines of two ticks would cross, except at the border
};

} // namespace

static constexpr frame_style box_frame = {"\u2500", "\u2502", "\u250C", "\u2510", "\u2514",
                                          "\u2518", "\u2524", "\u252C", "\u00B7"};
static constexpr frame_style ascii_frame = {"-", "|", "+", "+", "+", "+", "+", "+", "."};

namespace {

// The picture while it is written.
struct picture {
    const crv_view &view;
    crv_terminal_format format;
    std::vector<crv_curve_style> styles;
    crv_layout layout;
    const frame_style &frame;
    crv_canvas canvas;
    std::vector<int> tick_columns;               // of the plot area, for each tick of X
    std::vector<const crv_tick *> ticks_of_rows; // of Y, null for none
    std::string text;
};

} // namespace

static std::string blanks(int count) {
    return std::string(static_cast<size_t>(std::max(count, 0)), ' ');
}

static std::string repeat(const char *character, int count) {
    std::string text;
    for (int k = 0; k < count; ++k) text += character;
    return text;
}

static void write_centered(picture *picture, std::string_view text, int left, int width) {
    const std::string shown = crv_FitText(text, picture->format, width);
    const int space = width - utl_CountColumns(shown);
    picture->text += crv_WriteLine({{blanks(left + space / 2) + shown}});
}

static void write_titles(picture *picture) {
    const crv_layout &layout = picture->layout;
    const int width = picture->format.columns;
    if (layout.title) write_centered(picture, picture->view.title, 0, width);
    if (layout.subtitle) write_centered(picture, picture->view.subtitle, 0, width);
}

static void write_upper_border(picture *picture) {
    if (!picture->layout.upper_border) return;
    const frame_style &frame = picture->frame;
    const std::string line = repeat(frame.horizontal, picture->layout.plot_columns);
    picture->text += crv_WriteLine(
        {{blanks(picture->layout.margin) + frame.upper_left + line + frame.upper_right}});
}

static void append_cell(const picture &picture, crv_styled_line *line, const crv_cell &cell,
                        bool is_grid) {
    if (cell.curve == 0) {
        crv_AppendSpan(line, is_grid ? picture.frame.grid : " ", 0);
        return;
    }
    const crv_curve_style &style = picture.styles[static_cast<size_t>(cell.curve - 1)];
    std::string text;
    if (cell.mark) {
        text = cell.mark;
    } else if (picture.format.braille) {
        crv_AppendBraille(&text, cell.dots);
    } else {
        text = style.mark;
    }
    crv_AppendSpan(line, text, style.color);
}

static bool has_curve(const crv_canvas &canvas) {
    return std::any_of(canvas.cells.begin(), canvas.cells.end(),
                       [](const crv_cell &cell) { return cell.curve != 0; });
}

// An area without any point says so.
static void write_empty_row(picture *picture) {
    const crv_layout &layout = picture->layout;
    const std::string note = crv_FitText("no points here", picture->format, layout.plot_columns);
    const int left = (layout.plot_columns - static_cast<int>(note.size())) / 2;
    const std::string inner = blanks(left) + note;
    picture->text += crv_WriteLine(
        {{blanks(layout.margin) + picture->frame.vertical + inner +
          blanks(layout.plot_columns - utl_CountColumns(inner)) + picture->frame.vertical}});
}

static void write_plot_row(picture *picture, int row) {
    const crv_layout &layout = picture->layout;
    const crv_tick *tick = picture->ticks_of_rows[static_cast<size_t>(row)];
    const std::string number = tick ? tick->text : "";
    const int pad = layout.margin - 1 - static_cast<int>(number.size());
    crv_styled_line line;
    crv_AppendSpan(&line, blanks(pad) + number + blanks(std::min(layout.margin, 1)), 0);
    crv_AppendSpan(&line, tick ? picture->frame.y_tick : picture->frame.vertical, 0);
    size_t next = 0; // of the ticks of X
    for (int column = 0; column < layout.plot_columns; ++column) {
        const bool is_tick =
            next < picture->tick_columns.size() && picture->tick_columns[next] == column;
        next += is_tick;
        const bool is_grid = tick && is_tick && column > 0 && column < layout.plot_columns - 1;
        append_cell(*picture, &line, *crv_CellAt(&picture->canvas, column, row), is_grid);
    }
    crv_AppendSpan(&line, picture->frame.vertical, 0);
    picture->text += crv_WriteLine(line);
}

static void write_plot_area(picture *picture) {
    const bool is_empty = !has_curve(picture->canvas);
    for (int row = 0; row < picture->layout.plot_rows; ++row) {
        if (is_empty && row == picture->layout.plot_rows / 2) {
            write_empty_row(picture);
        } else {
            write_plot_row(picture, row);
        }
    }
}

static void write_lower_border(picture *picture) {
    const frame_style &frame = picture->frame;
    std::string line = blanks(picture->layout.margin) + frame.lower_left;
    size_t next = 0;
    for (int column = 0; column < picture->layout.plot_columns; ++column) {
        const bool is_tick =
            next < picture->tick_columns.size() && picture->tick_columns[next] == column;
        next += is_tick;
        line += is_tick ? frame.x_tick : frame.horizontal;
    }
    picture->text += crv_WriteLine({{line + frame.lower_right}});
}

// Centres each number below its tick, inside the picture.
static void write_x_numbers(picture *picture) {
    const crv_layout &layout = picture->layout;
    std::string line(static_cast<size_t>(picture->format.columns), ' ');
    for (size_t k = 0; k < layout.x_ticks.size(); ++k) {
        const std::string &text = layout.x_ticks[k].text;
        const int width = static_cast<int>(text.size());
        if (width > picture->format.columns) continue;
        const int at = layout.margin + 1 + picture->tick_columns[k] - width / 2;
        const int column = std::clamp(at, 0, picture->format.columns - width);
        line.replace(static_cast<size_t>(column), text.size(), text);
    }
    picture->text += crv_WriteLine({{line}});
}

static void write_x_label(picture *picture) {
    if (!picture->layout.x_label) return;
    const crv_layout &layout = picture->layout;
    const char *label = picture->view.curves[0].x->colname;
    write_centered(picture, label, layout.margin + 1, layout.plot_columns);
}

static void write_legend(picture *picture) {
    for (const crv_styled_line &line : crv_MakeLegend(picture->view, picture->styles,
                                                      picture->format, picture->layout.legend_rows))
        picture->text += crv_WriteLine(line);
}

static void draw_curves(picture *picture, const crv_axes &axes) {
    const crv_layout &layout = picture->layout;
    picture->canvas =
        crv_MakeCanvas(layout.plot_columns, layout.plot_rows, picture->format.braille);
    int number = 0;
    for (const crv_view_curve &curve : picture->view.curves) {
        const uint16_t dash = picture->styles[static_cast<size_t>(number)].dash;
        crv_DrawCurve(&picture->canvas, axes, curve, ++number, dash);
    }
    if (picture->format.braille) crv_PlaceMarks(&picture->canvas, picture->styles);
}

// Finds the character of each tick: that of the dot at its value.
static void place_ticks(picture *picture) {
    const crv_canvas &canvas = picture->canvas;
    const int across = crv_CountDotsAcross(canvas) - 1;
    for (const crv_tick &tick : picture->layout.x_ticks) {
        const int dot = static_cast<int>(std::lround(tick.fraction * across));
        picture->tick_columns.push_back(dot / canvas.dots_per_column);
    }
    picture->ticks_of_rows.resize(static_cast<size_t>(canvas.rows));
    for (const crv_tick &tick : picture->layout.y_ticks) {
        const int row = crv_FindRow(tick.fraction, canvas.rows, canvas.dots_per_row);
        picture->ticks_of_rows[static_cast<size_t>(row)] = &tick;
    }
}

static crv_picture_parts list_parts(const crv_view &view, const crv_terminal_format &format,
                                    size_t legend_lines) {
    const auto is_shown = [&](std::string_view text) {
        return !crv_FitText(text, format, format.columns).empty();
    };
    return {is_shown(view.title), is_shown(view.subtitle),
            !view.curves.empty() && is_shown(view.curves[0].x->colname),
            static_cast<int>(legend_lines)};
}

std::string crv_DrawPicture(const crv_view &view, const crv_terminal_format &format) {
    if (format.columns < crv_min_picture_columns || format.rows < crv_min_picture_rows) return "";
    crv_terminal_format used = format;
    used.columns = std::min(format.columns, crv_max_picture_size);
    used.rows = std::min(format.rows, crv_max_picture_size);
    const std::vector<crv_curve_style> styles = crv_StyleCurves(view, used);
    const size_t legend_lines = crv_MakeLegend(view, styles, used, used.rows / 4).size();
    const crv_axes axes = crv_FindAxes(view);
    picture picture = {view,
                       used,
                       styles,
                       crv_LayOutPicture(list_parts(view, used, legend_lines), axes, used),
                       used.braille ? box_frame : ascii_frame,
                       {},
                       {},
                       {},
                       {}};
    draw_curves(&picture, axes);
    place_ticks(&picture);
    write_titles(&picture);
    write_upper_border(&picture);
    write_plot_area(&picture);
    write_lower_border(&picture);
    write_x_numbers(&picture);
    write_x_label(&picture);
    write_legend(&picture);
    return picture.text;
}
