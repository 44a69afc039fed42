// readers/frame_file.cpp - reads a frame file in one pass: dispatches on the letters of each
// directive and reads the lines that follow it.
#include "readers/frame_file.h"

#include "readers/column_builder.h"
#include "readers/input.h"
#include "records/chart.h"
#include "records/column.h"
#include "records/settings.h"
#include "stats/column_stats.h"
#include "stats/rounding.h"
#include "system/arithmetic.h"
#include "system/console.h"
#include "text/fields.h"
#include "text/fixed_text.h"
#include "text/line_reader.h"
#include "text/number_reader.h"

#include <cstdio>

static constexpr int routine = 85;
static constexpr size_t line_limit = 127; // 126 characters and the line end
static constexpr size_t title_length = 80;
static constexpr size_t label_length = 31;
static constexpr size_t numbered_label_length = 32;
static constexpr int min_points = 3;
static constexpr int status_failed = 0;

namespace {

// State of a frame file that is being read.
struct frame_file {
    crv_input in;
    crv_column *columns[2]; // X and Y
    double totals[2];       // sums of their values
    double x_range[2];      // of the file; low above high means not given
    double y_range[2];
    int num_points;       // NUMDATA
    bool is_after_data;   // no directive has come since the last data point
    uint64_t lines_after; // with numbers, which are more than NUMDATA says
};

} // namespace

static void make_columns(frame_file *vdr, int first_slot) {
    for (int k = 0; k < 2; ++k) {
        crv_column *column = crv_AllocColumn(first_slot + k);
        if (!column) utl_QuitWithError("    _85-e-calloc, data", status_failed);
        snprintf(column->colname, sizeof column->colname, "VDR col_%u",
                 static_cast<unsigned>(first_slot + k));
        column->min = 10.0;
        column->max = -10.0;
        vdr->columns[k] = column;
    }
}

static utl_line next_line(const frame_file *vdr) { return utl_ReadLine(vdr->in.lines, line_limit); }

static int next_integer(const frame_file *vdr) { return utl_ToInt(next_line(vdr).text); }

static void read_range(const frame_file *vdr, double (&range)[2]) {
    range[0] = utl_ToDouble(next_line(vdr).text);
    range[1] = utl_ToDouble(next_line(vdr).text);
}

static void read_style(frame_file *vdr) {
    vdr->num_points = next_integer(vdr);
    crv_charts[0]->style = static_cast<uint16_t>(vdr->num_points);
}

static void read_x_label(const frame_file *vdr) {
    crv_CopyLine(vdr->columns[0]->colname, next_line(vdr), label_length);
    utl_CopyText(crv_charts[0]->xaxis_t, vdr->columns[0]->colname);
}

static void read_y_label(const frame_file *vdr, char number) {
    if (number >= '1' && number <= '6') {
        crv_CopyLine(crv_charts[0]->yaxis_ts[number - '0'], next_line(vdr), numbered_label_length);
    } else {
        crv_CopyLine(vdr->columns[1]->colname, next_line(vdr), label_length);
        utl_CopyText(crv_charts[0]->yaxis_ts[0], vdr->columns[1]->colname);
    }
}

// Deliberate: one of the two messages is misspelled.
static void read_x_range(frame_file *vdr) {
    read_range(vdr, vdr->x_range);
    if (vdr->x_range[0] > vdr->x_range[1])
        printf("%ccrv_85-e-ran, X axis range incorectly specified\n", '%');
}

static void read_y_range(frame_file *vdr) {
    read_range(vdr, vdr->y_range);
    if (vdr->y_range[0] > vdr->y_range[1])
        printf("%ccrv_85-e-ran, Y axis range incorrectly specified\n", '%');
}

// Prints a line with its line end. Blanks are trimmed only from a line without one.
static void trace_record(utl_line line) {
    printf("    _85-i-val, vdr_record = \"%.*s%s\"\n", static_cast<int>(line.text.size()),
           line.text.data(), line.status == utl_line_status::newline ? "\n" : "");
}

static void keep_value(frame_file *vdr, int k, double value) {
    crv_column *column = vdr->columns[k];
    crv_CountValue(column);
    vdr->totals[k] = column->val_list ? utl_Add(vdr->totals[k], value) : value;
    crv_UpdateMinMax(column, value, 0, 0.0, 0.0);
    if (!crv_AppendValue(column, value)) utl_QuitWithError("    _85-e-calloc", status_failed);
}

static void read_values(frame_file *vdr, utl_line line) {
    if (crv_DBG == routine) trace_record(line);
    if (line.status != utl_line_status::newline) line.text = utl_TrimEnd(line.text);
    if (crv_DBG == routine) trace_record(line);
    utl_line_fields fields = utl_SplitLine(line.text);
    double numbers[2];
    if (utl_TakeNumbers(&fields, numbers) < 2) crv_WarnMissingNumbers(&vdr->in);
    keep_value(vdr, 0, numbers[0]);
    keep_value(vdr, 1, numbers[1]);
}

static void round_extremes(crv_column *column) {
    double minmax[2] = {column->min, column->max};
    crv_RMinMax(minmax);
    column->min = minmax[0];
    column->max = minmax[1];
}

