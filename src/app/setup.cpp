// app/setup.cpp - sequence of a run: scan, checks, then a text, a chart or a dump.
#include "app/setup.h"

#include "app/driver.h"
#include "app/file_options.h"
#include "app/options.h"
#include "app/texts.h"
#include "postscript/chart_file.h"
#include "records/column.h"
#include "records/dump.h"
#include "records/settings.h"
#include "system/console.h"
#include "system/file_status.h"

#include <algorithm>
#include <cstdio>

// The chart frame on the page of 792 by 612 points, and the font size of the legend procedure.
static constexpr int frame_left = 135;
static constexpr int frame_bottom = 110;
static constexpr int frame_width = 600;
static constexpr int frame_height = 400;
static constexpr int legend_font_size = 10;

static constexpr int status_text_printed = 1;
static constexpr int status_refused = 0;
static constexpr int status_chart_done = 1; // Deliberate: a finished chart has status 1.

static void use_given_range(const double (&given)[2], double (&range)[2]) {
    if (given[1] > given[0]) std::copy(std::begin(given), std::end(given), range);
}

// Ends the program with status 0 if the chart path is an input file or the file to be pasted: a
// mistake on the command line must not destroy data.
static void refuse_to_overwrite_inputs(const crv_driver *driver) {
    for (const std::string &path : driver->paths_read) {
        if (!utl_IsSameFile(driver->ps_path, path.c_str())) continue;
        fprintf(utl_ErrorStream(),
                "%%crv_05-f-ps , The chart would be written over \"%s\", which was read\n",
                path.c_str());
        utl_Fail(status_refused);
    }
    const char *user_file = driver->chart->story_ts[0];
    if (!utl_IsSameFile(driver->ps_path, user_file)) return;
    fprintf(utl_ErrorStream(),
            "%%crv_05-f-ps , The chart would be written over \"%s\", which is pasted into it\n",
            user_file);
    utl_Fail(status_refused);
}

[[noreturn]] static void draw_chart(crv_driver *driver) {
    crv_chart *chart = crv_RequireChart(driver);
    refuse_to_overwrite_inputs(driver);
    FILE *stream = crv_PlotHead(driver->ps_path, chart);
    crv_PlotTxt(stream, frame_left, frame_bottom, frame_width, frame_height, legend_font_size,
                chart);
    if (chart->story_ts[0][0] != '\0') crv_PlotAppen(stream, chart->story_ts[0], driver->ps_path);
    crv_PlotData(stream, frame_left, frame_bottom, frame_width, frame_height, chart);
    crv_PlotGrid(stream, frame_left, frame_bottom, frame_width, frame_height);
    crv_settings.print_flag = 1;
    crv_PlotEnd(driver->ps_path, stream);
    printf("  \n");
    printf(" %%crv_05-i-fini, ******** voila\n");
    utl_Finish(status_chart_done);
}

static bool is_text_request(int request) {
    return request >= crv_request_help && request <= crv_request_bugs;
}

[[noreturn]] static void print_text(const crv_driver *driver, const utl_build_info &build_info) {
    switch (driver->request) {
    case crv_request_help: crv_PrintHelp(); break;
    case crv_request_status: crv_PrintStatus(driver->argv[0], build_info); break;
    case crv_request_debug_help: crv_PrintDebugHelp(); break;
    case crv_request_examples: crv_PrintExamples(); break;
    default: crv_PrintBugs(); break;
    }
    crv_FinishPrinted(status_text_printed);
}

static void check_data(const crv_driver *driver) {
    const bool needs_data =
        driver->request < crv_request_help || driver->request > crv_request_write;
    if (driver->columns_read >= 2 || !needs_data) return;
    fprintf(utl_ErrorStream(), "%%crv_05-f-dat, Some data Must be selected to continue!\n");
    utl_Fail(0);
}

static void set_up_chart(crv_driver *driver) {
    crv_chart *chart = crv_RequireChart(driver);
    chart->num_curves = static_cast<uint16_t>(driver->columns_read - 1);
    use_given_range(driver->x_range, chart->xminmax);
    use_given_range(driver->y_range, chart->yminmax);
}

static void dump_records(const crv_driver *driver) {
    if (crv_DBG == 86) crv_DumpCols(0, 0, crv_dump_both);
    if (crv_DBG == 82) {
        printf("%%crv_05-v-loc, Dumping chart struct from 05\n");
        if (driver->chart) crv_DumpChts(0);
    }
}

static void trace_scanned_chart(crv_driver *driver) {
    if (crv_DBG != 49) return;
    printf("    _05-v-val, 11111111111111111111 Before DumpChts()\n");
    crv_RequireChart(driver);
    crv_DumpChts(0);
}

static void trace_final_chart() {
    if (crv_DBG != 49) return;
    printf("    _05-v-val, 2222222222222 Before DumpChts() \n");
    crv_DumpChts(0);
}

static void read_missing_file(crv_driver *driver) {
    if (driver->request == crv_request_requests && driver->columns_read < 2)
        crv_ReadPickedRequestFile(driver);
}

static void finish_run(crv_driver *driver, const utl_build_info &build_info) {
    trace_scanned_chart(driver);
    read_missing_file(driver);
    check_data(driver);
    set_up_chart(driver);
    trace_final_chart();
    if (is_text_request(driver->request)) print_text(driver, build_info);
    if (driver->request == crv_request_chart) draw_chart(driver);
    dump_records(driver);
    printf("\n");
}

void crv_SetUp(int argc, char **argv, char ** /*envp*/) {
    crv_driver driver;
    driver.argc = argc;
    driver.argv = argv;
    driver.request = argc - 1;
    crv_settings.time_window[0] = -100.0;
    crv_settings.time_window[1] = 10000.0;
    utl_build_info build_info;
    utl_GetBuildInfo(&build_info);
    if (argc < 2) {
        printf("%%crv_05-f-arg, No arguments specified. Try (crv -h) \n");
        utl_Fail(0);
    }
    driver.chart = crv_AllocCht(0);
    crv_ClearColumns();
    crv_ScanOptions(&driver);
    finish_run(&driver, build_info);
}
