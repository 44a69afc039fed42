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
#include "system/status_line.h"
#include "text/fields.h"
#include "text/fixed_text.h"
#include "text/line_reader.h"

#include <cmath>
#include <cstdio>
#include <iterator>

static constexpr int routine = 85;
static constexpr int status_failed = 0;

namespace {

// State of a frame file that is being read.
struct frame_file {
    crv_input in;
    crv_column *columns[2]; // X and Y
    double totals[2];       // sums of their values
    crv_frame_header header;
    bool is_after_data;   // no directive has come since the last data point
    uint64_t lines_after; // the data points, with fields, which are more than NUMDATA says
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

static void copy_x_label(const frame_file *vdr) {
    if (!vdr->header.x_label.given) return;
    utl_CopyText(vdr->columns[0]->colname, vdr->header.x_label.text);
    utl_CopyText(crv_charts[0]->xaxis_t, vdr->header.x_label.text);
}

static void copy_y_label(const frame_file *vdr) {
    if (!vdr->header.y_label.given) return;
    utl_CopyText(vdr->columns[1]->colname, vdr->header.y_label.text);
    utl_CopyText(crv_charts[0]->yaxis_ts[0], vdr->header.y_label.text);
}

// Copies the texts and the style that the file gives to the columns and to the chart.
static void copy_header(const frame_file *vdr) {
    const crv_frame_header &header = vdr->header;
    if (header.title.given) utl_CopyText(vdr->columns[0]->coltitle, header.title.text);
    copy_x_label(vdr);
    copy_y_label(vdr);
    for (size_t k = 1; k < std::size(header.y_titles); ++k)
        if (header.y_titles[k].given)
            utl_CopyText(crv_charts[0]->yaxis_ts[k], header.y_titles[k].text);
    if (header.has_style) crv_charts[0]->style = header.style;
}

// Deliberate: one of the two messages is misspelled.
static void check_x_range(const frame_file *vdr) {
    if (vdr->header.x_range[0] > vdr->header.x_range[1]) {
        utl_EraseStatusLine();
        printf("%ccrv_85-e-ran, X axis range incorectly specified\n", '%');
    }
}

static void check_y_range(const frame_file *vdr) {
    if (vdr->header.y_range[0] > vdr->header.y_range[1]) {
        utl_EraseStatusLine();
        printf("%ccrv_85-e-ran, Y axis range incorrectly specified\n", '%');
    }
}

// Prints a line with its line end. Blanks are trimmed only from a line without one.
static void trace_record(utl_line line) {
    utl_EraseStatusLine();
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

// Reads X and Y of a data point.
static void read_point(crv_input *in, const utl_line &line, double (&point)[2]) {
    if (crv_DBG == routine) trace_record(line);
    const bool is_complete = line.status == utl_line_status::newline;
    const std::string_view text = is_complete ? line.text : utl_TrimEnd(line.text);
    if (crv_DBG == routine) trace_record({text, line.status});
    utl_line_fields fields = utl_SplitLine(text);
    if (utl_TakeNumbers(&fields, point) < 2) crv_WarnMissingNumbers(in);
}

// Reads the data points that the header announces, until the file ends; `keep` is called for each.
// Returns the number of points read.
template <typename point_keeper>
static int read_points(crv_input *in, const crv_frame_header &header, point_keeper keep) {
    for (int number = 0; number < header.num_points; ++number) {
        const utl_line line = utl_ReadLine(in->lines, crv_frame_line_limit);
        if (line.status == utl_line_status::eof) return number;
        if (line.status == utl_line_status::partial) crv_WarnLongLine(in);
        double point[2];
        read_point(in, line, point);
        keep(point);
    }
    return header.num_points;
}

static void round_extremes(crv_column *column) {
    double minmax[2] = {column->min, column->max};
    crv_RMinMax(minmax);
    column->min = minmax[0];
    column->max = minmax[1];
}

static bool read_data(frame_file *vdr) {
    const int announced = vdr->header.num_points;
    if (announced < crv_frame_min_points) {
        utl_EraseStatusLine();
        printf("%%crv_85-f-nopts, VDR NUMDATA incorrectly specified!\n");
        return false;
    }
    const int found = read_points(&vdr->in, vdr->header, [vdr](const double(&point)[2]) {
        keep_value(vdr, 0, point[0]);
        keep_value(vdr, 1, point[1]);
    });
    if (found < announced)
        fprintf(utl_ErrorStream(), "%%crv_85-w-cut, \"%s\" ends after %d of %d data points\n",
                vdr->in.path, found, announced);
    round_extremes(vdr->columns[0]);
    round_extremes(vdr->columns[1]);
    return true;
}

static bool read_directives(frame_file *vdr) {
    for (;;) {
        const crv_frame_event event = crv_ReadFrameDirective(vdr->in.lines, &vdr->header);
        switch (event) {
        case crv_frame_event::none: break;
        case crv_frame_event::empty: continue;
        case crv_frame_event::text: vdr->lines_after += vdr->is_after_data; continue;
        case crv_frame_event::begin:
            utl_EraseStatusLine();
            printf("%ccrv_85-i-red, Begin reading file \"%s\" \n", '%', vdr->in.path);
            break;
        case crv_frame_event::x_range: check_x_range(vdr); break;
        case crv_frame_event::y_range: check_y_range(vdr); break;
        case crv_frame_event::data:
            if (!read_data(vdr)) return false;
            break;
        case crv_frame_event::end: return true;
        }
        vdr->is_after_data = event == crv_frame_event::data;
    }
}

static void warn_lines_after(const frame_file *vdr) {
    if (vdr->lines_after == 0 || !crv_settings.keeps_all_data) return;
    fprintf(utl_ErrorStream(),
            "%%crv_85-w-mor, \"%s\" has %llu lines after its %d data points, which are left out\n",
            vdr->in.path, static_cast<unsigned long long>(vdr->lines_after),
            vdr->header.num_points);
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
    copy_header(vdr);
    use_given_range(vdr->columns[0], vdr->header.x_range);
    use_given_range(vdr->columns[1], vdr->header.y_range);
    if (crv_DBG == routine) list_columns(vdr);
    set_means(vdr);
    warn_lines_after(vdr);
    crv_WarnWrappedCounts(vdr->in, vdr->columns);
    printf("%ccrv_85-i-dat, Vandor CRV_FRM_FILE data loaded, number of points = %u \n", '%',
           static_cast<unsigned>(vdr->header.num_points));
    return 2;
}

int crv_ReadVDR(const char *path, int first_slot) {
    if (path[0] == '^') {
        printf("%%crv_85-f-nofile, A VDR file spec must be provided! \n");
        return 0;
    }
    frame_file vdr = {};
    vdr.in = {.path = path, .routine = routine};
    vdr.in.lines = utl_OpenReader(path);
    if (!vdr.in.lines) utl_QuitWithError("    _85-f-fopen", status_failed);
    const int count = read_file(&vdr, first_slot);
    utl_CloseReader(vdr.in.lines);
    return count;
}

static void survey_point(crv_frame_survey *survey, const double (&point)[2]) {
    const bool is_first = survey->num_found == 0;
    for (int k = 0; k < 2; ++k) {
        // Of a number and one that is not a number, fmin and fmax return the number.
        double(&extremes)[2] = survey->extremes[k];
        extremes[0] = is_first ? point[k] : std::fmin(extremes[0], point[k]);
        extremes[1] = is_first ? point[k] : std::fmax(extremes[1], point[k]);
    }
    ++survey->num_found;
}

void crv_SurveyVDR(utl_line_reader *lines, crv_frame_survey *survey) {
    crv_input in = {.path = "", .lines = lines, .routine = routine, .is_silent = true};
    for (;;) {
        const crv_frame_event event = crv_ReadFrameDirective(lines, &survey->header);
        if (event == crv_frame_event::end) break;
        if (event != crv_frame_event::data) continue;
        survey->too_few = survey->header.num_points < crv_frame_min_points;
        if (survey->too_few) break;
        ++survey->num_blocks;
        const int found = read_points(&in, survey->header, [survey](const double(&point)[2]) {
            survey_point(survey, point);
        });
        if (found < survey->header.num_points) survey->ends_early = true;
    }
    survey->missing_line = in.missing_line;
}
