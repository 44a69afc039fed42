// readers/column_file.cpp - reads a column file in one pass: header lines, then one row per line,
// whose selected fields are read from left to right.
#include "readers/column_file.h"

#include "readers/column_builder.h"
#include "readers/input.h"
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

#include <cstdio>
#include <limits>

static constexpr int routine = 94;
static constexpr size_t line_limit = crv_column_line_limit;
static constexpr int status_failed = 0;

namespace {

// An entry of the selection, in the order of the fields of a row.
struct row_entry {
    crv_column *column;
    int32_t advance; // fields from that of the previous entry, 0 for the same
    uint32_t number; // of the field, 0 for the row count
};

// State of a column file that is being read.
struct column_file {
    crv_input in;
    crv_selection selection;
    std::span<crv_column *const> columns; // of the entries, in selection order
    row_entry row[CRV_MAXCOLS];
    crv_column_header header;
    uint32_t rows_done;
    utl_line_status end; // of the line that ended the rows
};

} // namespace

static void trace_selection(const crv_selection &selection) {
    if (crv_DBG != routine) return;
    for (const crv_reqsel &entry : crv_Entries(selection))
        printf("    _94-i-val, Access column = %2u, \n", entry.req);
}

// Reads the header. Returns the first row.
static utl_line read_header(column_file *pos, int label_line, int first_line) {
    const utl_line line = crv_ReadColumnHeader(pos->in.lines, label_line, first_line, &pos->header);
    utl_EraseStatusLine();
    printf("%ccrv_94-i-val, file %s has %2u columns.\n", '%', pos->in.path,
           static_cast<unsigned>(pos->header.num_columns));
    return line;
}

static bool check_selection(const column_file *pos) {
    for (const crv_reqsel &entry : crv_Entries(pos->selection)) {
        const auto column = static_cast<int>(entry.req);
        if (column >= 0 && column <= pos->header.num_columns) continue;
        printf("%ccrv_94-f-nocol, Column \"%u\" does not exist!\n", '%', entry.req);
        return false;
    }
    return true;
}

static void order_entries(column_file *pos) {
    crv_SortByBlock(&pos->selection);
    int32_t at = 0;
    for (size_t next = 0; next < pos->selection.count; ++next) {
        const size_t k = pos->selection.order[next];
        const int32_t field = pos->selection.table[k].block;
        pos->row[next] = {pos->columns[k], field - at, pos->selection.table[k].req};
        at = field;
    }
}

// Deliberate: the check for the label Row Count uses the slot number as the index of the entry, not
// the entry of the column.
static void make_columns(column_file *pos) {
    int slot = pos->selection.first_slot;
    for (const crv_reqsel &entry : crv_Entries(pos->selection)) {
        crv_column *column = crv_AllocColumn(slot);
        if (!column) utl_QuitWithError("    _94-e-calloc, data", status_failed);
        if (crv_IsTime(pos->selection, slot)) {
            snprintf(column->colname, sizeof column->colname, "Row Count");
        } else {
            snprintf(column->colname, sizeof column->colname, "Column %4u", entry.req);
        }
        ++slot;
    }
    order_entries(pos);
}

static void trace_label(const column_file *pos, uint32_t number, std::string_view label) {
    crv_TraceRecord({pos->header.labels, pos->header.labels_status}, routine);
    printf("    _94-i-val, item = %u, label = %.*s \n", number, static_cast<int>(label.size()),
           label.data());
}

static void set_labels(const column_file *pos) {
    std::string_view rest = pos->header.labels;
    std::string_view label;
    for (uint32_t number = 1; utl_NextField(&rest, &label); ++number) {
        for (size_t k = 0; k < pos->selection.count; ++k) {
            if (pos->selection.table[k].req != number) continue;
            utl_CopyText(pos->columns[k]->colname, crv_ColumnLabel(label));
            if (crv_DBG == routine) trace_label(pos, number, label);
        }
    }
}

static void trace_value(utl_line line, uint32_t item, double value) {
    crv_TraceRecord(line, routine);
    printf("    _94-i-val, item = %u, val1 = %f \n", item, value);
}

static void keep_value(const column_file *pos, crv_column *column, double value) {
    crv_UpdateMinMax(column, value, 0, 0.0, pos->rows_done);
    crv_AccumulateSum(column, value);
    crv_UpdateAbsMinMaxBySign(column, value);
    if (!crv_AppendValue(column, value)) utl_QuitWithError("    _94-f-calloc", status_failed);
}

// Counts the value of an entry, and stores it if its row is in the time window.
static inline void read_value(const column_file *pos, const row_entry &entry, const utl_line &line,
                              bool in_window, double value) {
    // Also for dropped rows, unless the settings keep all data.
    if (in_window || !crv_settings.keeps_all_data) crv_CountValue(entry.column);
    if (crv_DBG == routine) trace_value(line, entry.number, value);
    if (in_window) keep_value(pos, entry.column, value);
}

// Fills a row that is too short, if the settings keep all data: the values of the next rows then
// stay in line with those of the other columns. `rest` are the entries without a field.
static void fill_row(column_file *pos, std::span<const row_entry> rest, const utl_line &line,
                     bool in_window) {
    if (!crv_settings.keeps_all_data) return;
    if (pos->in.missing_line == 0) {
        pos->in.missing_line = pos->in.lines->line_number;
        fprintf(utl_ErrorStream(),
                "%%crv_94-w-num, Missing numbers in \"%s\" read as nan, first on line %llu\n",
                pos->in.path, static_cast<unsigned long long>(pos->in.missing_line));
    }
    for (const row_entry &entry : rest)
        read_value(pos, entry, line, in_window, std::numeric_limits<double>::quiet_NaN());
}

