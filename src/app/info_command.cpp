// app/info_command.cpp - the command line that charts the first series of a file.
#include "app/info.h"

#include "app/info_text.h"
#include "records/settings.h"
#include "util/shell_word.h"

static constexpr size_t shortest_path = 3; // crv does not read files with shorter names

// Returns the name by which crv reads the file.
static std::string path_of(const crv_info_file &file) {
    if (file.path == "-") return "/dev/stdin";
    const bool is_special = file.path[0] == '-' || file.path[0] == '^';
    return is_special || file.path.size() < shortest_path ? "./" + file.path : file.path;
}

static std::string option_of(const crv_info_file &file) {
    switch (file.format) {
    case crv_format::request: return "-f";
    case crv_format::madymo: return "-fm";
    case crv_format::column:
        return file.label_line == 1 ? "-fp" : "-fp" + std::to_string(file.label_line);
    default: return "-fg";
    }
}

static std::string request_selection(const crv_request_survey &survey) {
    for (const crv_request_line &request : survey.requests)
        if (request.identifier != 0) return "0," + std::to_string(request.identifier) + ":1";
    return "";
}

static std::string selection_of(const crv_info &info) {
    switch (info.file.format) {
    case crv_format::request: return request_selection(info.request);
    case crv_format::madymo: return info.madymo.header.num_requests > 0 ? "0,1:1" : "";
    case crv_format::column: // the first column over the row count if there is no other
        return info.column.header.num_columns > 1    ? "1,2"
               : info.column.header.num_columns == 1 ? "0,1"
                                                     : "";
    default: return "0";
    }
}

// Returns true if crv ends without a chart of the file.
static bool is_rejected(const crv_info &info) {
    switch (info.file.format) {
    case crv_format::request: return info.request.marked_line != 0 || info.request.steps.steps == 0;
    case crv_format::madymo:
        return info.madymo.long_line != 0 || info.madymo.steps.unterminated ||
               info.madymo.steps.steps == 0;
    case crv_format::column: return info.column.rows.steps == 0;
    default: return info.frame.too_few || info.frame.num_found == 0;
    }
}

// Returns true if the time of no step is finite. No time window then has a step.
static bool has_no_finite_time(const crv_survey &steps) {
    return steps.lowest_time > steps.highest_time;
}

// Returns the option for a time window that contains all points with a finite time, with a blank;
// an empty text if the default window does, or if no time is finite.
static std::string window_of(const crv_info &info) {
    const crv_survey *survey = crv_StepsOf(info);
    if (!survey || survey->dropped == 0) return "";
    if (info.file.format == crv_format::column)
        return "-tm 1:" + std::to_string(survey->steps) + " ";
    if (has_no_finite_time(*survey)) return "";
    return "-tm " + crv_NumberText(survey->lowest_time) + ":" +
           crv_NumberText(survey->highest_time) + " ";
}

bool crv_CountWraps(const crv_info &info) {
    const crv_survey *survey = crv_StepsOf(info);
    return (survey ? survey->steps : info.frame.num_found) > INT16_MAX;
}

void crv_AddCommand(crv_info *info) {
    const std::string selection = selection_of(*info);
    if (is_rejected(*info) || selection.empty()) return;
    // The other programs have no default window, and count without a limit.
    const bool needs_page = info->file.format == crv_format::request &&
                            (crv_CountWraps(*info) || has_no_finite_time(info->request.steps));
    info->command = needs_page ? "crv-html -r " : "crv " + window_of(*info) + "-r ";
    info->command +=
        selection + " " + option_of(info->file) + " " + utl_ShellWord(path_of(info->file)) + " -p";
}
