// app/file_options.cpp - see file_options.h.
#include "app/file_options.h"

#include "app/not_yet.h"
#include "readers/request_file.h"
#include "readers/selection.h"
#include "records/column.h"
#include "stats/rounding.h"
#include "util/text.h"

#include <cstdio>
#include <cstring>

static constexpr size_t shortest_path = 3; // shorter names read nothing

static constexpr int status_no_request_file = 1;
static constexpr int status_refused = 0;

static void apply_positional_rules(crv_run *run) {
    ++run->files_met;
    if (!run->selection) {
        printf("%%crv_05-f-req, Requests must be specified prior to files.\n");
        utl_Quit(status_refused);
    }
    if (run->files_met > 1 && strncmp(run->selection, "0,", 2) == 0) {
        printf("%%crv_05-i-tim, Redundant time specification ignored.\n");
        run->selection += 2;
    }
}

// The next argument, or the user's pick. Returns false when that is too short to be a name.
static bool choose_file(crv_run *run, int index, const char * /*pattern*/) {
    const char *value = crv_NextValue(run, index);
    if (!value) crv_NotYet("list files to pick from");
    run->file_path = value;
    printf("%%crv_05-i-fil, File to process = \"%s\" \n", run->file_path.c_str());
    return run->file_path.size() >= shortest_path;
}

static void need_slots(const crv_run *run, int wanted) {
    const int free_slots = CRV_MAXCOLS - run->columns_read;
    if (wanted <= free_slots) return;
    fprintf(stderr, "%%crv_05-f-col, \"%s\" would need %d columns, %d of %d are free\n",
            run->file_path.c_str(), wanted, free_slots, CRV_MAXCOLS);
    utl_Quit(status_refused);
}

// The chart shows the ranges of the first two columns.
static void update_chart(crv_run *run) {
    crv_chart *chart = crv_UseChart(run);
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

// Widens the Y range by columns 2 to count - 1. Deliberate: they are counted from slot 0 of the table, so that a second
// file mixes the first file's columns in.
static void widen_y_range(crv_chart *chart, int count) {
    for (int k = 2; k < count && crv_columns[k]; ++k) {
        if (crv_columns[k]->min < chart->yminmax[0]) chart->yminmax[0] = crv_columns[k]->min;
        if (crv_columns[k]->max > chart->yminmax[1]) chart->yminmax[1] = crv_columns[k]->max;
    }
}

static void load_request_file(crv_run *run) {
    need_slots(run, crv_CountSel(run->selection));
    const int count = crv_ReadReq(run->file_path.c_str(), run->selection, run->columns_read);
    if (count < 1) utl_Quit(status_no_request_file);
    run->columns_read = static_cast<uint16_t>(run->columns_read + count);
    update_chart(run);
    widen_y_range(run->chart, count);
    crv_RMinMax(run->chart->xminmax);
    crv_RMinMax(run->chart->yminmax);
}

// -f and -fr
static void take_request_file(crv_run *run, int index) {
    if (!choose_file(run, index, "*.req")) return;
    load_request_file(run);
    if (!run->value.empty()) crv_NotYet("report values");
}

// -fa, -fc, -fd, -fs and their Madymo forms
static void take_columnizing(const crv_run *run, int index) {
    const char *next = crv_NextArgument(run, index);
    if (next && next[0] == '-') {
        fprintf(stderr, "%%crv_05-f-fil, Option %s needs a file name, not \"%s\"\n", run->argv[index], next);
        utl_Quit(status_refused);
    }
    crv_NotYet("columnize files");
}

// -fm and its columnizing forms
static void take_madymo_file(const crv_run *run, int index) {
    switch (run->argv[index][3]) {
    case '\0': crv_NotYet("read Madymo files"); break;
    case 'a':
    case 'c':
    case 'd':
    case 's': take_columnizing(run, index); break;
    default: break;
    }
}

void crv_TakeFileOption(crv_run *run, int index) {
    apply_positional_rules(run);
    switch (run->argv[index][2]) {
    case '\0':
    case 'r': take_request_file(run, index); break;
    case 'g': crv_NotYet("read frame files"); break;
    case 'm': take_madymo_file(run, index); break;
    case 'p': crv_NotYet("read column files"); break;
    case 'a':
    case 'c':
    case 'd':
    case 's': take_columnizing(run, index); break;
    default: break;
    }
}

void crv_ReadPickedRequestFile(crv_run * /*run*/) { crv_NotYet("list files to pick from"); }
