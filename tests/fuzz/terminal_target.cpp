// fuzz/terminal_target.cpp - a picture fits its format and controls nothing but colours, whatever
// the texts and the values are.
//
// Input: columns, rows, Braille, colours, ranges of X and Y and number of files on a line, with ' '
// between them; then texts that end with the character 1: title, subtitle, and for each file its
// path and the names of its X and of two curves; then numbers, given to the columns in turn.
#include "harness.h"

#include "records/range.h"
#include "terminal/picture.h"
#include "text/fixed_text.h"
#include "text/text_columns.h"
#include "text/utf8.h"

#include <cmath>

static constexpr int max_files = 8;
static constexpr size_t columns_of_file = 3;

namespace {

struct picture_input {
    crv_terminal_format format;
    crv_view view;
    std::vector<crv_column *> columns;
};

} // namespace

static crv_column *add_column(picture_input *input, std::string_view name) {
    crv_column *column = crv_AllocColumn(0);
    utl_CopyText(column->colname, name);
    input->columns.push_back(column);
    return column;
}

static void add_file(picture_input *input, std::string_view *rest) {
    const int file = static_cast<int>(input->view.files.size());
    const std::string path = take_text(rest, '\1');
    const crv_column *x = add_column(input, take_text(rest, '\1'));
    input->view.files.push_back({path, x, true, {}});
    for (size_t k = 1; k < columns_of_file; ++k) {
        const crv_column *y = add_column(input, take_text(rest, '\1'));
        input->view.files.back().columns.push_back(y);
        input->view.curves.push_back({x, y, file});
    }
}

static picture_input take_input(std::string_view rest) {
    picture_input input;
    input.format.columns = take_integer(&rest, ' ') % 300;
    input.format.rows = take_integer(&rest, ' ') % 100;
    input.format.braille = take_integer(&rest, ' ') % 2 != 0;
    input.format.colors = take_integer(&rest, ' ') % 2 != 0;
    for (double(*range)[2] : {&input.view.x_range, &input.view.y_range})
        for (double &bound : *range) bound = take_number(&rest, ' ');
    const int files = 1 + (take_integer(&rest, '\n') & (max_files - 1));
    input.view.title = take_text(&rest, '\1');
    input.view.subtitle = take_text(&rest, '\1');
    for (int file = 0; file < files; ++file) add_file(&input, &rest);
    for (size_t k = 0; !rest.empty(); ++k)
        crv_AppendValue(input.columns[k % input.columns.size()], take_number(&rest, ' '));
    return input;
}

// Removes the escape sequences from a line: a colour and its end in turn, and no other.
static std::string take_off_colors(std::string_view line, bool colors) {
    std::string plain;
    bool is_colored = false;
    for (size_t at = 0; at < line.size(); ++at) {
        if (line[at] != '\033') {
            plain += line[at];
            continue;
        }
        require(colors, "there are colours only where they are wanted");
        const std::string_view sequence = line.substr(at, line.find('m', at) + 1 - at);
        require((sequence == "\033[0m") == is_colored, "each colour ends before the next");
        require(sequence.size() == (is_colored ? 4U : 5U), "a sequence is a colour or its end");
        is_colored = !is_colored;
        at += sequence.size() - 1;
    }
    require(!is_colored, "a colour ends in its line");
    return plain;
}

// Returns true if the line has the right border of the frame at its end.
static bool check_line(std::string_view line, const crv_terminal_format &format) {
    const std::string plain = take_off_colors(line, format.colors);
    require(utl_CleanText(plain) == plain, "a line is UTF-8 without control characters");
    require(format.braille || utl_ToAscii(plain) == plain, "and ASCII if that is wanted");
    require(plain.empty() || plain.back() != ' ', "a line has no blanks at its end");
    const int columns = utl_CountColumns(plain);
    require(columns <= format.columns, "a line fits the width");
    const bool has_border = plain.ends_with(format.braille ? "\u2502" : "|");
    return has_border && columns == format.columns;
}

static void check_picture(const std::string &picture, const crv_terminal_format &format) {
    require(picture.back() == '\n', "the last line ends");
    std::string_view rest = picture;
    int lines = 0;
    int plot_rows = 0;
    for (; !rest.empty(); ++lines) plot_rows += check_line(take_text(&rest, '\n'), format);
    require(lines <= format.rows, "the picture fits the height");
    require(plot_rows >= 3, "the plot area has the whole width in at least three rows");
}

static bool has_point(const crv_view &view) {
    for (const crv_view_curve &curve : view.curves) {
        const crv_value *x = curve.x->val_list;
        const crv_value *y = curve.y->val_list;
        for (; x && y; x = x->next, y = y->next)
            if (std::isfinite(x->val) && std::isfinite(y->val)) return true;
    }
    return false;
}

static void check(const picture_input &input) {
    const crv_terminal_format &format = input.format;
    const std::string picture = crv_DrawPicture(input.view, format);
    const bool is_small =
        format.columns < crv_min_picture_columns || format.rows < crv_min_picture_rows;
    require(picture.empty() == is_small, "a picture is drawn if there is space for it");
    if (is_small) return;
    check_picture(picture, format);
    crv_view whole = input.view;
    crv_SetRange(whole.x_range, 1, -1);
    crv_SetRange(whole.y_range, 1, -1);
    whole.title = whole.subtitle = "";
    const bool is_empty =
        crv_DrawPicture(whole, format).find("no points here") != std::string::npos;
    require(is_empty == !has_point(whole), "a point is visible where no range leaves it out");
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    run_sandboxed({}, {}, [&] { check(take_input(bytes)); });
    return 0;
}
