// app/file_options.cpp - chooses the files of a file option, reads them, updates the chart ranges,
// and writes the tables.
#include "app/file_options.h"

#include "app/texts.h"
#include "readers/column_file.h"
#include "readers/frame_file.h"
#include "readers/madymo_file.h"
#include "readers/request_file.h"
#include "readers/selection.h"
#include "records/column.h"
#include "records/settings.h"
#include "stats/conditional.h"
#include "stats/dat_file.h"
#include "stats/rounding.h"
#include "system/console.h"
#include "system/file_status.h"
#include "text/fixed_text.h"
#include "text/number_reader.h"
#include "util/file_pickers.h"

#include <climits>
#include <cstdio>
#include <cstring>

static constexpr size_t shortest_path = 3; // Deliberate: shorter names read nothing.

static constexpr const char *request_pattern = "*.req";
static constexpr const char *madymo_pattern = "*.mad";

static constexpr int status_no_request_file = 1;
static constexpr int status_refused = 0; // also of the other readers' files
static constexpr int status_columnized = 0;
static constexpr int status_reported = 0;

static void apply_positional_rules(crv_driver *driver) {
    ++driver->file_option_count;
    if (!driver->selection) {
        printf("%%crv_05-f-req, Requests must be specified prior to files.\n");
        utl_Fail(status_refused);
    }
    if (driver->file_option_count > 1 && strncmp(driver->selection, "0,", 2) == 0) {
        printf("%%crv_05-i-tim, Redundant time specification ignored.\n");
        driver->selection += 2;
    }
}

// The next argument, or the user's pick. Returns false when that is too short to be a name.
static bool choose_file(crv_driver *driver, int index, const char *pattern) {
    const char *value = crv_NextValue(driver, index);
    if (value) {
        driver->file_path = value;
        printf("%%crv_05-i-fil, File to process = \"%s\" \n", driver->file_path.c_str());
    } else {
        utl_lstfile(pattern, &driver->file_path, 0, crv_DBG);
        printf("%%crv_05-i-fil, File = \"%s\" \n", driver->file_path.c_str());
    }
    return driver->file_path.size() >= shortest_path;
}

static void require_free_slots(const crv_driver *driver, int wanted) {
    const int free_slots = CRV_MAXCOLS - driver->columns_read;
    if (wanted <= free_slots) return;
    fprintf(utl_ErrorStream(), "%%crv_05-f-col, \"%s\" would need %d columns, %d of %d are free\n",
            driver->file_path.c_str(), wanted, free_slots, CRV_MAXCOLS);
    utl_Fail(status_refused);
}

// The chart shows the ranges of the first two columns.
static void update_chart(crv_driver *driver) {
    crv_chart *chart = crv_RequireChart(driver);
    const crv_column *x = crv_columns[0];
    const crv_column *y = crv_columns[1];
    if (x) {
        utl_CopyText(chart->minor_t[0], x->coltitle);
        chart->xminmax[0] = x->min;
        chart->xminmax[1] = x->max;
    }
    if (y) {
        chart->yminmax[0] = y->min;
        chart->yminmax[1] = y->max;
    }
}

// Widens the Y range by columns 2 to count - 1. Deliberate: they are counted from slot 0 of the
// table, so that a second file mixes the first file's columns in.
static void widen_y_range(crv_chart *chart, int count) {
    for (int k = 2; k < count && crv_columns[k]; ++k) {
        if (crv_columns[k]->min < chart->yminmax[0]) chart->yminmax[0] = crv_columns[k]->min;
        if (crv_columns[k]->max > chart->yminmax[1]) chart->yminmax[1] = crv_columns[k]->max;
    }
}

static void count_columns(crv_driver *driver, int count) {
    driver->columns_read = static_cast<uint16_t>(driver->columns_read + count);
    driver->paths_read.push_back(driver->file_path);
}

static int read_request_file(crv_driver *driver) {
    const crv_selection selection = crv_ParseSel(driver->selection, driver->columns_read);
    require_free_slots(driver, selection.num_pairs);
    const int count = crv_ReadReq(driver->file_path.c_str(), selection);
    if (count < 1) utl_Fail(status_no_request_file);
    return count;
}

static int read_madymo_file(crv_driver *driver) {
    const crv_selection selection = crv_ParseSel(driver->selection, driver->columns_read);
    require_free_slots(driver, selection.num_pairs);
    const int count = crv_ReadMad(driver->file_path.c_str(), selection);
    if (count < 1) utl_Fail(status_refused);
    return count;
}

static void load_request_file(crv_driver *driver) {
    const int count = read_request_file(driver);
    count_columns(driver, count);
    update_chart(driver);
    widen_y_range(driver->chart, count);
    crv_RMinMax(driver->chart->xminmax);
    crv_RMinMax(driver->chart->yminmax);
}

// Ends the run with the value of one column where another meets the condition of -r.
[[noreturn]] static void report_value(const crv_driver *driver) {
    if (driver->columns_read < 2) {
        fprintf(
            utl_ErrorStream(),
            "%%crv_05-f-val, The value of one request when another is \"%s\" needs two requests\n",
            driver->value.c_str());
        utl_Fail(status_refused);
    }
    switch (crv_ReportValue(driver->value.c_str(), crv_DBG)) {
    case crv_value_report::printed: crv_FinishPrinted(status_reported);
    case crv_value_report::not_reached: utl_FinishUnreached(status_reported);
    case crv_value_report::unknown_word: break;
    }
    if (utl_NoteFailure())
        fprintf(utl_ErrorStream(),
                "%%crv_05-e-val, \"%s\" is not a number, max, min, amax or amin\n",
                driver->value.c_str());
    utl_Fail(status_reported);
}

