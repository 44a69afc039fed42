// app/options.cpp - see options.h.
#include "app/options.h"

#include "app/file_options.h"
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

static void take_columnize_flag(const char *option) {
    if (strncmp(option, "-abs", 4) == 0) {
        crv_settings.columnize_flags |= AbsoluteDat;
        printf("\n%%crv_05-i-val, AbsoluteDat flag set");
    } else if (strncmp(option, "-all", 4) == 0) {
        crv_settings.columnize_flags |= StatisticsAll;
        printf("\n%%crv_05-i-val, StatisticsAll flag set");
    }
    fflush(stdout); // these messages end no line, and what goes to standard error next stands behind them
}

// -d
static void take_debug_level(crv_driver *run, int index) {
    printf("%%crv_05-i-VER, Verbose switch active %s\n", run->argv[index]);
    crv_DBG = 1;
    const char *next = crv_NextArgument(run, index);
    if (!next) {
        run->request = crv_request_debug_help;
        return;
    }
    const int level = utl_ToInt(next);
    if (level >= 2 && level <= 999) crv_DBG = level;
    printf("    _05-i-VER, crv_DBG = %d \n", crv_DBG);
}

// -v: as -d, without an upper bound
static void take_verbose_level(crv_driver *run, int index) {
    printf("%%crv_05-i-DBG, Verbose switch active %s\n", run->argv[index]);
    crv_DBG = 1;
    const char *next = crv_NextArgument(run, index);
    if (!next) {
        run->request = crv_request_debug_help;
        return;
    }
    const int level = utl_ToInt(next);
    if (level >= 2) crv_DBG = level;
    printf("    _05-i-DBG, crv_DBG = %d \n", crv_DBG);
}

static void take_init_file(crv_driver *run, int index) {
    const char *next = crv_NextArgument(run, index);
    if (!next) return;
    run->init_path = next;
    printf("%%crv_05-i-ids, Init filename = \"%s\" \n", run->init_path);
}

// -m. Deliberate: nothing but the debug level changes.
static void take_full_screen(const char *option) {
    crv_DBG = 24;
    printf("%%crv_05-i-DBG, Full screen window %s \n", option);
}

static void take_menu_panes(const crv_driver *run, int index) {
    const char *next = crv_NextArgument(run, index);
    if (!next) return;
    const int panes = utl_ToInt(next);
    if (panes >= 0 && panes <= 15) crv_settings.menu_panes = panes;
    printf("%%crv_05-i-mnu, Menu number altered %s \n", next);
}

// -p. Deliberate: any next argument is the chart's name, and the scan sees it again.
static void take_chart(crv_driver *run, int index) {
    const char *option = run->argv[index];
    run->request = crv_request_chart;
    printf("%%crv_05-i-ps , Postscript plotting selected \n");
    if (option[2] == '1') run->plots_per_page = 1;
    if (option[2] == '2') run->plots_per_page = 2;
    if (option[2] != '\0') printf("%%crv_05-i-chr, Plots per page = %d \n", run->plots_per_page);
    const char *next = crv_NextArgument(run, index);
    if (next) run->ps_path = next;
}

// -r. The selection ends at its first '='; what follows is the request value.
static void take_selection(crv_driver *run, int index) {
    run->request = crv_request_requests;
    char *next = crv_NextArgument(run, index);
    if (!next) return;
    run->selection = next;
    char *equals = strchr(next, '=');
    if (equals) {
        *equals = '\0';
        run->value = equals + 1;
        for (char &c : run->value) c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
        printf("%%crv_05-i-ids, Reqval        = \"%s\" \n", run->value.c_str());
    }
    printf("%%crv_05-i-ids, Request ids   = \"%s\" \n", run->selection);
}

// -s0 to -s3; any other -s asks for the status text.
static void take_story(crv_driver *run, int index) {
    const char number = run->argv[index][2];
    if (number < '0' || number > '3') {
        run->request = crv_request_status;
        return;
    }
    const char *value = crv_NextValue(run, index);
    if (!value) return;
    char(&story)[128] = crv_RequireChart(run)->story_ts[number - '0'];
    utl_CopyText(story, value);
    if (number == '0' && crv_DBG == 5) printf("    _05-v-val, Story line 0 = \"%s\" \n", story);
}

