// readers/madymo_survey.cpp - names, descriptions and steps of a Madymo file, without its values.
#include "readers/madymo_file.h"
#include "readers/madymo_steps.h"

#include <cstdint>

namespace {

// All lines of a step, whose numbers are counted.
struct counted_lines {
    crv_madymo_survey *survey;
    int64_t block = 0;

    int64_t next_block() const { return block; }
    void read(int64_t, const utl_line &, utl_line_fields *fields);
};

// None of the lines of a step.
struct skipped_lines {
    int64_t next_block() const { return INT64_MAX; }
    void read(int64_t, const utl_line &, utl_line_fields *) {}
};

} // namespace

void counted_lines::read(int64_t, const utl_line &, utl_line_fields *fields) {
    if (block++ == 0 || survey->numbers.size() == crv_max_listed) return;
    while (!utl_TakeField(fields).empty()) {
    }
    survey->numbers.push_back(fields->taken);
}

// Reads names and descriptions into the survey.
static void survey_header(crv_madymo_steps *mad, crv_madymo_survey *survey) {
    std::string_view text;
    while (crv_ReadMadymoName(mad->in.lines, &mad->header, &text))
        if (survey->names.size() < crv_max_listed)
            survey->names.emplace_back(text.substr(0, crv_madymo_name_length));
    while (crv_ReadMadymoDescription(mad->in.lines, &mad->header, &text))
        if (survey->descriptions.size() < crv_max_listed) survey->descriptions.emplace_back(text);
}

bool crv_SurveyMad(utl_line_reader *lines, uint64_t max_steps, crv_madymo_survey *survey) {
    crv_madymo_steps mad = {};
    mad.in = {.path = "", .lines = lines, .is_silent = true};
    mad.header = crv_ReadMadymoHeader(lines);
    survey->header = mad.header;
    if (mad.header.num_requests < 0) return false;

    survey_header(&mad, survey);
    survey->header = mad.header;
    bool more = max_steps > 0 && crv_ReadMadymoStep(&mad, counted_lines{survey});
    while (more) {
        crv_SurveyStep(&survey->steps, mad.time);
        more = survey->steps.steps < max_steps && crv_ReadMadymoStep(&mad, skipped_lines{});
    }
    crv_SurveyInput(&survey->steps, mad.in);
    survey->steps.unterminated = mad.end == utl_line_status::unterminated;
    if (mad.end == utl_line_status::partial) {
        survey->long_line = lines->line_number;
    } else {
        survey->steps.lines_left = static_cast<uint64_t>(mad.lines_left);
    }
    return true;
}
