// stats/dat_file.cpp - writes the .dat table: title, a table-driven block of statistics, value
// rows.
#include "stats/dat_file.h"

#include "records/column.h"
#include "records/settings.h"
#include "system/arithmetic.h"
#include "system/console.h"
#include "system/file_status.h"
#include "text/number_writer.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <span>

static constexpr int status_failed = 0;

namespace {

// Condition for a row of the statistics: always, with -abs or -all, with -all.
enum class group { always, absolute, all };

// A row of the statistics. Apart from `written`, one member is set: the label, or the field that
// the cells show as a value, a step or a time.
struct statistics_row {
    group written;
    const char *label = nullptr;
    double crv_column::*value = nullptr;
    uint32_t crv_column::*step = nullptr;
    double crv_column::*time = nullptr;
    bool is_name = false;
    bool is_range = false;
};

} // namespace

// Deliberate: the steps of minimum and maximum are written with -all only, those of the absolute
// extremes also with -abs alone.
static constexpr statistics_row statistics[] = {
    {.written = group::always, .label = "----------- "},
    {.written = group::always, .is_name = true},
    {.written = group::always, .value = &crv_column::min},
    {.written = group::all, .step = &crv_column::min_step},
    {.written = group::always, .time = &crv_column::var1},
    {.written = group::always, .label = "Minimum ^^^ "},
    {.written = group::always, .value = &crv_column::max},
    {.written = group::all, .step = &crv_column::max_step},
    {.written = group::always, .time = &crv_column::var2},
    {.written = group::always, .label = "Maximum ^^^ "},
    {.written = group::absolute, .label = "----------- "},
    {.written = group::absolute, .value = &crv_column::absmin},
    {.written = group::absolute, .step = &crv_column::absmin_step},
    {.written = group::absolute, .time = &crv_column::absmin_time},
    {.written = group::absolute, .label = "ABSMIN  ^^^ "},
    {.written = group::absolute, .value = &crv_column::absmax},
    {.written = group::absolute, .step = &crv_column::absmax_step},
    {.written = group::absolute, .time = &crv_column::absmax_time},
    {.written = group::absolute, .label = "ABSMAX  ^^^ "},
    {.written = group::all, .label = "----------- "},
    {.written = group::all, .value = &crv_column::begin_val},
    {.written = group::all, .step = &crv_column::begin_step},
    {.written = group::all, .time = &crv_column::begin_time},
    {.written = group::all, .label = "BEGINVal^^^ "},
    {.written = group::all, .value = &crv_column::end_val},
    {.written = group::all, .step = &crv_column::end_step},
    {.written = group::all, .time = &crv_column::end_time},
    {.written = group::all, .label = "ENDVal  ^^^ "},
    {.written = group::always, .label = "----------- "},
    {.written = group::always, .is_range = true},
    {.written = group::always, .label = "Range   ^^^ "},
    {.written = group::always, .value = &crv_column::mean},
    {.written = group::always, .label = "Mean    ^^^ "},
    {.written = group::always, .label = "=========== "},
};
static_assert(std::size(statistics) == 34);

using columns_span = std::span<crv_column *const>;

std::string crv_DatPath(std::string_view path) {
    const size_t dot = path.rfind('.');
    const size_t slash = path.rfind('/');
    const bool has_extension = dot != path.npos && (slash == path.npos || slash < dot);
    return std::string(has_extension ? path.substr(0, dot) : path) + ".dat";
}

static void write_title(FILE *out, const crv_column *column) {
    const auto length = static_cast<int>(strcspn(column->coltitle, "\n"));
    fprintf(out, "\n%-78.*s\n\n\n", length < 78 ? length : 78, column->coltitle);
}

static bool is_written(group written) {
    const bool all = (crv_settings.columnize_flags & StatisticsAll) != 0;
    const bool absolute = (crv_settings.columnize_flags & AbsoluteDat) != 0;
    switch (written) {
    case group::absolute: return absolute || all;
    case group::all: return all;
    default: return true;
    }
}

static void write_number(FILE *out, double value) {
    char text[utl_max_number_chars];
    *utl_WriteE11_4(text, value) = '\0';
    fprintf(out, "%s ", text);
}

