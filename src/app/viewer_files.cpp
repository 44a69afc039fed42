// app/viewer_files.cpp - carries out the options of a viewer: reads each file into the column
// table, whose columns then become those of the view.
#include "app/ranges.h"
#include "app/viewer_run.h"
#include "readers/column_file.h"
#include "readers/frame_file.h"
#include "readers/madymo_file.h"
#include "readers/request_file.h"
#include "records/chart.h"
#include "records/range.h"
#include "records/settings.h"
#include "system/console.h"
#include "text/fixed_text.h"
#include "text/number_reader.h"
#include "text/utf8.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <iterator>

namespace {

// The view while it is being filled.
struct filling {
    crv_view *view;
    const char *selection;
    std::vector<crv_column *> series;    // in the order of their numbers; 0 is X of the first file
    std::vector<crv_column *> own_times; // of later files
    std::string file_title;              // of the first file; of a column file, its name
};

} // namespace

// Returns the text without blanks and line ends at both ends.
static std::string_view trim(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const size_t begin = text.find_first_not_of(blanks);
    if (begin == text.npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

// -fp and -fpN: labels on line N, data from the next line on.
static int read_column_file(const crv_viewer_argument &file, const crv_selection &selection) {
    const char *number = file.spelling + 3;
    const int label_line = number[0] == '\0' ? 1 : utl_ToInt(number);
    return crv_ReadPost(file.value, selection, label_line,
                        label_line < INT_MAX ? label_line + 1 : INT_MAX);
}

// The reader of frame files does not name the file before it fails.
static int read_frame_file(const char *path) {
    printf("%%crv_06-i-wor, Reading \"%s\" ...\n", utl_CleanText(path).c_str());
    return crv_ReadVDR(path, 0);
}

// Reads the file into the column table from slot 0. Returns the number of columns, 0 or less after
// a failure.
static int read_columns(const crv_viewer_argument &file, const char *text) {
    crv_ClearColumns();
    const crv_selection selection = crv_ParseSel(text, 0);
    switch (file.option) {
    case crv_option::request_file: return crv_ReadReq(file.value, selection);
    case crv_option::madymo_file: return crv_ReadMad(file.value, selection);
    case crv_option::column_file: return read_column_file(file, selection);
    default: return read_frame_file(file.value);
    }
}

// Items outside the table of request files have a value that no file contains. In Madymo files an
// item is the place of a number on its line.
static void warn_unknown_items(const crv_viewer_argument &file, const char *text) {
    if (file.option != crv_option::request_file) return;
    const crv_selection selection = crv_ParseSel(text, 0);
    for (const crv_reqsel &entry : crv_Entries(selection)) {
        if (entry.item < std::size(crv_request_items)) continue;
        fprintf(utl_ErrorStream(),
                "%%crv_06-w-itm, Request %u of \"%s\" has no item %u, its values are -999.999\n",
                entry.req, utl_CleanText(file.value).c_str(), entry.item);
    }
}

static bool has_points(const crv_viewer_argument &file, int count) {
    for (int k = 0; k < count; ++k) {
        if (crv_columns[k]->val_list) continue;
        fprintf(utl_ErrorStream(), "%%crv_06-e-pts, No points of \"%s\" are selected\n",
                utl_CleanText(file.value).c_str());
        return false;
    }
    return true;
}

// Moves the columns of the table to the view.
static void add_file(const crv_viewer_argument &file, int count, filling *to) {
    const bool is_first = to->view->files.empty();
    const bool has_own_x = is_first || crv_BeginsWithTime(to->selection);
    if (is_first) to->series.push_back(crv_columns[0]);
    if (has_own_x && !is_first) to->own_times.push_back(crv_columns[0]);
    crv_view_file added = {file.value, has_own_x ? crv_columns[0] : to->series[0], has_own_x, {}};
    const int number = static_cast<int>(to->view->files.size());
    for (int k = has_own_x ? 1 : 0; k < count; ++k) {
        to->series.push_back(crv_columns[k]);
        added.columns.push_back(crv_columns[k]);
        to->view->curves.push_back({added.x, crv_columns[k], number});
    }
    to->view->files.push_back(added);
}

static bool read_file(const crv_viewer_argument &file, filling *to) {
    const int count = read_columns(file, to->selection);
    if (count < 1 || !has_points(file, count)) return false;
    warn_unknown_items(file, to->selection);
    add_file(file, count, to);
    if (to->view->files.size() > 1) return true;
    to->file_title = file.option == crv_option::column_file
                         ? std::string("filename = ") + file.value
                         : std::string(trim(to->series[0]->coltitle));
    return true;
}

// Labels the series that the option names. -yl and -yla label series 1.
static void set_label(const crv_viewer_argument &argument, const filling &to) {
    const bool is_x = argument.option == crv_option::x_label;
    const char *number = argument.spelling + 3;
    size_t index = is_x ? 0 : 1;
    if (!is_x && number[0] != '\0' && number[0] != 'a')
        index = static_cast<size_t>(utl_ToInt(number));
    if (index < to.series.size()) {
        utl_CopyText(to.series[index]->colname, argument.value);
    } else {
        fprintf(utl_ErrorStream(), "%%crv_06-e-lbl, No file before option %s has its series\n",
                utl_CleanText(argument.spelling).c_str());
    }
}

// The warning says that the default is used: that is all points. A bound that is not a number,
// which would exclude all points, is treated as low above high.
static void set_time_window(const char *value) {
    crv_SetTimeWindow(value);
    const double(&window)[2] = crv_settings.time_window;
    if (std::isnan(window[0]) || std::isnan(window[1])) crv_ReportImproperTimeWindow();
    if (!(window[0] <= window[1])) crv_settings.time_window_given = false;
}

// Reports a range that no axis can have. Low above high has been reported, and means no range.
static void check_range(const crv_viewer_argument &argument, const double (&range)[2]) {
    if (range[0] > range[1]) return;
    if (std::isfinite(range[0]) && std::isfinite(range[1]) && range[0] < range[1]) return;
    fprintf(utl_ErrorStream(),
            "%%crv_06-w-ran, No axis can have the range \"%s\" of option %s: all is shown\n",
            utl_CleanText(argument.value).c_str(), utl_CleanText(argument.spelling).c_str());
}

static void set_range(const crv_viewer_argument &argument, filling *to) {
    if (!argument.value) return;
    if (argument.option == crv_option::x_range) {
        crv_SetXRange(argument.value, to->view->x_range);
        check_range(argument, to->view->x_range);
    } else {
        crv_SetYRange(argument.value, to->view->y_range);
        check_range(argument, to->view->y_range);
    }
}

static bool carry_out(const crv_viewer_argument &argument, filling *to) {
    switch (argument.option) {
    case crv_option::selection: to->selection = argument.value; break;
    case crv_option::request_file:
    case crv_option::madymo_file:
    case crv_option::column_file:
    case crv_option::frame_file: return read_file(argument, to);
    case crv_option::time_window: set_time_window(argument.value); break;
    case crv_option::x_range:
    case crv_option::y_range: set_range(argument, to); break;
    case crv_option::x_label:
    case crv_option::y_label: set_label(argument, *to); break;
    case crv_option::title: to->view->title = trim(argument.value); break;
    case crv_option::subtitle: to->view->subtitle = trim(argument.value); break;
    default: break; // -p names the output; the rest has no effect on a chart
    }
    return true;
}

static void trim_label(crv_column *column) {
    const std::string label(trim(column->colname));
    utl_CopyText(column->colname, label);
}

// Completes labels and titles. The title of the file is shown once.
static void set_texts(filling *to) {
    for (crv_column *column : to->series) trim_label(column);
    for (crv_column *column : to->own_times) trim_label(column);
    std::string &unset = to->view->title.empty() ? to->view->title : to->view->subtitle;
    if (unset.empty()) unset = to->file_title;
}

bool crv_ReadView(const crv_viewer_arguments &arguments, crv_view *view) {
    crv_settings.keeps_all_data = true;
    filling to = {view, nullptr, {}, {}, {}};
    // The reader of frame files sets the texts of the chart.
    if (!crv_AllocCht(0)) return false;
    for (const crv_viewer_argument &argument : arguments.options)
        if (!carry_out(argument, &to)) return false;
    set_texts(&to);
    return true;
}

void crv_ReportPointsWithoutX(const crv_view &view) {
    for (const crv_view_file &file : view.files) {
        if (file.has_own_x) continue;
        const auto x_points = static_cast<unsigned long long>(file.x->num_values);
        unsigned long long points = 0;
        for (const crv_column *column : file.columns)
            points = std::max<unsigned long long>(points, column->num_values);
        if (points <= x_points) continue;
        fprintf(utl_ErrorStream(),
                "%%crv_06-w-len, \"%s\" has %llu points, but the X of \"%s\" only %llu:"
                " those after it are not drawn\n",
                utl_CleanText(file.path).c_str(), points, utl_CleanText(view.files[0].path).c_str(),
                x_points);
    }
}
