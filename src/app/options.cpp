// app/options.cpp - option scan: one handler for each option that crv_FindOption finds.
#include "app/options.h"

#include "app/file_options.h"
#include "app/option_table.h"
#include "app/ranges.h"
#include "records/column.h"
#include "records/settings.h"
#include "system/console.h"
#include "text/fixed_text.h"
#include "text/number_reader.h"
#include "util/product_log.h"

#include <cctype>
#include <cstdio>
#include <cstring>

static constexpr size_t asked_title_length = 80;
static constexpr int usage_action = 100;

// The messages of -abs and -all end no line: they are flushed so that standard error comes after
// them.
static void add_absolute_extremes() {
    crv_settings.columnize_flags |= AbsoluteDat;
    printf("\n%%crv_05-i-val, AbsoluteDat flag set");
    fflush(stdout);
}

static void add_all_statistics() {
    crv_settings.columnize_flags |= StatisticsAll;
    printf("\n%%crv_05-i-val, StatisticsAll flag set");
    fflush(stdout);
}

static void handle_debug_level(crv_driver *driver, int index) {
    printf("%%crv_05-i-VER, Verbose switch active %s\n", driver->argv[index]);
    crv_DBG = 1;
    const char *next = crv_NextArgument(driver, index);
    if (!next) {
        driver->request = crv_request_debug_help;
        return;
    }
    const int level = utl_ToInt(next);
    if (level >= 2 && level <= 999) crv_DBG = level;
    printf("    _05-i-VER, crv_DBG = %d \n", crv_DBG);
}

static void handle_verbose_level(crv_driver *driver, int index) {
    printf("%%crv_05-i-DBG, Verbose switch active %s\n", driver->argv[index]);
    crv_DBG = 1;
    const char *next = crv_NextArgument(driver, index);
    if (!next) {
        driver->request = crv_request_debug_help;
        return;
    }
    const int level = utl_ToInt(next);
    if (level >= 2) crv_DBG = level;
    printf("    _05-i-DBG, crv_DBG = %d \n", crv_DBG);
}

static void handle_init_file(crv_driver *driver, int index) {
    const char *next = crv_NextArgument(driver, index);
    if (!next) return;
    driver->init_path = next;
    printf("%%crv_05-i-ids, Init filename = \"%s\" \n", driver->init_path);
}

// Deliberate: nothing but the debug level changes.
static void handle_full_screen(const char *option) {
    crv_DBG = 24;
    printf("%%crv_05-i-DBG, Full screen window %s \n", option);
}

static void handle_menu_panes(const crv_driver *driver, int index) {
    const char *next = crv_NextArgument(driver, index);
    if (!next) return;
    const int panes = utl_ToInt(next);
    if (panes >= 0 && panes <= 15) crv_settings.menu_panes = panes;
    printf("%%crv_05-i-mnu, Menu number altered %s \n", next);
}

// Deliberate: any next argument is the chart's name, and the scan sees it again.
static void handle_chart(crv_driver *driver, int index) {
    const char *option = driver->argv[index];
    driver->request = crv_request_chart;
    printf("%%crv_05-i-ps , Postscript plotting selected \n");
    if (option[2] == '1') driver->plots_per_page = 1;
    if (option[2] == '2') driver->plots_per_page = 2;
    if (option[2] != '\0') printf("%%crv_05-i-chr, Plots per page = %d \n", driver->plots_per_page);
    const char *next = crv_NextArgument(driver, index);
    if (next) driver->ps_path = next;
}

// The selection ends at its first '='; what follows is the request value.
static void handle_selection(crv_driver *driver, int index) {
    driver->request = crv_request_requests;
    char *next = crv_NextArgument(driver, index);
    if (!next) return;
    driver->selection = next;
    char *equals = strchr(next, '=');
    if (equals) {
        *equals = '\0';
        driver->value = equals + 1;
        for (char &c : driver->value) c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
        printf("%%crv_05-i-ids, Reqval        = \"%s\" \n", driver->value.c_str());
    }
    printf("%%crv_05-i-ids, Request ids   = \"%s\" \n", driver->selection);
}

static void handle_story(crv_driver *driver, int index) {
    const char number = driver->argv[index][2];
    const char *value = crv_NextValue(driver, index);
    if (!value) return;
    char(&story)[128] = crv_RequireChart(driver)->story_ts[number - '0'];
    utl_CopyText(story, value);
    if (number == '0' && crv_DBG == 5) printf("    _05-v-val, Story line 0 = \"%s\" \n", story);
}

static void set_major_title(crv_driver *driver, int number, const char *text) {
    char(&title)[128] = crv_RequireChart(driver)->major_t[number];
    utl_CopyText(title, text);
    // Deliberate: the words are the same for title 1.
    if (crv_DBG == 5) printf("    _05-v-val, Major title = \"%s\" \n", title);
}

static void prompt_major_title(crv_driver *driver) {
    char answer[asked_title_length + 1];
    printf("Enter Major title: ");
    utl_ReadAnswer(answer, sizeof answer);
    set_major_title(driver, 0, answer);
}

