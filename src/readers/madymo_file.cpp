// readers/madymo_file.cpp - reads a Madymo file in one pass: header, then steps, of which only the
// lines of selected requests are parsed.
#include "readers/madymo_file.h"

#include "readers/column_builder.h"
#include "readers/input.h"
#include "readers/madymo_steps.h"
#include "readers/selection.h"
#include "records/column.h"
#include "records/range.h"
#include "records/settings.h"
#include "stats/column_stats.h"
#include "system/console.h"
#include "system/status_line.h"
#include "text/fields.h"
#include "text/fixed_text.h"
#include "text/line_reader.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

static constexpr int routine = 88;
static constexpr uint32_t max_numbers_per_line = crv_madymo_max_numbers; // the highest item
static constexpr uint32_t request_type = 5;                              // of all, "Req  "
static constexpr int status_failed = 0;

// Five characters each, as crv_reqsel::type_label; item labels have two, as comp_label.
static constexpr const char *type_labels[] = {"Time ", "Displ", "Veloc", "Accel", "Force", "Req  "};
static constexpr const char *item_labels[] = {"T ", "1 ", "2 ", "3 ", "4 ", "5 ", "6 ",
                                              "7 ", "8 ", "9 ", "10", "11", "12", "13"};

namespace {

// State of a Madymo file that is being read.
struct madymo_file {
    crv_madymo_steps steps;
    crv_selection selection;
    char names[CRV_MAXCOLS][crv_madymo_name_length + 1]; // of the requests of the entries
    std::span<crv_column *const> columns;                // of the entries, in selection order
    uint32_t steps_done;
};

// The lines of one step that have an entry, in the order of the step.
struct selected_lines {
    madymo_file *mad;
    size_t next = 0; // index into the order of the entries

    int64_t next_block() const;
    void read(int64_t block, const utl_line &line, utl_line_fields *fields);
};

} // namespace

static void trace_selection(const crv_selection &selection) {
    if (crv_DBG != routine) return;
    for (const crv_reqsel &entry : crv_Entries(selection))
        printf("    _88-i-val, Access results for req = %4d, item = %d \n",
               static_cast<int>(entry.req), static_cast<int>(entry.item));
}

// Sets the line of each entry. The number of a request is its position, so that a request is found
// even if the file ends before its name.
static void assign_lines(madymo_file *mad) {
    for (crv_reqsel &entry : crv_Entries(&mad->selection)) {
        if (entry.req < 1 || entry.req > static_cast<uint32_t>(mad->steps.header.num_requests))
            continue;
        entry.block = static_cast<int32_t>(entry.req);
        entry.type = request_type;
    }
}

static void read_header(madymo_file *mad) {
    mad->steps.header = crv_ReadMadymoHeader(mad->steps.in.lines);
    if (!mad->steps.header.has_counts) {
        utl_EraseStatusLine();
        printf("%%crv_xx-e-num, Request count or column count incorrect\n");
    }
    if (mad->steps.header.num_requests < 0) {
        fprintf(utl_ErrorStream(),
                "%%crv_88-f-num, Number of requests (%d) on line 3 of \"%s\" is below 0\n",
                mad->steps.header.num_requests, mad->steps.in.path);
        utl_Fail(status_failed);
    }
    assign_lines(mad);
    std::string_view text;
    while (crv_ReadMadymoName(mad->steps.in.lines, &mad->steps.header, &text))
        for (size_t k = 0; k < mad->selection.count; ++k)
            if (mad->selection.table[k].block == mad->steps.header.num_names)
                utl_CopyText(mad->names[k], text);
}

static bool check_selection(const madymo_file *mad) {
    const crv_reqsel *missing = crv_FindMissing(mad->selection);
    if (!missing) return true;
    utl_EraseStatusLine();
    printf("%%crv_88-e-mis, Request \"%u\" not found! \n", missing->req);
    return false;
}

static void skip_descriptions(madymo_file *mad) {
    std::string_view text;
    while (crv_ReadMadymoDescription(mad->steps.in.lines, &mad->steps.header, &text)) {
    }
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
    if (item == 0) return mad->steps.time;
    double number = 0.0;
    if (!utl_TakeNumberAt(fields, item, &number)) crv_WarnMissingNumbers(&mad->steps.in);
    return number;
}

