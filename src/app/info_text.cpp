// app/info_text.cpp - the contents of a file as aligned text, and as pairs of a selection.
#include "app/info_text.h"

#include "text/fixed_text.h"
#include "text/utf8.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iterator>

static constexpr int name_width = 9; // of the lines before and after the table

std::string crv_NumberText(double value) {
    if (std::isnan(value)) return "nan";
    char text[32];
    for (int digits = 15; digits <= 17; ++digits) {
        snprintf(text, sizeof text, "%.*g", digits, value);
        if (strtod(text, nullptr) == value) break;
    }
    return text;
}

const char *crv_FormatText(crv_format format) {
    switch (format) {
    case crv_format::request: return "request file";
    case crv_format::madymo: return "Madymo file";
    case crv_format::column: return "column file";
    default: return "frame file";
    }
}

std::string crv_TypeText(uint32_t type) {
    const bool is_known = type < std::size(crv_request_types);
    return is_known ? std::string(utl_TrimEnd(crv_request_types[type])) : "?????";
}

std::vector<std::string> crv_ItemTexts() {
    std::vector<std::string> texts;
    for (size_t k = 1; k < std::size(crv_request_items); ++k)
        texts.emplace_back(utl_TrimEnd(crv_request_items[k]));
    return texts;
}

static void add_line(std::string *text, std::string_view name, const std::string &value) {
    if (value.empty()) return;
    *text += "  ";
    *text += name;
    text->append(name.size() < name_width ? name_width - name.size() : 0, ' ');
    *text += ' ';
    *text += utl_CleanText(value);
    *text += '\n';
}

static void add_heading(std::string *text, const std::string &row) {
    *text += '\n';
    *text += row;
}

static void add_steps(std::string *text, const crv_survey &steps) {
    add_line(text, "steps", std::to_string(steps.steps));
    if (steps.steps == 0) return;
    add_line(text, "time",
             crv_NumberText(steps.first_time) + " to " + crv_NumberText(steps.last_time));
}

// A table row: numbers to the right, and one text at the end.
static std::string right(const std::string &cell, size_t width) {
    return std::string(cell.size() < width ? width - cell.size() : 0, ' ') + cell;
}

static std::string table_row(const std::string &cells, std::string_view last) {
    std::string row = "  ";
    row += cells;
    if (!last.empty()) row += "  ";
    row += utl_CleanText(last);
    return row + "\n";
}

// Items 7 and 8 are magnitudes of the three before them.
static std::string item_line() {
    const std::vector<std::string> texts = crv_ItemTexts();
    std::string items;
    for (size_t k = 0; k < texts.size(); ++k) {
        if (k > 0) items += ", ";
        items += std::to_string(k + 1) + " " + texts[k];
        if (k == 6) items += " of X Y Z";
        if (k == 7) items += " of A1 A2 A3";
    }
    return items;
}

static void add_request(std::string *text, const crv_request_survey &survey) {
    add_steps(text, survey.steps);
    add_line(text, "items", item_line());
    add_line(text, "requests", std::to_string(survey.header.num_entries));
    if (survey.requests.empty()) return;
    size_t width = std::string_view("request").size();
    for (const crv_request_line &request : survey.requests)
        width = std::max(width, std::to_string(request.identifier).size());
    add_heading(text, table_row(right("request", width) + "  type ", "name"));
    for (const crv_request_line &request : survey.requests) {
        std::string type = crv_TypeText(request.type);
        const std::string name(utl_TrimEnd(request.name));
        if (!name.empty()) type.resize(5, ' ');
        *text += table_row(right(std::to_string(request.identifier), width) + "  " + type, name);
    }
    *text += "\n";
}

static void add_madymo(std::string *text, const crv_madymo_survey &survey) {
    add_steps(text, survey.steps);
    add_line(text, "requests", std::to_string(survey.header.num_names));
    if (!survey.names.empty()) add_heading(text, table_row("request  numbers", "name"));
    for (size_t k = 0; k < survey.names.size(); ++k) {
        const bool has_line = k < survey.numbers.size();
        const std::string numbers = has_line ? std::to_string(survey.numbers[k]) : "-";
        *text += table_row(right(std::to_string(k + 1), 7) + "  " + right(numbers, 7),
                           utl_TrimEnd(survey.names[k]));
    }
    if (!survey.descriptions.empty()) add_heading(text, table_row("   item", "description"));
    for (size_t k = 0; k < survey.descriptions.size(); ++k)
        *text += table_row(right(std::to_string(k + 1), 7), utl_TrimEnd(survey.descriptions[k]));
    *text += "\n";
}

