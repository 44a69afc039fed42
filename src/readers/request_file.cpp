// readers/request_file.cpp - reads a request file in one pass: header, then steps, of which only
// the lines of selected requests are parsed.
#include "readers/request_file.h"

#include "readers/column_builder.h"
#include "readers/input.h"
#include "readers/request_item.h"
#include "readers/selection.h"
#include "records/column.h"
#include "records/range.h"
#include "records/settings.h"
#include "stats/column_stats.h"
#include "system/console.h"
#include "system/status_line.h"
#include "text/fields.h"
#include "text/line_reader.h"

#include <cstdio>

static constexpr int routine = 83;
static constexpr size_t line_limit = crv_request_line_limit;

namespace {

// State of a request file that is being read.
struct request_file {
    crv_input in;
    crv_selection selection;
    std::span<crv_column *const> columns; // of the entries, in selection order
    crv_request_header header;
    bool screens_x;
    double time;
    bool in_window; // the time is in the time window
    double x_value; // latest value of entry 0
    uint32_t step;
    uint32_t steps_done;
    uint64_t marked_line;        // line with "<++>", 0 without one
    int64_t lines_left;          // lines of the incomplete step at the end
    utl_line_status last_status; // of the line at the end
};

} // namespace

static void trace_selection(const crv_selection &selection) {
    if (crv_DBG != routine) return;
    for (const crv_reqsel &entry : crv_Entries(selection))
        printf("    _83-i-val, Access results for req = %4u, item = %u \n", entry.req, entry.item);
}

// Sets line and type of the entries that select a request.
static void match_request(request_file *req, const crv_request_entry &request) {
    for (crv_reqsel &entry : crv_Entries(&req->selection)) {
        // Identifier 0 is time, on its own line.
        if (entry.req != request.identifier || entry.req == 0) continue;
        entry.block = request.block;
        entry.type = request.type;
    }
}

static bool read_header(request_file *req) {
    req->header = crv_ReadRequestHeader(req->in.lines);
    if (req->header.num_requests < 0) {
        fprintf(utl_ErrorStream(),
                "%%crv_83-e-num, Number of requests (%d) on line 3 of \"%s\" is below 0\n",
                req->header.num_requests, req->in.path);
        return false;
    }
    crv_request_entry request;
    while (crv_ReadRequestEntry(req->in.lines, &req->header, &request)) match_request(req, request);
    return true;
}

static bool check_selection(const request_file *req) {
    const crv_reqsel *missing = crv_FindMissing(req->selection);
    if (!missing) return true;
    utl_EraseStatusLine();
    printf("%%crv_83-e-mis, Request \"%u\" not found! \n", missing->req);
    return false;
}

// The labels are provisional; only trace lines show them. Deliberate: the check for the label Time
// uses the slot number as the index of the entry, not the entry of the column.
static bool make_columns(request_file *req) {
    int slot = req->selection.first_slot;
    for (const crv_reqsel &entry : crv_Entries(req->selection)) {
        crv_column *column = crv_AllocColumn(slot);
        if (!column) {
            utl_ReportError("    _83-e-calloc, data");
            return false;
        }
        if (crv_IsTime(req->selection, slot)) {
            snprintf(column->colname, sizeof column->colname, "Time");
        } else {
            snprintf(column->colname, sizeof column->colname, "R:%4u, i:%1u", entry.req,
                     entry.item);
        }
        ++slot;
    }
    crv_SortByBlock(&req->selection);
    return true;
}

static void trace_value(const request_file *req, const utl_line &line, uint32_t item,
                        double value) {
    crv_TraceRecord(line, routine);
    printf("    _83-i-val, item = %u, val1 = %f \n", item, value);
    printf("    _83-i-val, current_time = %f \n", req->time);
    printf("    _83-i-val, current_xval = %f \n", req->x_value);
    if (req->in_window) {
        printf("    _83-i-val, Time screening TRUE\n");
    } else {
        printf("    _83-i-val, Time screening FALSE\n");
    }
}

static bool keep_value(const request_file *req, crv_column *column, double value) {
    crv_CountValue(column);
    crv_UpdateMinMax(column, value, req->step, req->time, req->time);
    crv_AccumulateSum(column, value);
    crv_UpdateFirstLast(column, value, req->step, req->time);
    crv_UpdateAbsMinMax(column, value, req->step, req->time);
    if (crv_AppendValue(column, value)) return true;
    utl_ReportError("    _83-f-calloc");
    return false;
}

// Reads the value of entry k from the line of its request, and stores it if time and X value are in
// range. Returns false if memory runs out.
static bool read_value(request_file *req, size_t k, const utl_line &line, utl_line_fields *fields) {
    const uint32_t item = req->selection.table[k].item;
    bool complete = true;
    const double value = crv_ReadItem(fields, item, &complete);
    if (!complete) crv_WarnMissingNumbers(&req->in);
    if (req->screens_x && k == 0) req->x_value = value;
    if (crv_DBG == routine) trace_value(req, line, item, value);

    if (!req->in_window) return true;
    if (req->screens_x && !crv_InRange(req->x_value, crv_settings.x_filter)) return true;
    return keep_value(req, req->columns[k], value);
}

static void reject_multiple_results(const request_file *req) {
    utl_EraseStatusLine();
    printf("%%crv_xx-e-mul, Multiple results in (%s)\n", req->in.path);
    printf("    _xx-e-not, Kelp plot does not support multiple results in one .req file.\n");
}

// Returns the line of entry `next` in a step, or the first line after the step.
static int64_t next_needed_block(const request_file *req, size_t next) {
    return crv_NextNeededBlock(req->selection, next, req->header.num_requests);
}

