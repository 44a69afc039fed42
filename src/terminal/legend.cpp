// terminal/legend.cpp - fills lines with the entries of the legend.
#include "terminal/legend.h"

#include "text/text_columns.h"

#include <algorithm>

static constexpr int sample_cells = 6;
static constexpr int entry_gap = 3;
static constexpr unsigned left_dot = 0x04; // in the third row of a Braille pattern
static constexpr unsigned right_dot = 0x20;

// Returns the start of a level line in the dash pattern; its first cell has the letter of the
// curve.
static std::string make_braille_sample(const crv_curve_style &style) {
    std::string sample;
    for (int cell = 0; cell < sample_cells; ++cell) {
        const unsigned bits = style.dash >> (2 * cell) & 3;
        if (cell == 0 && style.mark) {
            sample += style.mark;
        } else if (bits == 0) {
            sample += ' '; // some fonts show the empty pattern as circles
        } else {
            crv_AppendBraille(&sample, (bits & 1 ? left_dot : 0) | (bits & 2 ? right_dot : 0));
        }
    }
    return sample;
}

static crv_styled_line make_entry(const crv_view_curve &curve, const crv_curve_style &style,
                                  const crv_terminal_format &format, int indent) {
    const std::string sample =
        format.braille ? make_braille_sample(style) : std::string(3, style.mark);
    const int space = format.columns - indent - utl_CountColumns(sample) - 1;
    crv_styled_line entry;
    crv_AppendSpan(&entry, sample, style.color);
    crv_AppendSpan(&entry, " ", 0);
    crv_AppendSpan(&entry, crv_FitText(curve.y->colname, format, space), 0);
    return entry;
}

static void append_blanks(crv_styled_line *line, int count) {
    if (count > 0) crv_AppendSpan(line, std::string(static_cast<size_t>(count), ' '), 0);
}

// Returns the names of the files, cut to a third of the width, and all of the same width; no names
// for a single file.
static std::vector<std::string> make_file_names(const crv_view &view,
                                                const crv_terminal_format &format) {
    std::vector<std::string> names(view.files.size());
    if (names.size() < 2) return names;
    int longest = 0;
    for (size_t k = 0; k < names.size(); ++k) {
        names[k] = crv_FitText(view.files[k].path, format, format.columns / 3);
        longest = std::max(longest, utl_CountColumns(names[k]));
    }
    for (std::string &name : names) {
        const int blanks = longest - utl_CountColumns(name) + entry_gap;
        name.append(static_cast<size_t>(blanks), ' ');
    }
    return names;
}

namespace {

// The legend while it is filled. Entries of the last line leave `reserve` columns at its end.
struct legend {
    int columns;
    int max_lines;
    int indent;
    int reserve;
    std::vector<crv_styled_line> lines;
};

} // namespace

// Returns false if there is no space for the entry. A name begins a line.
static bool add_entry(legend *legend, const crv_styled_line &entry, const std::string *name) {
    const int length = crv_CountColumns(entry);
    const auto space = [&] {
        const bool is_last = static_cast<int>(legend->lines.size()) == legend->max_lines;
        return legend->columns - crv_CountColumns(legend->lines.back()) -
               (is_last ? legend->reserve : 0);
    };
    if (!name && entry_gap + length <= space()) {
        append_blanks(&legend->lines.back(), entry_gap);
    } else {
        if (static_cast<int>(legend->lines.size()) == legend->max_lines) return false;
        legend->lines.emplace_back();
        append_blanks(&legend->lines.back(), name ? 0 : legend->indent);
        if (name) crv_AppendSpan(&legend->lines.back(), *name, 0);
        if (length > space()) return false;
    }
    for (const crv_span &span : entry) crv_AppendSpan(&legend->lines.back(), span.text, span.color);
    return true;
}

// Returns the number of curves that the legend names.
static size_t fill_legend(legend *legend, const crv_view &view,
                          const std::vector<crv_curve_style> &styles,
                          const crv_terminal_format &format) {
    const std::vector<std::string> names = make_file_names(view, format);
    legend->indent = names.empty() ? 0 : utl_CountColumns(names[0]);
    legend->lines.clear();
    int file = -1;
    for (size_t k = 0; k < view.curves.size(); ++k) {
        const crv_view_curve &curve = view.curves[k];
        const crv_styled_line entry = make_entry(curve, styles[k], format, legend->indent);
        const bool begins_file = curve.file != file;
        const std::string *name = begins_file ? &names[static_cast<size_t>(curve.file)] : nullptr;
        if (!add_entry(legend, entry, name)) return k;
        file = curve.file;
    }
    return view.curves.size();
}

// Returns the note about the curves that are not named.
static std::string describe_rest(size_t count, const crv_terminal_format &format) {
    std::string note = "  +";
    note += std::to_string(count);
    return format.columns < 40 ? note : note + " more";
}

std::vector<crv_styled_line> crv_MakeLegend(const crv_view &view,
                                            const std::vector<crv_curve_style> &styles,
                                            const crv_terminal_format &format, int max_lines) {
    if (max_lines < 1) return {};
    legend legend = {format.columns, max_lines, 0, 0, {}};
    const size_t curves = view.curves.size();
    if (fill_legend(&legend, view, styles, format) == curves) return legend.lines;
    legend.reserve = utl_CountColumns(describe_rest(curves, format));
    const size_t named = fill_legend(&legend, view, styles, format);
    crv_AppendSpan(&legend.lines.back(), describe_rest(curves - named, format), 0);
    return legend.lines;
}
