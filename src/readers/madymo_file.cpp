// readers/madymo_file.cpp - reads a Madymo file in one pass: header, then steps, of which only the
// lines of selected requests are parsed.
#include "readers/madymo_file.h"

#include "readers/column_builder.h"
#include "readers/input.h"
#include "readers/selection.h"
#include "records/column.h"
#include "records/range.h"
#include "records/settings.h"
#include "stats/column_stats.h"
#include "system/console.h"
#include "text/fields.h"
#include "text/fixed_text.h"
#include "text/line_reader.h"

#include <cstdio>

static constexpr int routine = 88;
static constexpr size_t title_limit = 126; // 125 characters and the line end
static constexpr size_t line_limit = 510;  // 509 characters and the line end
static constexpr size_t name_length = 10;
static constexpr uint32_t max_numbers_per_line = 31; // the highest item
static constexpr uint32_t request_type = 5;          // of all requests, "Req  "
static constexpr int status_failed = 0;

// Five characters each, as crv_reqsel::type_label; item labels have two, as comp_label.
static constexpr const char *type_labels[] = {"Time ", "Displ", "Veloc", "Accel", "Force", "Req  "};
static constexpr const char *item_labels[] = {"T ", "1 ", "2 ", "3 ", "4 ", "5 ", "6 ",
                                              "7 ", "8 ", "9 ", "10", "11", "12", "13"};

namespace {

// State of a Madymo file that is being read.
struct madymo_file {
    crv_input in;
    crv_selection selection;
    char names[CRV_MAXCOLS][name_length + 1]; // of the requests of the entries
    std::span<crv_column *const> columns;     // of the entries, in selection order
    char title[128];
    utl_line_status title_status;
    int num_requests;
    int num_descriptions;
    double time;
    bool in_window; // the time is in the time window
    uint32_t steps_done;
};

} // namespace

static void trace_selection(const crv_selection &selection) {
    if (crv_DBG != routine) return;
    for (const crv_reqsel &entry : crv_Entries(selection))
        printf("    _88-i-val, Access results for req = %4d, item = %d \n",
               static_cast<int>(entry.req), static_cast<int>(entry.item));
}

static void read_title(madymo_file *mad) {
    const utl_line line = utl_ReadLine(mad->in.lines, title_limit);
    utl_CopyText(mad->title, line.text);
    mad->title_status = line.status;
}

static void read_counts(madymo_file *mad) {
    char text[line_limit + 1];
    utl_CopyText(text, utl_ReadLine(mad->in.lines, line_limit).text);
    if (sscanf(text, "%d %d", &mad->num_requests, &mad->num_descriptions) != 2)
        printf("%%crv_xx-e-num, Request count or column count incorrect\n");
    if (mad->num_requests >= 0) return;
    fprintf(utl_ErrorStream(),
            "%%crv_88-f-num, Number of requests (%d) on line 3 of \"%s\" is below 0\n",
            mad->num_requests, mad->in.path);
    utl_Fail(status_failed);
}

// Sets the line of each entry. The number of a request is its position, so that a request is found
// even if the file ends before its name.
static void assign_lines(madymo_file *mad) {
    for (crv_reqsel &entry : crv_Entries(&mad->selection)) {
        if (entry.req < 1 || entry.req > static_cast<uint32_t>(mad->num_requests)) continue;
        entry.block = static_cast<int32_t>(entry.req);
        entry.type = request_type;
    }
}

static void read_header(madymo_file *mad) {
    read_title(mad);
    utl_ReadLine(mad->in.lines, line_limit);
    read_counts(mad);
    assign_lines(mad);
    for (int64_t block = 1; block <= mad->num_requests; ++block) {
        const utl_line line = utl_ReadLine(mad->in.lines, line_limit);
        if (line.status == utl_line_status::eof)
            break; // N may exceed the number of lines of the file
        for (size_t k = 0; k < mad->selection.count; ++k)
            if (mad->selection.table[k].block == block) utl_CopyText(mad->names[k], line.text);
    }
}

static bool check_selection(const madymo_file *mad) {
    const crv_reqsel *missing = crv_FindMissing(mad->selection);
    if (!missing) return true;
    printf("%%crv_88-e-mis, Request \"%u\" not found! \n", missing->req);
    return false;
}

static void skip_descriptions(const madymo_file *mad) {
    for (int k = 0; k < mad->num_descriptions; ++k)
        if (utl_ReadLine(mad->in.lines, line_limit).status == utl_line_status::eof) return;
}

// The labels are provisional; only trace lines show them. Deliberate: the check for the label Time
// uses the slot number as the index of the entry, not the entry of the column.
static void make_columns(madymo_file *mad) {
    int slot = mad->selection.first_slot;
    for (const crv_reqsel &entry : crv_Entries(mad->selection)) {
        crv_column *column = crv_AllocColumn(slot);
        if (!column) utl_QuitWithError("    _88-e-calloc, data", status_failed);
        if (crv_IsTime(mad->selection, slot)) {
            snprintf(column->colname, sizeof column->colname, "Time");
        } else {
            snprintf(column->colname, sizeof column->colname, "R:%4d, i:%1d",
                     static_cast<int>(entry.req), static_cast<int>(entry.item));
        }
        ++slot;
    }
    crv_SortByBlock(&mad->selection);
}