static void read_time(request_file *req, utl_line_fields *fields) {
    if (!utl_TakeNumberAt(fields, 1, &req->time)) crv_WarnMissingNumbers(&req->in);
    req->in_window = crv_CountPoint(&req->in, req->time);
}

// Reads one step, skipping lines without an entry. Returns false at the end of the file or after an
// error, which sets *failed.
static bool read_step(request_file *req, bool *failed) {
    size_t next = 0; // index into the order of the entries
    for (int64_t block = 0; block <= req->header.num_requests;) {
        const utl_line line = utl_ReadLine(req->in.lines, line_limit);
        if (line.has_lt_or_nul && line.text.find("<++>") != line.text.npos) {
            req->marked_line = req->in.lines->line_number;
            *failed = true;
            return false;
        }
        if (line.status == utl_line_status::unterminated || line.status == utl_line_status::eof) {
            req->lines_left = block;
            req->last_status = line.status;
            if (block > 0 || line.status == utl_line_status::unterminated)
                crv_WarnIncompleteStep(req->in, req->step);
            return false;
        }
        if (line.status == utl_line_status::partial) crv_WarnLongLine(&req->in);
        utl_line_fields fields = utl_SplitLine(line.text);
        if (block == 0) read_time(req, &fields);
        for (; next_needed_block(req, next) == block; ++next) {
            if (read_value(req, req->selection.order[next], line, &fields)) continue;
            *failed = true;
            return false;
        }
        ++block;
        block += utl_SkipLines(req->in.lines, line_limit, next_needed_block(req, next) - block);
    }
    return true;
}

static bool read_steps(request_file *req) {
    bool failed = false;
    for (req->step = 1; read_step(req, &failed); ++req->step) ++req->steps_done;
    return !failed;
}

static void set_means(const request_file *req) {
    for (size_t k = 0; k < req->selection.count; ++k) {
        crv_column *column = req->columns[k];
        if (crv_CountOf(column) < 1) {
            fprintf(utl_ErrorStream(), "%%crv_83-e-pts, No data points found for item (%d)\n",
                    req->selection.first_slot + static_cast<int>(k));
            utl_Fail(1);
        }
        column->mean = crv_MeanOf(column->sum, crv_CountOf(column));
    }
}

static void set_labels(request_file *req) {
    for (size_t k = 0; k < req->selection.count; ++k) {
        crv_reqsel *entry = &req->selection.table[k];
        crv_column *column = req->columns[k];
        crv_LabelEntry(entry, crv_request_types, crv_request_items);
        if (entry->req == 0) {
            snprintf(column->colname, sizeof column->colname, "Time (sec) ");
        } else {
            // Item labels are two characters wide: two blanks follow a single letter.
            snprintf(column->colname, sizeof column->colname, "%.5s %u, %.2s ", entry->type_label,
                     entry->req, entry->comp_label);
        }
        crv_SetTitle(column, {req->header.title, req->header.title_status});
    }
}

// Reads the whole file. Returns the result of crv_ReadReq.
static int read_file(request_file *req) {
    if (!read_header(req)) return -1;
    if (!check_selection(req)) return 0;
    if (!make_columns(req)) return -1;
    if (!read_steps(req)) {
        if (req->marked_line != 0) reject_multiple_results(req);
        return -1;
    }
    if (crv_ReadFailed(req->in)) {
        utl_ReportError("    _83-f-fread");
        return -1;
    }
    crv_WarnDefaultWindow(req->in);
    set_means(req);
    printf("%%crv_83-i-pts, file (%s) has %d steps\n", req->in.path,
           static_cast<int>(req->steps_done));
    if (crv_DBG == routine) crv_ListColumns(req->columns, routine);
    set_labels(req);
    crv_WarnWrappedCounts(req->in, req->columns);
    return static_cast<int>(req->selection.count);
}

int crv_ReadReq(const char *path, const crv_selection &selection) {
    if (crv_DBG == routine) printf("    _83-i-val, req_filename = \"%s\" \n", path);
    if (crv_DBG == routine) trace_selection(selection);

    request_file req = {};
    req.in = {.path = path, .routine = routine};
    req.selection = selection;
    req.columns = crv_SelectedColumns(selection);
    req.screens_x = crv_settings.x_filter[1] > crv_settings.x_filter[0];

    printf("%%crv_83-i-wor, Reading \"%s\" ...\n", path);
    req.in.lines = utl_OpenReader(path);
    if (!req.in.lines) {
        utl_ReportError("    _83-f-fopen");
        return -1;
    }
    const int count = read_file(&req);
    utl_CloseReader(req.in.lines);
    return count;
}

bool crv_SurveyReq(utl_line_reader *lines, uint64_t max_steps, crv_request_survey *survey) {
    request_file req = {};
    req.in = {.path = "", .lines = lines, .routine = routine, .is_silent = true};
    req.header = crv_ReadRequestHeader(lines);
    crv_request_entry request;
    while (crv_ReadRequestEntry(lines, &req.header, &request))
        if (survey->requests.size() < crv_max_listed)
            survey->requests.push_back(
                {request.identifier, request.type, std::string(request.name)});
    survey->header = req.header;
    if (req.header.num_requests < 0) return false;

    bool failed = false;
    while (survey->steps.steps < max_steps && read_step(&req, &failed))
        crv_SurveyStep(&survey->steps, req.time);
    crv_SurveyInput(&survey->steps, req.in);
    survey->steps.lines_left = static_cast<uint64_t>(req.lines_left);
    survey->steps.unterminated = req.last_status == utl_line_status::unterminated;
    survey->marked_line = req.marked_line;
    return true;
}
