// app/info_json.cpp - the contents of a file as a JSON object (RFC 8259).
#include "app/info.h"

#include "app/info_text.h"
#include "text/fixed_text.h"
#include "text/utf8.h"

#include <cmath>
#include <iterator>

using members = std::vector<std::string>; // of an object or an array, as JSON

// Only quotes and backslashes need an escape: control characters have been replaced.
static std::string quoted(std::string_view text) {
    std::string json(1, '"');
    for (const char c : utl_CleanText(text)) {
        if (c == '"' || c == '\\') json += '\\';
        json += c;
    }
    return json + '"';
}

// JSON has no text for infinite numbers and not-a-number.
static std::string number(double value) {
    return std::isfinite(value) ? crv_NumberText(value) : "null";
}

template <typename integer> static std::string whole(integer value) {
    return std::to_string(value);
}

static std::string joined(const members &parts, char open, char close, std::string_view between) {
    std::string json(1, open);
    for (size_t k = 0; k < parts.size(); ++k) {
        if (k > 0) json += between;
        json += parts[k];
    }
    return json + close;
}

// Objects and arrays of one line, and arrays with one element on a line.
static std::string object(const members &parts) { return joined(parts, '{', '}', ", "); }
static std::string array(const members &parts) { return joined(parts, '[', ']', ", "); }
static std::string rows(const members &parts) {
    if (parts.empty()) return "[]";
    std::string json = "[";
    for (size_t k = 0; k < parts.size(); ++k) {
        json += k > 0 ? ",\n    " : "\n    ";
        json += parts[k];
    }
    return json + "\n  ]";
}

static void add(members *parts, const char *name, const std::string &json) {
    std::string member = quoted(name);
    member += ": ";
    member += json;
    parts->push_back(member);
}

static const char *format_name(crv_format format) {
    switch (format) {
    case crv_format::request: return "request";
    case crv_format::madymo: return "madymo";
    case crv_format::column: return "column";
    case crv_format::frame: return "frame";
    default: return "unknown";
    }
}

static void add_steps(members *parts, const crv_survey &steps) {
    const bool has_time = steps.steps > 0;
    add(parts, "steps", whole(steps.steps));
    add(parts, "first_time", has_time ? number(steps.first_time) : "null");
    add(parts, "last_time", has_time ? number(steps.last_time) : "null");
}

static void add_request(members *parts, const crv_request_survey &survey) {
    members requests;
    for (const crv_request_line &request : survey.requests) {
        members one;
        add(&one, "identifier", whole(request.identifier));
        add(&one, "type", quoted(crv_TypeText(request.type)));
        add(&one, "name", quoted(utl_TrimEnd(request.name)));
        requests.push_back(object(one));
    }
    members items;
    for (const std::string &item : crv_ItemTexts()) items.push_back(quoted(item));
    add_steps(parts, survey.steps);
    add(parts, "items", array(items));
    add(parts, "requests", rows(requests));
}

static void add_madymo(members *parts, const crv_madymo_survey &survey) {
    members requests;
    for (size_t k = 0; k < survey.names.size(); ++k) {
        members one;
        add(&one, "place", whole(k + 1));
        add(&one, "name", quoted(utl_TrimEnd(survey.names[k])));
        add(&one, "numbers", k < survey.numbers.size() ? whole(survey.numbers[k]) : "null");
        requests.push_back(object(one));
    }
    members descriptions;
    for (const std::string &text : survey.descriptions)
        descriptions.push_back(quoted(utl_TrimEnd(text)));
    add_steps(parts, survey.steps);
    add(parts, "requests", rows(requests));
    add(parts, "descriptions", rows(descriptions));
}

static void add_column(members *parts, const crv_info &info) {
    const std::vector<std::string> labels = crv_LabelsOf(info);
    members columns;
    for (size_t k = 0; k < static_cast<size_t>(info.column.header.num_columns); ++k) {
        members one;
        add(&one, "number", whole(k + 1));
        add(&one, "label", k < labels.size() ? quoted(labels[k]) : "null");
        columns.push_back(object(one));
    }
    add(parts, "rows", whole(info.column.rows.steps));
    add(parts, "columns", rows(columns));
}

static std::string pair(const double (&range)[2]) {
    return array({number(range[0]), number(range[1])});
}

static void add_axis(members *parts, const char *name, std::string_view label,
                     const double (&range)[2], const double (&extremes)[2], bool has_points) {
    members axis;
    add(&axis, "label", quoted(utl_TrimLine(label)));
    add(&axis, "data", has_points ? pair(extremes) : "null");
    add(&axis, "range", range[0] < range[1] ? pair(range) : "null");
    add(parts, name, object(axis));
}

static void add_frame(members *parts, const crv_frame_survey &survey) {
    const crv_frame_header &header = survey.header;
    const bool has_points = survey.num_found > 0;
    members titles;
    for (size_t k = 1; k < std::size(header.y_titles); ++k)
        if (header.y_titles[k].given)
            add(&titles, std::to_string(k).c_str(), quoted(utl_TrimLine(header.y_titles[k].text)));
    add(parts, "points", whole(header.num_points));
    add(parts, "points_found", whole(survey.num_found));
    add_axis(parts, "x", header.x_label.text, header.x_range, survey.extremes[0], has_points);
    add_axis(parts, "y", header.y_label.text, header.y_range, survey.extremes[1], has_points);
    add(parts, "y_titles", object(titles));
    add(parts, "style", header.has_style ? whole(header.style) : "null");
}

static std::string file_object(const members &parts) { return joined(parts, '{', '}', ",\n  "); }

std::string crv_InfoJson(const crv_info &info) {
    members parts;
    add(&parts, "file", quoted(info.file.path));
    add(&parts, "format", quoted(format_name(info.file.format)));
    add(&parts, "size", whole(info.size));
    add(&parts, "title", quoted(crv_TitleOf(info)));
    switch (info.file.format) {
    case crv_format::request: add_request(&parts, info.request); break;
    case crv_format::madymo: add_madymo(&parts, info.madymo); break;
    case crv_format::column: add_column(&parts, info); break;
    default: add_frame(&parts, info.frame); break;
    }
    members notes;
    for (const std::string &sentence : info.notes) notes.push_back(quoted(sentence));
    add(&parts, "notes", rows(notes));
    add(&parts, "command", info.command.empty() ? "null" : quoted(info.command));
    return file_object(parts);
}

std::string crv_InfoErrorJson(const crv_info_file &file, const std::string &error) {
    members parts;
    add(&parts, "file", quoted(file.path));
    add(&parts, "error", quoted(error));
    return file_object(parts);
}