static void trace_value(const madymo_file *mad, const utl_line &line, uint32_t item, double value) {
    utl_EraseStatusLine();
    printf("    _88-i-val, *************************************\n");
    crv_TraceRecord(line, routine);
    printf("    _88-i-val, item = %u, val1 = %f \n", item, value);
    printf("    _88-i-val, current_time = %f \n", mad->steps.time);
}

static void keep_value(const madymo_file *mad, crv_column *column, double value) {
    crv_CountValue(column);
    crv_UpdateMinMax(column, value, 0, 0.0, mad->steps.time);
    crv_AccumulateSum(column, value);
    crv_UpdateFirstLast(column, value, 0, 0.0);
    crv_UpdateAbsMinMax(column, value, 0, 0.0);
    if (!crv_AppendValue(column, value)) utl_QuitWithError("    _88-f-calloc", status_failed);
}

// Reads the value of entry k from the line of its request, and stores it if the time is in the
// window.
static void read_value(madymo_file *mad, size_t k, const utl_line &line, utl_line_fields *fields) {
    const uint32_t item = mad->selection.table[k].item;
    const double value = read_item(mad, fields, item);
    if (crv_DBG == routine) trace_value(mad, line, item, value);
    if (mad->steps.in_window) keep_value(mad, mad->columns[k], value);
}

// Deliberate: an unterminated last line counts as too long.
[[noreturn]] static void reject_long_line(const madymo_file *mad) {
    fprintf(utl_ErrorStream(), "\n%%crv_88-f-lon, Current records are too long in \"%s\"\n",
            mad->steps.in.path);
    utl_Fail(status_failed);
}

int64_t selected_lines::next_block() const {
    return crv_NextNeededBlock(mad->selection, next, mad->steps.header.num_requests);
}

void selected_lines::read(int64_t block, const utl_line &line, utl_line_fields *fields) {
    for (; next_block() == block; ++next) read_value(mad, mad->selection.order[next], line, fields);
}

static void read_steps(madymo_file *mad) {
    while (crv_ReadMadymoStep(&mad->steps, selected_lines{mad})) ++mad->steps_done;
    if (mad->steps.end != utl_line_status::eof) reject_long_line(mad);
    if (mad->steps.lines_left > 0) crv_WarnIncompleteStep(mad->steps.in, mad->steps_done + 1);
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
        crv_SetTitle(column, {mad->steps.header.title, mad->steps.header.title_status});
    }
}

// Reads the whole file. Returns the result of crv_ReadMad.
static int read_file(madymo_file *mad) {
    read_header(mad);
    if (!check_selection(mad)) return 0;
    skip_descriptions(mad);
    make_columns(mad);
    read_steps(mad);
    if (crv_ReadFailed(mad->steps.in)) {
        utl_QuitWithError("    _88-f-fread", status_failed);
    }
    crv_WarnDefaultWindow(mad->steps.in);
    crv_SetMeans(mad->columns);
    printf("%%crv_88-i-pts, file (%s) has %d steps\n", mad->steps.in.path,
           static_cast<int>(mad->steps_done));
    if (crv_DBG == routine) crv_ListColumns(mad->columns, routine);
    set_labels(mad);
    crv_WarnWrappedCounts(mad->steps.in, mad->columns);
    return static_cast<int>(mad->selection.count);
}

int crv_ReadMad(const char *path, const crv_selection &selection) {
    if (crv_DBG == routine) printf("    _88-i-val, mad_filename = \"%s\" \n", path);
    if (crv_DBG == routine) trace_selection(selection);

    madymo_file mad = {};
    mad.steps.in = {.path = path, .routine = routine};
    mad.selection = selection;
    mad.columns = crv_SelectedColumns(selection);

    printf("%%crv_88-i-wor, Reading \"%s\" ...\n", path);
    mad.steps.in.lines = utl_OpenReader(path);
    if (!mad.steps.in.lines) utl_QuitWithError("    _88-f-fopen", status_failed);
    const int count = read_file(&mad);
    utl_CloseReader(mad.steps.in.lines);
    return count;
}