static bool read_data(frame_file *vdr) {
    if (vdr->num_points < min_points) {
        printf("%%crv_85-f-nopts, VDR NUMDATA incorrectly specified!\n");
        return false;
    }
    for (int point = 0; point < vdr->num_points; ++point) {
        const utl_line line = next_line(vdr);
        if (line.status == utl_line_status::eof) {
            fprintf(utl_ErrorStream(), "%%crv_85-w-cut, \"%s\" ends after %d of %d data points\n",
                    vdr->in.path, point, vdr->num_points);
            break;
        }
        if (line.status == utl_line_status::partial) crv_WarnLongLine(&vdr->in);
        read_values(vdr, line);
    }
    vdr->is_after_data = true;
    round_extremes(vdr->columns[0]);
    round_extremes(vdr->columns[1]);
    return true;
}

// Returns character `at` of the text, or NUL after its end.
static char character(std::string_view text, size_t at) {
    return at < text.size() ? text[at] : '\0';
}

static void read_x_directive(frame_file *vdr, char letter) {
    switch (letter) {
    case 'A': read_x_label(vdr); break;
    case 'R': read_x_range(vdr); break;
    case 'Y': printf("%ccrv_85-i-red, Begin reading file \"%s\" \n", '%', vdr->in.path); break;
    default: break;
    }
}

static void read_y_directive(frame_file *vdr, char letter, char number) {
    switch (letter) {
    case 'A': read_y_label(vdr, number); break;
    case 'R': read_y_range(vdr); break;
    default: break;
    }
}

static bool has_field(std::string_view text) {
    std::string_view field;
    return utl_NextField(&text, &field);
}

static bool read_directives(frame_file *vdr) {
    for (;;) {
        const utl_line line = next_line(vdr);
        if (line.status == utl_line_status::eof) return true;
        if (character(line.text, 0) != '%') {
            if (vdr->is_after_data && has_field(line.text)) ++vdr->lines_after;
            continue;
        }
        vdr->is_after_data = false;
        const char letter = character(line.text, 2);
        const char number = character(line.text, 3);
        switch (character(line.text, 1)) {
        case 'N': vdr->num_points = next_integer(vdr); break;
        case 'S': read_style(vdr); break;
        case 'T': crv_CopyLine(vdr->columns[0]->coltitle, next_line(vdr), title_length); break;
        case 'X': read_x_directive(vdr, letter); break;
        case 'Y': read_y_directive(vdr, letter, number); break;
        case 'D':
            if (!read_data(vdr)) return false;
            break;
        default: break;
        }
    }
}

static void warn_lines_after(const frame_file *vdr) {
    if (vdr->lines_after == 0 || !crv_settings.keeps_all_data) return;
    fprintf(utl_ErrorStream(),
            "%%crv_85-w-mor, \"%s\" has %llu lines after its %d data points, which are left out\n",
            vdr->in.path, static_cast<unsigned long long>(vdr->lines_after), vdr->num_points);
}

static void use_given_range(crv_column *column, const double (&range)[2]) {
    if (!(range[1] > range[0])) return;
    column->min = range[0];
    column->max = range[1];
}

static void list_columns(const frame_file *vdr) {
    for (crv_column *column : vdr->columns) {
        printf("    _85-i-val, ---------------------------- \n");
        printf("    _85-i-val, name = %s, min = %f, max = %f \n", column->colname, column->min,
               column->max);
        crv_ListValues(column, routine);
    }
}

static void set_means(const frame_file *vdr) {
    for (int k = 0; k < 2; ++k)
        vdr->columns[k]->mean = crv_MeanOf(vdr->totals[k], crv_CountOf(vdr->columns[k]));
}

// Reads the whole file. Returns the result of crv_ReadVDR.
static int read_file(frame_file *vdr, int first_slot) {
    make_columns(vdr, first_slot);
    if (!read_directives(vdr)) return 0;
    if (crv_ReadFailed(vdr->in)) {
        utl_QuitWithError("    _85-f-fread", status_failed);
    }
    use_given_range(vdr->columns[0], vdr->x_range);
    use_given_range(vdr->columns[1], vdr->y_range);
    if (crv_DBG == routine) list_columns(vdr);
    set_means(vdr);
    warn_lines_after(vdr);
    crv_WarnWrappedCounts(vdr->in, vdr->columns);
    printf("%ccrv_85-i-dat, Vandor CRV_FRM_FILE data loaded, number of points = %u \n", '%',
           static_cast<unsigned>(vdr->num_points));
    return 2;
}

int crv_ReadVDR(const char *path, int first_slot) {
    if (path[0] == '^') {
        printf("%%crv_85-f-nofile, A VDR file spec must be provided! \n");
        return 0;
    }
    frame_file vdr = {};
    vdr.in = {.path = path, .routine = routine};
    vdr.x_range[0] = vdr.y_range[0] = 10.0;
    vdr.x_range[1] = vdr.y_range[1] = -10.0;
    vdr.in.lines = utl_OpenReader(path);
    if (!vdr.in.lines) utl_QuitWithError("    _85-f-fopen", status_failed);
    const int count = read_file(&vdr, first_slot);
    utl_CloseReader(vdr.in.lines);
    return count;
}