static void add_column(std::string *text, const crv_info &info) {
    const crv_column_survey &survey = info.column;
    add_line(text, "rows", std::to_string(survey.rows.steps));
    add_line(text, "columns", std::to_string(survey.header.num_columns));
    if (survey.header.num_columns < 1) return;
    add_heading(text, table_row(" column", "label"));
    const std::vector<std::string> labels = crv_LabelsOf(info);
    for (size_t k = 0; k < static_cast<size_t>(survey.header.num_columns); ++k)
        *text += table_row(right(std::to_string(k + 1), 7), k < labels.size() ? labels[k] : "");
    *text += "\n";
}

static std::string range_text(const double (&range)[2]) {
    return crv_NumberText(range[0]) + " to " + crv_NumberText(range[1]);
}

static void add_axis(std::string *text, const std::string &name, std::string_view label,
                     const double (&range)[2], const double (&extremes)[2], bool has_points) {
    add_line(text, name, std::string(utl_TrimLine(label)));
    if (has_points) add_line(text, name + " data", range_text(extremes));
    if (range[0] < range[1]) add_line(text, name + " range", range_text(range));
}

static void add_frame(std::string *text, const crv_frame_survey &survey) {
    const crv_frame_header &header = survey.header;
    add_line(text, "points", std::to_string(header.num_points));
    const bool has_points = survey.num_found > 0;
    add_axis(text, "X", header.x_label.text, header.x_range, survey.extremes[0], has_points);
    add_axis(text, "Y", header.y_label.text, header.y_range, survey.extremes[1], has_points);
    for (size_t k = 1; k < std::size(header.y_titles); ++k)
        add_line(text, "Y title " + std::to_string(k),
                 std::string(utl_TrimLine(header.y_titles[k].text)));
    if (header.has_style) add_line(text, "style", std::to_string(header.style));
}

std::string crv_InfoText(const crv_info &info) {
    const std::string name = info.file.path == "-" ? "standard input" : info.file.path;
    std::string text = utl_CleanText(name) + ": " + crv_FormatText(info.file.format) + ", " +
                       std::to_string(info.size) + " bytes\n";
    add_line(&text, "title", crv_TitleOf(info));
    switch (info.file.format) {
    case crv_format::request: add_request(&text, info.request); break;
    case crv_format::madymo: add_madymo(&text, info.madymo); break;
    case crv_format::column: add_column(&text, info); break;
    default: add_frame(&text, info.frame); break;
    }
    for (const std::string &sentence : info.notes) add_line(&text, "note", sentence);
    add_line(&text, "chart", info.command);
    return text;
}

// ----- pairs

static std::string pair_line(const std::string &pair, std::string_view name,
                             std::string_view item) {
    return pair + "\t" + utl_CleanText(utl_TrimLine(name)) + "\t" +
           utl_CleanText(utl_TrimLine(item)) + "\n";
}

static std::string request_pairs(const crv_request_survey &survey) {
    const std::vector<std::string> texts = crv_ItemTexts();
    std::string text = pair_line("0", "time", "");
    for (const crv_request_line &request : survey.requests) {
        if (request.identifier == 0) continue;
        const std::string identifier = std::to_string(request.identifier);
        for (size_t k = 0; k < texts.size(); ++k)
            text += pair_line(identifier + ":" + std::to_string(k + 1), request.name,
                              crv_TypeText(request.type) + " " + texts[k]);
    }
    return text;
}

static std::string madymo_pairs(const crv_madymo_survey &survey) {
    std::string text = pair_line("0", "time", "");
    constexpr size_t max_item = crv_madymo_max_numbers;
    for (size_t k = 0; k < survey.names.size() && k < survey.numbers.size(); ++k) {
        for (size_t item = 1; item <= std::min(survey.numbers[k], max_item); ++item) {
            const bool is_described = item <= survey.descriptions.size();
            text += pair_line(std::to_string(k + 1) + ":" + std::to_string(item), survey.names[k],
                              is_described ? survey.descriptions[item - 1]
                                           : "number " + std::to_string(item));
        }
    }
    return text;
}

static std::string column_pairs(const crv_info &info) {
    std::string text = pair_line("0", "row count", "");
    const std::vector<std::string> labels = crv_LabelsOf(info);
    for (size_t k = 0; k < static_cast<size_t>(info.column.header.num_columns); ++k)
        text += pair_line(std::to_string(k + 1), k < labels.size() ? labels[k] : "", "");
    return text;
}

std::string crv_InfoPairs(const crv_info &info) {
    switch (info.file.format) {
    case crv_format::request: return request_pairs(info.request);
    case crv_format::madymo: return madymo_pairs(info.madymo);
    case crv_format::column: return column_pairs(info);
    default: return pair_line("0", "X and Y", "");
    }
}
