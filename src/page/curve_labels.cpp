// page/curve_labels.cpp - labels of curves: the name of the column, its file, a number.
#include "page/curve_labels.h"

#include "text/utf8.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

std::string crv_ShownFileName(std::string_view path) {
    const size_t separator = path.find_last_of("/\\");
    return utl_CleanText(separator == path.npos ? path : path.substr(separator + 1));
}

static std::string_view name_of(const crv_view_curve &curve) { return curve.y->colname; }

static std::string label_of(const crv_view &view, const crv_view_curve &curve) {
    std::string text = utl_CleanText(name_of(curve));
    const bool is_shared =
        std::any_of(view.curves.begin(), view.curves.end(), [&](const crv_view_curve &other) {
            return name_of(other) == name_of(curve) && other.file != curve.file;
        });
    if (is_shared)
        text += " (" + crv_ShownFileName(view.files[static_cast<size_t>(curve.file)].path) + ")";
    return text;
}

static std::string number_if_used(const std::string &text,
                                  const std::vector<crv_curve_label> &labels) {
    std::string label = text;
    const auto is_equal = [&](const crv_curve_label &other) { return other.text == label; };
    for (int number = 2; std::any_of(labels.begin(), labels.end(), is_equal); ++number)
        label = text + "_" + std::to_string(number);
    return label;
}

namespace {

// What makes a series: a name, and its place among the equal names of a file.
struct series_key {
    std::string_view name;
    std::ptrdiff_t place;
    bool operator==(const series_key &) const = default;
};

} // namespace

std::vector<crv_curve_label> crv_LabelCurves(const crv_view &view) {
    std::vector<crv_curve_label> labels;
    std::vector<series_key> series;
    for (const crv_view_curve &curve : view.curves) {
        const auto is_equal = [&](const crv_view_curve &other) {
            return other.file == curve.file && name_of(other) == name_of(curve);
        };
        const series_key key = {name_of(curve),
                                std::count_if(view.curves.data(), &curve, is_equal)};
        const auto found = std::find(series.begin(), series.end(), key);
        const auto index = static_cast<size_t>(found - series.begin());
        if (found == series.end()) series.push_back(key);
        labels.push_back({number_if_used(label_of(view, curve), labels), index});
    }
    return labels;
}