// -f and -fr
static void handle_request_file(crv_driver *driver, int index) {
    if (!choose_file(driver, index, request_pattern)) return;
    load_request_file(driver);
    if (!driver->value.empty()) report_value(driver);
}

// -fg. Deliberate: with another option after it, it offers request files.
static void handle_frame_file(crv_driver *driver, int index) {
    const char *pattern = crv_NextArgument(driver, index) ? request_pattern : "*.vdr";
    if (!choose_file(driver, index, pattern)) return;
    require_free_slots(driver, 2);
    crv_RequireChart(driver);
    const int count = crv_ReadVDR(driver->file_path.c_str(), driver->columns_read);
    if (count < 1) utl_Fail(status_refused);
    count_columns(driver, count);
    update_chart(driver);
}

// -fm
static void handle_madymo_file(crv_driver *driver, int index) {
    if (!choose_file(driver, index, madymo_pattern)) return;
    count_columns(driver, read_madymo_file(driver));
    update_chart(driver);
}

// -fp and -fpN: labels on line N, data from the next line on.
static void handle_column_file(crv_driver *driver, int index) {
    const char *number = driver->argv[index] + 3;
    const int label_line = number[0] == '\0' ? 1 : utl_ToInt(number);
    if (choose_file(driver, index, "*.pos")) {
        const crv_selection selection = crv_ParseSel(driver->selection, driver->columns_read);
        require_free_slots(driver, selection.num_pairs);
        const int first_line = label_line < INT_MAX ? label_line + 1 : INT_MAX;
        const int count =
            crv_ReadPost(driver->file_path.c_str(), selection, label_line, first_line);
        if (count < 1) utl_Fail(status_refused);
        count_columns(driver, count);
        update_chart(driver);
        snprintf(driver->chart->minor_t[0], sizeof driver->chart->minor_t[0], "filename = %s",
                 driver->file_path.c_str());
    }
    crv_RMinMax(crv_RequireChart(driver)->xminmax);
    crv_RMinMax(driver->chart->yminmax);
}

static uint16_t layout_of(char letter) {
    switch (letter) {
    case 'c': return crv_dat_columns;
    case 's': return crv_dat_statistics;
    case 'a': return crv_dat_all;
    default: return crv_dat_values;
    }
}

// What the columnizing options take their files from.
struct columnized_format {
    const char *pattern;
    int (*read_file)(crv_driver *driver);
};
static constexpr columnized_format columnized_requests = {request_pattern, read_request_file};
static constexpr columnized_format columnized_madymo = {madymo_pattern, read_madymo_file};

// The file that is named, or those that the user picks when the option is the last argument.
static crv_file *choose_files(const crv_driver *driver, int index, const char *pattern) {
    const char *next = crv_NextArgument(driver, index);
    if (!next) return crv_ListFiles(pattern);
    if (next[0] == '-') {
        fprintf(utl_ErrorStream(), "%%crv_05-f-fil, Option %s needs a file name, not \"%s\"\n",
                driver->argv[index], next);
        utl_Fail(status_refused);
    }
    crv_file *file = crv_AllocFile(next);
    printf("%%crv_05-i-fil, File to process = \"%s\" \n", file->name);
    return file;
}

// A slip of the command line must not cost a file that an option before has read.
static void refuse_to_overwrite_inputs(const crv_driver *driver) {
    const std::string dat_path = crv_DatPath(driver->file_path);
    for (const std::string &path : driver->paths_read) {
        if (!utl_IsSameFile(dat_path.c_str(), path.c_str())) continue;
        fprintf(utl_ErrorStream(),
                "%%crv_05-f-wri, The table would be written over \"%s\", which was read\n",
                path.c_str());
        utl_Fail(status_refused);
    }
}

// -fa, -fc, -fd, -fs, and -fma, -fmc, -fmd, -fms: a table for each file. The columns do not count
// as read, so that each file takes the same slots.
[[noreturn]] static void handle_columnizing(crv_driver *driver, int index, char letter,
                                            const columnized_format &format) {
    crv_file *file = choose_files(driver, index, format.pattern);
    if (!file) utl_Fail(status_columnized);
    while (file) {
        driver->file_path = file->name;
        refuse_to_overwrite_inputs(driver);
        const int count = format.read_file(driver);
        crv_WriteCols(driver->file_path.c_str(), 0, static_cast<int16_t>(count), layout_of(letter));
        file = crv_FreeFile(file);
        printf("   \n");
    }
    utl_Finish(status_columnized);
}

void crv_HandleFileOption(crv_driver *driver, int index, crv_option option) {
    apply_positional_rules(driver);
    const char *spelling = driver->argv[index];
    switch (option) {
    case crv_option::request_file: handle_request_file(driver, index); break;
    case crv_option::frame_file: handle_frame_file(driver, index); break;
    case crv_option::madymo_file: handle_madymo_file(driver, index); break;
    case crv_option::column_file: handle_column_file(driver, index); break;
    case crv_option::request_table:
        handle_columnizing(driver, index, spelling[2], columnized_requests);
    case crv_option::madymo_table:
        handle_columnizing(driver, index, spelling[3], columnized_madymo);
    default: break; // -f with a letter of no reader
    }
}

void crv_ReadPickedRequestFile(crv_driver *driver) {
    utl_lstfile(request_pattern, &driver->file_path, 0, crv_DBG);
    load_request_file(driver);
}
