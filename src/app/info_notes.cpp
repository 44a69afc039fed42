// app/info_notes.cpp - what is unusual in a file, and what crv makes of it.
#include "app/info.h"

#include "app/info_text.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

using count = unsigned long long; // for %llu

[[gnu::format(printf, 2, 3)]] static void note(crv_info *info, const char *format, ...) {
    char text[256];
    va_list values;
    va_start(values, format);
    vsnprintf(text, sizeof text, format, values);
    va_end(values);
    info->notes.emplace_back(text);
}

static void note_time(crv_info *info, const crv_survey &steps) {
    if (steps.steps == 0) note(info, "The file has no complete step");
    if (steps.missing_line != 0)
        note(info, "Line %llu has no time, which is read as 0", count{steps.missing_line});
    if (steps.back_step != 0)
        note(info, "Step %llu has an earlier time than the step before", count{steps.back_step});
    if (steps.dropped != 0)
        note(info, "%llu steps are outside the default time window of crv, -100 to 10000; see -tm",
             count{steps.dropped});
}

static void note_last_step(crv_info *info, const crv_survey &steps, int num_requests) {
    if (steps.lines_left != 0)
        note(info, "The file ends within a step, after %llu of %lld lines", count{steps.lines_left},
             static_cast<long long>(num_requests) + 1);
}

static void note_missing_entries(crv_info *info, int announced, int found, size_t listed) {
    if (found < announced)
        note(info, "The header announces %d requests, the file ends after %d", announced, found);
    if (static_cast<size_t>(found) > listed)
        note(info, "Only the first %llu requests are listed", count{listed});
}

static void note_identifiers(crv_info *info, const std::vector<crv_request_line> &requests) {
    std::vector<uint32_t> identifiers;
    identifiers.reserve(requests.size());
    for (const crv_request_line &request : requests) identifiers.push_back(request.identifier);
    std::sort(identifiers.begin(), identifiers.end());
    const auto unnamed = std::upper_bound(identifiers.begin(), identifiers.end(), 0U);
    if (unnamed != identifiers.begin())
        note(info, "Requests with identifier 0 cannot be selected: %llu",
             static_cast<count>(unnamed - identifiers.begin()));
    const auto twice = std::adjacent_find(unnamed, identifiers.end());
    if (twice != identifiers.end())
        note(info, "Request %u is listed more than once, crv uses the last", *twice);
}

static void note_request(crv_info *info) {
    const crv_request_survey &survey = info->request;
    note_missing_entries(info, survey.header.num_requests, survey.header.num_entries,
                         survey.requests.size());
    note_identifiers(info, survey.requests);
    note_time(info, survey.steps);
    if (survey.marked_line != 0)
        note(info,
             "Line %llu contains <++>: the file has several result sets, which crv does not read",
             count{survey.marked_line});
    note_last_step(info, survey.steps, survey.header.num_requests);
    if (survey.steps.unterminated)
        note(info, "The last line has no line end, and crv does not read it");
    if (crv_CountWraps(*info))
        note(info,
             "crv reads at most 32767 steps of a request file, see -tm; the viewers read all");
}

static void note_madymo(crv_info *info) {
    const crv_madymo_survey &survey = info->madymo;
    if (!survey.header.has_counts) note(info, "Line 3 does not begin with two numbers");
    note_missing_entries(info, survey.header.num_requests, survey.header.num_names,
                         survey.names.size());
    if (survey.header.num_described < survey.header.num_descriptions)
        note(info, "The header announces %d column descriptions, the file ends after %d",
             survey.header.num_descriptions, survey.header.num_described);
    note_time(info, survey.steps);
    note_last_step(info, survey.steps, survey.header.num_requests);
    if (survey.long_line != 0)
        note(info, "Line %llu is longer than 509 characters, and crv does not read the file",
             count{survey.long_line});
    if (survey.steps.unterminated)
        note(info, "The last line has no line end, and crv does not read the file");
    for (const size_t numbers : survey.numbers) {
        if (numbers <= static_cast<size_t>(crv_madymo_max_numbers)) continue;
        note(info, "Only the first %d numbers of a line can be selected", crv_madymo_max_numbers);
        break;
    }
}

static void note_column(crv_info *info) {
    const crv_column_survey &survey = info->column;
    const size_t labels = crv_LabelsOf(*info).size();
    if (info->file.label_line > 0 && labels != static_cast<size_t>(survey.header.num_columns))
        note(info, "The label line has %llu labels for %d columns", count{labels},
             survey.header.num_columns);
    if (survey.rows.steps == 0) note(info, "The file has no complete row");
    if (survey.uneven_rows != 0)
        note(info, "%llu rows have another number of fields than the first, the first on line %llu",
             count{survey.uneven_rows}, count{survey.uneven_line});
    if (survey.rows.unterminated)
        note(info, "The last line has no line end, and crv does not read it");
    if (survey.rows.dropped != 0)
        note(info, "%llu rows are outside the default window of crv, 1 to 10000; see -tm",
             count{survey.rows.dropped});
}

static void note_frame(crv_info *info) {
    const crv_frame_survey &survey = info->frame;
    if (survey.num_blocks == 0 && !survey.too_few) note(info, "The file has no data block");
    if (survey.too_few)
        note(info, "A data block has less than three points, and crv does not read the file");
    if (survey.num_blocks > 1)
        note(info, "The file has %llu data blocks, which crv joins", count{survey.num_blocks});
    if (survey.ends_early)
        note(info, "The file ends within a data block, after %llu points", count{survey.num_found});
    if (survey.missing_line != 0)
        note(info, "Line %llu has less than two numbers, the others are read as 0",
             count{survey.missing_line});
    if (survey.header.has_points_of_style)
        note(info, "The number of points is that of %%S, the style, which is after any %%N");
}

void crv_AddNotes(crv_info *info) {
    switch (info->file.format) {
    case crv_format::request: note_request(info); return;
    case crv_format::madymo: note_madymo(info); break;
    case crv_format::column: note_column(info); break;
    default: note_frame(info); break;
    }
    if (crv_CountWraps(*info))
        note(info, "With more than 32767 points, the means that crv computes are wrong");
}