static void write_cell(FILE *out, const statistics_row &row, const crv_column *column) {
    if (row.label) fputs(row.label, out);
    if (row.is_name) fprintf(out, "%-11.11s ", column->colname);
    if (row.value) write_number(out, column->*row.value);
    if (row.step) fprintf(out, "s=%9d ", static_cast<int>(column->*row.step));
    if (row.time) fprintf(out, "t=%9.2e ", column->*row.time);
    if (row.is_range) write_number(out, utl_Subtract(column->max, column->min));
}

static void write_statistics(FILE *out, columns_span columns) {
    for (const statistics_row &row : statistics) {
        if (!is_written(row.written)) continue;
        for (const crv_column *column : columns) write_cell(out, row, column);
        fputs("\n", out);
    }
}

// Sets the cursors to the first values. Returns false if a column has none.
static bool go_to_first_row(columns_span columns) {
    bool all_there = true;
    for (crv_column *column : columns) {
        column->val_cur = column->val_list;
        all_there = all_there && column->val_cur;
    }
    return all_there;
}

// Advances all cursors. Returns false and moves none if a column has ended: that row was the last.
static bool go_to_next_row(columns_span columns) {
    for (const crv_column *column : columns)
        if (!column->val_cur->next) return false;
    for (crv_column *column : columns) column->val_cur = column->val_cur->next;
    return true;
}

// Writes the rows, each cell as "%11.4e ". One fwrite per row: a call per cell takes longer than
// formatting it.
static void write_values(FILE *out, columns_span columns) {
    if (!go_to_first_row(columns)) return;
    char row[CRV_MAXCOLS * utl_max_number_chars + 1];
    do {
        char *end = row;
        for (const crv_column *column : columns) {
            end = utl_WriteE11_4(end, column->val_cur->val);
            *end++ = ' ';
        }
        *end++ = '\n';
        fwrite(row, 1, static_cast<size_t>(end - row), out);
    } while (go_to_next_row(columns));
}

// Reports the error in errno, removes the incomplete table if it is a regular file, and ends the
// program.
[[noreturn]] static void fail_write(const std::string &dat_path) {
    utl_ReportError(" crv_84-f-fwrite, in crv_writecols() ");
    if (utl_IsRegularFile(dat_path.c_str())) remove(dat_path.c_str());
    utl_Fail(status_failed);
}

static void close_table(FILE *out, const std::string &dat_path) {
    const bool written = fflush(out) == 0 && !ferror(out);
    const int error = errno;
    const bool closed = fclose(out) == 0;
    if (!written) errno = error;
    if (!written || !closed) fail_write(dat_path);
}

static FILE *open_table(const char *path, const std::string &dat_path) {
    if (utl_IsSameFile(path, dat_path.c_str())) {
        fprintf(utl_ErrorStream(),
                "%%crv_84-f-wri, \"%s\" is the file that is read, it is not written over\n",
                dat_path.c_str());
        utl_Fail(status_failed);
    }
    FILE *out = fopen(dat_path.c_str(), "w");
    if (!out) utl_QuitWithError(" crv_84-f-fopen, in crv_writecols() ", status_failed);
    return out;
}

void crv_WriteCols(const char *path, int16_t start, int16_t end, uint16_t layout) {
    if (crv_DBG == 84) printf("    _84-i-val, req_filename = \"%s\" \n", path);
    if (end <= start) {
        printf("%%crv_84-e-wri, Incorrect startcolum and end column specified!\n");
        return;
    }
    const std::string dat_path = crv_DatPath(path);
    printf("%%crv_84-i-wri, Writing \"%s\" ...\n\n", dat_path.c_str());

    FILE *out = open_table(path, dat_path);
    const columns_span columns = {crv_columns + start, crv_columns + end};
    const bool has_title =
        layout == crv_dat_columns || layout == crv_dat_statistics || layout == crv_dat_all;
    const bool has_statistics = layout == crv_dat_statistics || layout == crv_dat_all;
    const bool has_values =
        layout == crv_dat_columns || layout == crv_dat_all || layout == crv_dat_values;
    if (has_title) write_title(out, columns[0]);
    if (has_statistics) write_statistics(out, columns);
    if (has_values) write_values(out, columns);
    close_table(out, dat_path);
}