static double read_item(madymo_file *mad, utl_line_fields *fields, uint32_t item) {
    if (item > max_numbers_per_line) { // Deliberate: the message is misspelled.
        fprintf(utl_ErrorStream(), "%%crv_88-f-col, Exceeded Max number of col to reqest of %d\n",
                static_cast<int>(max_numbers_per_line));
        utl_Fail(status_failed);
    }
    if (item == 0) return mad->time;
    double number = 0.0;
    if (!utl_TakeNumberAt(fields, item, &number)) crv_WarnMissingNumbers(&mad->in);
    return number;
}

static void trace_value(const madymo_file *mad, utl_line line, uint32_t item, double value) {
    printf("    _88-i-val, *************************************\n");
    crv_TraceRecord(line, routine);
    printf("    _88-i-val, item = %u, val1 = %f \n", item, value);
    printf("    _88-i-val, current_time = %f \n", mad->time);
}

static void keep_value(const madymo_file *mad, crv_column *column, double value) {
    crv_CountValue(column);
    crv_UpdateMinMax(column, value, 0, 0.0, mad->time);
    crv_AccumulateSum(column, value);
    crv_UpdateFirstLast(column, value, 0, 0.0);
    crv_UpdateAbsMinMax(column, value, 0, 0.0);
    if (!crv_AppendValue(column, value)) utl_QuitWithError("    _88-f-calloc", status_failed);
}

// Reads the value of entry k from the line of its request, and stores it if the time is in the
// window.
static void read_value(madymo_file *mad, size_t k, utl_line line, utl_line_fields *fields) {
    const uint32_t item = mad->selection.table[k].item;
    const double value = read_item(mad, fields, item);
    if (crv_DBG == routine) trace_value(mad, line, item, value);
    if (mad->in_window) keep_value(mad, mad->columns[k], value);
}

// Ends the program if the line is too long. Deliberate: an unterminated last line counts as too
// long.
static void require_newline(const madymo_file *mad, utl_line line) {
    if (line.status == utl_line_status::newline) return;
    fprintf(utl_ErrorStream(), "\n%%crv_88-f-lon, Current records are too long in \"%s\"\n",
            mad->in.path);
    utl_Fail(status_failed);
}

// Returns the line of entry `next` in a step, or the first line after the step.
static int64_t next_needed_block(const madymo_file *mad, size_t next) {
    return crv_NextNeededBlock(mad->selection, next, mad->num_requests);
}

static void read_time(madymo_file *mad, utl_line_fields *fields) {
    if (!utl_TakeNumberAt(fields, 1, &mad->time)) crv_WarnMissingNumbers(&mad->in);
    mad->in_window = crv_CountPoint(&mad->in, mad->time);
}

// Reads one step, skipping lines without an entry. Returns false at the end of the file.
static bool read_step(madymo_file *mad) {
    size_t next = 0; // index into the order of the entries
    for (int64_t block = 0; block <= mad->num_requests;) {
        const utl_line line = utl_ReadLine(mad->in.lines, line_limit);
        if (line.status == utl_line_status::eof) return false;
        require_newline(mad, line);
        utl_line_fields fields = utl_SplitLine(line.text);
        if (block == 0) read_time(mad, &fields);
        for (; next_needed_block(mad, next) == block; ++next)
            read_value(mad, mad->selection.order[next], line, &fields);
        ++block;
        block += utl_SkipLines(mad->in.lines, line_limit, next_needed_block(mad, next) - block);
    }
    return true;
}

static void read_steps(madymo_file *mad) {
    while (read_step(mad)) ++mad->steps_done;
}

static void set_labels(madymo_file *mad) {
    for (size_t k = 0; k < mad->selection.count; ++k) {
        crv_reqsel *entry = &mad->selection.table[k];
        crv_column *column = mad->columns[k];
        crv_LabelEntry(entry, type_labels, item_labels);
        if (entry->req == 0) {
            snprintf(column->colname, sizeof column->colname, "Time (sec) ");
        } else {
            snprintf(column->colname, sizeof column->colname, "%s, R %d, C %.2s", mad->names[k],
                     static_cast<int>(entry->req), entry->comp_label);
        }
        crv_SetTitle(column, {mad->title, mad->title_status});
    }
}

// Reads the whole file. Returns the result of crv_ReadMad.
static int read_file(madymo_file *mad) {
    read_header(mad);
    if (!check_selection(mad)) return 0;
    skip_descriptions(mad);
    make_columns(mad);
    read_steps(mad);
    if (crv_ReadFailed(mad->in)) {
        utl_QuitWithError("    _88-f-fread", status_failed);
    }
    crv_WarnDefaultWindow(mad->in);
    crv_SetMeans(mad->columns);
    printf("%%crv_88-i-pts, file (%s) has %d steps\n", mad->in.path,
           static_cast<int>(mad->steps_done));
    if (crv_DBG == routine) crv_ListColumns(mad->columns, routine);
    set_labels(mad);
    crv_WarnWrappedCounts(mad->in, mad->columns);
    return static_cast<int>(mad->selection.count);
}

int crv_ReadMad(const char *path, const crv_selection &selection) {
    if (crv_DBG == routine) printf("    _88-i-val, mad_filename = \"%s\" \n", path);
    if (crv_DBG == routine) trace_selection(selection);

    madymo_file mad = {};
    mad.in = {.path = path, .routine = routine};
    mad.selection = selection;
    mad.columns = crv_SelectedColumns(selection);

    printf("%%crv_88-i-wor, Reading \"%s\" ...\n", path);
    mad.in.lines = utl_OpenReader(path);
    if (!mad.in.lines) utl_QuitWithError("    _88-f-fopen", status_failed);
    const int count = read_file(&mad);
    utl_CloseReader(mad.in.lines);
    return count;
}
