// app/info_read.cpp - format by suffix; reads a file by the survey of its format.
#include "app/info.h"

#include "text/fields.h"
#include "text/fixed_text.h"

#include <cctype>
#include <cerrno>
#include <climits>
#include <cstring>

crv_format crv_FormatOfPath(const std::string &path) {
    const size_t dot = path.rfind('.');
    std::string suffix = dot == path.npos ? "" : path.substr(dot);
    for (char &c : suffix) c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
    if (suffix == ".req") return crv_format::request;
    if (suffix == ".mad") return crv_format::madymo;
    if (suffix == ".pos") return crv_format::column;
    if (suffix == ".vdr") return crv_format::frame;
    return crv_format::unknown;
}

static const char *count_error = "the number of requests on line 3 is below 0";

// Returns the error, or an empty text.
static std::string survey_file(crv_info *info, utl_line_reader *lines,
                               const crv_info_depth &depth) {
    const crv_info_file &file = info->file;
    const int first_line = file.label_line < INT_MAX ? file.label_line + 1 : INT_MAX;
    switch (file.format) {
    case crv_format::request:
        return crv_SurveyReq(lines, depth.max_steps, &info->request) ? "" : count_error;
    case crv_format::madymo:
        return crv_SurveyMad(lines, depth.max_steps, &info->madymo) ? "" : count_error;
    case crv_format::column:
        if (depth.whole_file) {
            crv_SurveyPost(lines, file.label_line, first_line, &info->column);
        } else {
            crv_ReadColumnHeader(lines, file.label_line, first_line, &info->column.header);
        }
        return "";
    default:
        if (depth.whole_file) crv_SurveyVDR(lines, &info->frame);
        return "";
    }
}

std::string crv_ReadInfo(crv_info *info, const crv_info_depth &depth) {
    crv_info_file &file = info->file;
    if (file.format == crv_format::unknown) file.format = crv_FormatOfPath(file.path);
    if (file.format == crv_format::unknown)
        return "its name does not end in .req, .mad, .pos or .vdr; see -f, -fm, -fp and -fg";
    utl_line_reader *lines =
        file.path == "-" ? utl_OpenStandardReader() : utl_OpenReader(file.path.c_str());
    if (!lines) return strerror(errno);
    std::string error = survey_file(info, lines, depth);
    if (error.empty() && depth.whole_file) utl_SkipRest(lines);
    info->size = lines->bytes_read;
    if (error.empty() && lines->error != 0) error = strerror(lines->error);
    utl_CloseReader(lines);
    return error;
}

const crv_survey *crv_StepsOf(const crv_info &info) {
    switch (info.file.format) {
    case crv_format::request: return &info.request.steps;
    case crv_format::madymo: return &info.madymo.steps;
    case crv_format::column: return &info.column.rows;
    default: return nullptr;
    }
}

std::string crv_TitleOf(const crv_info &info) {
    switch (info.file.format) {
    case crv_format::request: return std::string(utl_TrimLine(info.request.header.title));
    case crv_format::madymo: return std::string(utl_TrimLine(info.madymo.header.title));
    case crv_format::frame: return std::string(utl_TrimLine(info.frame.header.title.text));
    default: return "";
    }
}

std::vector<std::string> crv_LabelsOf(const crv_info &info) {
    std::vector<std::string> labels;
    std::string_view rest = info.column.header.labels;
    std::string_view label;
    while (utl_NextField(&rest, &label)) labels.push_back(crv_ColumnLabel(label));
    return labels;
}
