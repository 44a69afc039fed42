// csv/csv_labels.cpp - labels of the columns: shown text, made distinct by file and number.
#include "csv/csv_file.h"

#include "text/utf8.h"

#include <algorithm>

namespace {

struct csv_label {
    std::string text;
    size_t file; // index of the file of the column
};

} // namespace

static std::vector<csv_label> labels_of(const crv_view &view) {
    std::vector<csv_label> labels;
    for (size_t k = 0; k < view.files.size(); ++k) {
        const crv_view_file &file = view.files[k];
        if (file.has_own_x) labels.push_back({utl_CleanText(file.x->colname), k});
        for (const crv_column *column : file.columns)
            labels.push_back({utl_CleanText(column->colname), k});
    }
    return labels;
}

static bool is_in_another_file(const csv_label &label, const std::vector<csv_label> &labels) {
    return std::any_of(labels.begin(), labels.end(), [&](const csv_label &other) {
        return other.text == label.text && other.file != label.file;
    });
}

// Returns the text, with the first number from 2 on that none of the names has if one of them is
// equal.
static std::string number_if_used(const std::string &text, const std::vector<std::string> &names) {
    const auto is_used = [&](const std::string &name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    std::string name = text;
    for (int number = 2; is_used(name); ++number) name = text + "_" + std::to_string(number);
    return name;
}

std::vector<std::string> crv_NameCsvColumns(const crv_view &view) {
    const std::vector<csv_label> labels = labels_of(view);
    std::vector<std::string> names;
    for (const csv_label &label : labels) {
        std::string text = label.text;
        if (is_in_another_file(label, labels))
            text += " (" + utl_CleanText(view.files[label.file].path) + ")";
        names.push_back(number_if_used(text, names));
    }
    return names;
}