static void set_major_title(crv_driver *run, int number, const char *text) {
    char(&title)[128] = crv_RequireChart(run)->major_t[number];
    utl_CopyText(title, text);
    // Deliberate: the words are the same for title 1.
    if (crv_DBG == 5) printf("    _05-v-val, Major title = \"%s\" \n", title);
}

static void ask_major_title(crv_driver *run) {
    char answer[asked_title_length + 1];
    printf("Enter Major title: ");
    utl_ReadAnswer(answer, sizeof answer);
    set_major_title(run, 0, answer);
}

// -t, -t1, -t2 and -tm
static void take_title_or_time(crv_driver *run, int index) {
    const char *value = crv_NextValue(run, index);
    switch (run->argv[index][2]) {
    case '\0':
        if (value) set_major_title(run, 0, value);
        if (!crv_NextArgument(run, index)) ask_major_title(run);
        break;
    case '1':
        if (value) set_major_title(run, 0, value);
        break;
    case '2':
        if (value) set_major_title(run, 1, value);
        break;
    case 'm': crv_SetTimeWindow(crv_NextArgument(run, index)); break;
    default: break;
    }
}

// -u: a line in the usage file. Its result becomes the run request.
static void take_usage(crv_driver *run) {
    run->request = utl_Report(run->argc, run->argv, "crv", nullptr, usage_action, crv_DBG);
}

static void take_file_to_write(crv_driver *run, int index) {
    run->request = crv_request_write;
    const char *value = crv_NextValue(run, index);
    if (value) printf("%%crv_05-i-fil, File to write = \"%s\" \n", value);
}

static void take_x_label(const char *label) {
    if (!label) return;
    if (crv_columns[0]) {
        utl_CopyText(crv_columns[0]->colname, label);
    } else {
        fprintf(utl_ErrorStream(), "%%crv_05-e-lbl, First specify file prior to X label\n");
    }
}

// -x and -xl; both end in a copy of the range for the request file reader.
static void take_x(crv_driver *run, int index) {
    const char *next = crv_NextArgument(run, index);
    if (run->argv[index][2] == 'l') {
        take_x_label(next);
    } else {
        crv_SetXRange(next, run->x_range);
    }
    crv_settings.x_filter[0] = run->x_range[0];
    crv_settings.x_filter[1] = run->x_range[1];
}

// -yl and -yla label column 1, -ylN column N with N of one digit.
static void take_y_label(const char *option, const char *label) {
    if (!label) return;
    const char number = option[3];
    const int column = number == '\0' || number == 'a' ? 1 : utl_ToInt({&number, 1});
    if (crv_columns[column]) {
        utl_CopyText(crv_columns[column]->colname, label);
    } else {
        fprintf(utl_ErrorStream(), "%%crv_05-e-lbl, First specify file prior to Y label\n");
    }
}

static void take_y(crv_driver *run, int index) {
    const char *next = crv_NextArgument(run, index);
    if (run->argv[index][2] == 'l') {
        take_y_label(run->argv[index], next);
    } else {
        crv_SetYRange(next, run->y_range);
    }
}

static void take_option(crv_driver *run, int index) {
    const char *option = run->argv[index];
    switch (option[1]) {
    case 'a': take_columnize_flag(option); break;
    case 'B':
    case 'b': run->request = crv_request_bugs; break;
    case 'd': take_debug_level(run, index); break;
    case 'e': run->request = crv_request_examples; break;
    case 'f': crv_HandleFileOption(run, index); break;
    case 'h': run->request = crv_request_help; break;
    case 'H':
    case '?': run->request = crv_request_debug_help; break;
    case 'i': take_init_file(run, index); break;
    case 'm': take_full_screen(option); break;
    case 'n': take_menu_panes(run, index); break;
    case 'p': take_chart(run, index); break;
    case 'r': take_selection(run, index); break;
    case 's': take_story(run, index); break;
    case 't': take_title_or_time(run, index); break;
    case 'u': take_usage(run); break;
    case 'v': take_verbose_level(run, index); break;
    case 'w': take_file_to_write(run, index); break;
    case 'x': take_x(run, index); break;
    case 'y': take_y(run, index); break;
    default: break;
    }
}

void crv_ScanOptions(crv_driver *run) {
    for (int index = 1; index < run->argc; ++index)
        if (run->argv[index][0] == '-') take_option(run, index);
}