// Reads the fields of the entries from left to right. An entry beyond the end of the row gets no
// value, unless the settings keep all data.
static void read_row(column_file *pos, const utl_line &line) {
    if (line.status == utl_line_status::partial) crv_WarnLongLine(&pos->in);
    const double row = pos->rows_done + 1.0; // counted from 1
    const bool in_window = crv_CountPoint(&pos->in, row);
    const std::span<const row_entry> entries(pos->row, pos->selection.count);
    utl_line_fields fields = utl_SplitLine(line.text);
    double value = row;
    for (size_t next = 0; next < entries.size(); ++next) {
        const row_entry &entry = entries[next];
        for (int32_t skipped = 1; skipped < entry.advance; ++skipped) utl_TakeField(&fields);
        if (entry.advance > 0 && !utl_TakeNumber(&fields, &value)) {
            fill_row(pos, entries.subspan(next), line, in_window);
            return;
        }
        read_value(pos, entry, line, in_window, value);
    }
}

static bool is_row(const utl_line &line) {
    return line.status == utl_line_status::newline || line.status == utl_line_status::partial;
}

// Reads the rows from `first` on; `read` is called for each of them.
template <typename row_reader>
static void read_rows(column_file *pos, const utl_line &first, row_reader read) {
    pos->end = first.status;
    if (!is_row(first)) return;
    read(first);
    for (++pos->rows_done;; ++pos->rows_done) {
        const utl_line line = utl_ReadLine(pos->in.lines, line_limit);
        pos->end = line.status;
        if (!is_row(line)) return;
        read(line);
    }
}

static void list_columns(const column_file *pos) {
    for (size_t k = 0; k < pos->selection.count; ++k) {
        crv_column *column = pos->columns[k];
        printf("    _94-i-val, ---------------------------- \n");
        printf("    _94-i-val, name = %s, max = %f, min = %f \n", column->colname, column->max,
               column->min);
        printf("    _94-i-val, var1 = %f, var2 = %f, mean = %f \n", column->var1, column->var2,
               column->mean);
        crv_ListValues(column, routine);
    }
}

static void warn_dropped_rows(const column_file *pos) {
    if (pos->in.points_dropped == 0 || crv_settings.keeps_all_data) return;
    const uint64_t kept = pos->in.points - pos->in.points_dropped;
    fprintf(utl_ErrorStream(),
            "%%crv_94-w-mea, Means of \"%s\" are sums over the values in %llu rows divided by the"
            " number of values in all %llu rows\n",
            pos->in.path, static_cast<unsigned long long>(kept),
            static_cast<unsigned long long>(pos->in.points));
}

// Reads the whole file. Returns the result of crv_ReadPost.
static int read_file(column_file *pos, int label_line, int first_line) {
    utl_line line = read_header(pos, label_line, first_line);
    if (!check_selection(pos)) return 0;
    make_columns(pos);
    set_labels(pos);
    if (first_line < 1) line = utl_ReadLine(pos->in.lines, line_limit);
    read_rows(pos, line, [pos](const utl_line &row) { read_row(pos, row); });
    if (pos->end == utl_line_status::unterminated) crv_WarnIncompleteLine(pos->in);
    if (crv_ReadFailed(pos->in)) {
        utl_QuitWithError("    _94-f-fread", status_failed);
    }
    crv_WarnDefaultWindow(pos->in);
    crv_SetMeans(pos->columns);
    printf("%ccrv_94-i-pts, file %s has %u steps\n", '%', pos->in.path, pos->rows_done);
    if (crv_DBG == routine) list_columns(pos);
    warn_dropped_rows(pos);
    crv_WarnWrappedCounts(pos->in, pos->columns);
    return static_cast<int>(pos->selection.count);
}

int crv_ReadPost(const char *path, const crv_selection &selection, int label_line, int first_line) {
    if (crv_DBG == routine) printf("    _94-i-val, pos_filename = \"%s\" \n", path);
    if (crv_DBG == routine) trace_selection(selection);

    column_file pos = {};
    pos.in = {.path = path, .routine = routine};
    pos.selection = selection;
    pos.columns = crv_SelectedColumns(selection);
    for (crv_reqsel &entry : crv_Entries(&pos.selection))
        entry.block = static_cast<int32_t>(entry.req); // field of the row, 0 for the row count

    printf("%ccrv_94-i-wor, Reading \"%s\" ...\n", '%', path);
    pos.in.lines = utl_OpenReader(path);
    if (!pos.in.lines) utl_QuitWithError("    _94-f-fopen", status_failed);
    const int count = read_file(&pos, label_line, first_line);
    utl_CloseReader(pos.in.lines);
    return count;
}

// Compares the number of fields of a row with that of the first row.
static void survey_row(column_file *pos, const utl_line &line, crv_column_survey *survey) {
    crv_CountPoint(&pos->in, pos->rows_done + 1.0);
    const auto columns = static_cast<size_t>(pos->header.num_columns);
    if (utl_CountFields(line.text) == columns) return;
    if (survey->uneven_rows++ == 0) survey->uneven_line = pos->in.lines->line_number;
}

void crv_SurveyPost(utl_line_reader *lines, int label_line, int first_line,
                    crv_column_survey *survey) {
    column_file pos = {};
    pos.in = {.path = "", .lines = lines, .routine = routine, .is_silent = true};
    utl_line line = crv_ReadColumnHeader(lines, label_line, first_line, &pos.header);
    survey->header = pos.header;
    if (first_line < 1) line = utl_ReadLine(lines, line_limit);
    read_rows(&pos, line, [&](const utl_line &row) { survey_row(&pos, row, survey); });
    crv_SurveyInput(&survey->rows, pos.in);
    survey->rows.steps = pos.rows_done;
    survey->rows.unterminated = pos.end == utl_line_status::unterminated;
}
