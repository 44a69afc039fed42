// terminal/curve_style.cpp - colour by series, dash pattern by file, character by curve.
#include "terminal/curve_style.h"

#include <algorithm>
#include <iterator>
#include <string_view>

// Colours that are readable on white and on black: bright blue, red, green, magenta, cyan, yellow.
static constexpr int colors[] = {94, 31, 32, 35, 36, 33};
static constexpr uint16_t dashes[] = {0xFFFF, 0x3F3F, 0x3333, 0x18FF};
static constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
static constexpr std::string_view marks =
    "*+xo#@%&=~ABCDEFGHIJKLMNPQRSTUVWXYZabcdefghijkmnpqrstuvwyz";

// Returns for each curve its position in its file.
static std::vector<size_t> find_series(const crv_view &view) {
    std::vector<size_t> series;
    for (size_t k = 0; k < view.curves.size(); ++k) {
        const bool continues = k > 0 && view.curves[k].file == view.curves[k - 1].file;
        series.push_back(continues ? series.back() + 1 : 0);
    }
    return series;
}

static size_t count_files(const crv_view &view) {
    int last = 0;
    for (const crv_view_curve &curve : view.curves) last = std::max(last, curve.file);
    return static_cast<size_t>(last) + 1;
}

static char braille_mark(size_t curve, size_t curves, bool is_distinct) {
    return is_distinct || curves < 2 ? '\0' : letters[curve % letters.size()];
}

static char ascii_mark(size_t curve, size_t file, bool is_distinct) {
    return marks[(is_distinct ? file : curve) % marks.size()];
}

std::vector<crv_curve_style> crv_StyleCurves(const crv_view &view,
                                             const crv_terminal_format &format) {
    const std::vector<size_t> series = find_series(view);
    const size_t most = series.empty() ? 0 : *std::max_element(series.begin(), series.end()) + 1;
    const size_t file_styles = format.braille ? std::size(dashes) : marks.size();
    const bool is_distinct =
        format.colors && most <= std::size(colors) && count_files(view) <= file_styles;
    std::vector<crv_curve_style> styles;
    for (size_t k = 0; k < series.size(); ++k) {
        const auto file = static_cast<size_t>(view.curves[k].file);
        const char mark = format.braille ? braille_mark(k, series.size(), is_distinct)
                                         : ascii_mark(k, file, is_distinct);
        styles.push_back({format.colors ? colors[series[k] % std::size(colors)] : 0,
                          dashes[file % std::size(dashes)], mark});
    }
    return styles;
}