// -t and -t1; only -t prompts.
static void handle_title(crv_driver *driver, int index) {
    const char *value = crv_NextValue(driver, index);
    if (value) set_major_title(driver, 0, value);
    if (driver->argv[index][2] == '\0' && !crv_NextArgument(driver, index))
        prompt_major_title(driver);
}

static void handle_subtitle(crv_driver *driver, int index) {
    const char *value = crv_NextValue(driver, index);
    if (value) set_major_title(driver, 1, value);
}

// The result of the report becomes the run request. A lost line is reported only if it decides the
// status of the run.
static void handle_usage(crv_driver *driver) {
    driver->request = utl_Report(driver->argc, driver->argv, "crv", nullptr, usage_action, crv_DBG);
    if (driver->request != 1 && utl_NoteFailure())
        fprintf(utl_ErrorStream(), "%%crv_05-e-use, The usage file could not be written\n");
}

static void handle_write_file(crv_driver *driver, int index) {
    driver->request = crv_request_write;
    const char *value = crv_NextValue(driver, index);
    if (value) printf("%%crv_05-i-fil, File to write = \"%s\" \n", value);
}

// The request file reader drops points outside the X range; every -x option renews its copy.
static void copy_x_range(const crv_driver *driver) {
    crv_settings.x_filter[0] = driver->x_range[0];
    crv_settings.x_filter[1] = driver->x_range[1];
}

static void handle_x_range(crv_driver *driver, int index) {
    crv_SetXRange(crv_NextArgument(driver, index), driver->x_range);
    copy_x_range(driver);
}

static void handle_x_label(const crv_driver *driver, int index) {
    copy_x_range(driver);
    const char *label = crv_NextArgument(driver, index);
    if (!label) return;
    if (crv_columns[0]) {
        utl_CopyText(crv_columns[0]->colname, label);
    } else {
        fprintf(utl_ErrorStream(), "%%crv_05-e-lbl, First specify file prior to X label\n");
    }
}

// -yl and -yla label column 1, -ylN column N with N of one digit.
static void handle_y_label(const crv_driver *driver, int index) {
    const char *label = crv_NextArgument(driver, index);
    if (!label) return;
    const char number = driver->argv[index][3];
    const int column = number == '\0' || number == 'a' ? 1 : utl_ToInt({&number, 1});
    if (crv_columns[column]) {
        utl_CopyText(crv_columns[column]->colname, label);
    } else {
        fprintf(utl_ErrorStream(), "%%crv_05-e-lbl, First specify file prior to Y label\n");
    }
}

static void handle_option(crv_driver *driver, int index, crv_option option) {
    switch (option) {
    case crv_option::selection: handle_selection(driver, index); break;
    case crv_option::request_file:
    case crv_option::madymo_file:
    case crv_option::column_file:
    case crv_option::frame_file:
    case crv_option::unknown_file:
    case crv_option::request_table:
    case crv_option::madymo_table: crv_HandleFileOption(driver, index, option); break;
    case crv_option::time_window: crv_SetTimeWindow(crv_NextArgument(driver, index)); break;
    case crv_option::absolute_extremes: add_absolute_extremes(); break;
    case crv_option::all_statistics: add_all_statistics(); break;
    case crv_option::chart: handle_chart(driver, index); break;
    case crv_option::x_range: handle_x_range(driver, index); break;
    case crv_option::y_range:
        crv_SetYRange(crv_NextArgument(driver, index), driver->y_range);
        break;
    case crv_option::x_label: handle_x_label(driver, index); break;
    case crv_option::y_label: handle_y_label(driver, index); break;
    case crv_option::title: handle_title(driver, index); break;
    case crv_option::subtitle: handle_subtitle(driver, index); break;
    case crv_option::pasted_file:
    case crv_option::story: handle_story(driver, index); break;
    case crv_option::help: driver->request = crv_request_help; break;
    case crv_option::examples: driver->request = crv_request_examples; break;
    case crv_option::status: driver->request = crv_request_status; break;
    case crv_option::debug_help: driver->request = crv_request_debug_help; break;
    case crv_option::bugs: driver->request = crv_request_bugs; break;
    case crv_option::debug_level: handle_debug_level(driver, index); break;
    case crv_option::verbose_level: handle_verbose_level(driver, index); break;
    case crv_option::full_screen: handle_full_screen(driver->argv[index]); break;
    case crv_option::write_file: handle_write_file(driver, index); break;
    case crv_option::usage: handle_usage(driver); break;
    case crv_option::init_file: handle_init_file(driver, index); break;
    case crv_option::menu_panes: handle_menu_panes(driver, index); break;
    }
}

void crv_ScanOptions(crv_driver *driver) {
    for (int index = 1; index < driver->argc; ++index) {
        if (driver->argv[index][0] != '-') continue;
        if (const crv_option_form *form = crv_FindOption(driver->argv[index]))
            handle_option(driver, index, form->option);
    }
}
