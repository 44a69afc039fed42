// app/viewer_arguments.cpp - the command line of a viewer: each argument is an option or its value.
#include "app/viewer_options.h"
#include "app/viewer_run.h"
#include "readers/selection.h"
#include "system/console.h"
#include "text/fields.h"
#include "text/number_reader.h"
#include "text/utf8.h"

#include <climits>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace {

// State of the scan.
struct scan {
    int argc;
    char **argv;
    const crv_viewer *viewer;
    crv_viewer_arguments *arguments;
    const char *selection; // of the last -r
    int num_files;
    int num_series;
};

} // namespace

static bool is_file_option(crv_option option) {
    return option == crv_option::request_file || option == crv_option::madymo_file ||
           option == crv_option::column_file || option == crv_option::frame_file;
}

bool crv_BeginsWithTime(const char *selection) { return strncmp(selection, "0,", 2) == 0; }

int crv_CountSeries(const crv_viewer_argument &argument, const char *selection, bool is_later) {
    const bool own_time = is_later && crv_BeginsWithTime(selection);
    const int columns =
        argument.option == crv_option::frame_file ? 2 : crv_ParseSel(selection, 0).num_pairs;
    return own_time ? columns - 1 : columns;
}

static bool report_unknown(const scan &state, const char *argument) {
    fprintf(utl_ErrorStream(), "%%crv_06-f-opt, Unknown option \"%s\", see %s --help\n",
            utl_CleanText(argument).c_str(), state.viewer->name);
    return false;
}

static bool report_stray(const scan &state, const char *argument) {
    fprintf(utl_ErrorStream(),
            "%%crv_06-f-arg, \"%s\" is neither an option nor the value of one,"
            " see %s --help\n",
            utl_CleanText(argument).c_str(), state.viewer->name);
    return false;
}

static bool report_foreign(const scan &state, const char *argument) {
    fprintf(utl_ErrorStream(), "%%crv_06-f-opt, Option %s is one of crv, not of %s\n",
            utl_CleanText(argument).c_str(), state.viewer->name);
    return false;
}

static bool report_missing(const crv_viewer_argument &argument, const char *what) {
    fprintf(utl_ErrorStream(), "%%crv_06-f-val, Option %s needs a %s\n",
            utl_CleanText(argument.spelling).c_str(), what);
    return false;
}

// What an option needs, for a message.
static const char *name_of_value(crv_option option) {
    if (is_file_option(option) || option == crv_option::chart) return "file name";
    if (option == crv_option::selection) return "selection";
    if (option == crv_option::title || option == crv_option::subtitle) return "title";
    return "value";
}

// True if an option takes no value that begins with '-'. Unlike in crv, also -r and -p: the option
// that would be swallowed is a mistake of the command line.
static bool is_plain(const crv_option_form &form) {
    return form.value == crv_option_value::plain || form.option == crv_option::selection ||
           form.option == crv_option::chart;
}

// Sets the value of the argument to the next one and goes on to it. Returns false, after a message,
// if there is none although it is needed.
static bool read_value(const scan &state, const crv_option_form &form, int *index,
                       crv_viewer_argument *argument) {
    if (form.value == crv_option_value::none) return true;
    const char *next = *index + 1 < state.argc ? state.argv[*index + 1] : nullptr;
    if (next && is_plain(form) && next[0] == '-') next = nullptr;
    if (next) {
        ++*index;
        argument->value = next;
    }
    const bool needs_text = is_file_option(form.option) || form.option == crv_option::chart;
    if (next ? next[0] != '\0' || !needs_text
             : form.option == crv_option::chart && !state.viewer->output_needs_name)
        return true;
    return report_missing(*argument, name_of_value(form.option));
}

static bool is_identifier(std::string_view text) { return utl_IsWholeNumber(text, UINT32_MAX); }

// True if all pairs are numbers, N or N:N. crv reads other text as 0, which is time, and of a
// larger number the lower 32 bits.
static bool check_pairs(const char *selection) {
    std::string_view rest = selection;
    std::string_view pair;
    while (utl_NextField(&rest, &pair)) {
        const size_t colon = pair.find(':');
        const bool has_item = colon != pair.npos;
        if (is_identifier(pair.substr(0, colon)) &&
            (!has_item || is_identifier(pair.substr(colon + 1))))
            continue;
        fprintf(utl_ErrorStream(),
                "%%crv_06-f-sel, \"%s\" in the selection \"%s\" is not a series, such as 38:3\n",
                utl_CleanText(pair).c_str(), utl_CleanText(selection).c_str());
        return false;
    }
    return true;
}

static bool check_selection(scan *state, const char *selection) {
    if (strchr(selection, '=')) {
        fprintf(utl_ErrorStream(),
                "%%crv_06-f-sel, The condition in \"%s\" is one of crv, not of"
                " %s\n",
                utl_CleanText(selection).c_str(), state->viewer->name);
        return false;
    }
    if (crv_ParseSel(selection, 0).num_pairs == 0) {
        fprintf(utl_ErrorStream(), "%%crv_06-f-sel, The selection \"%s\" is empty\n",
                utl_CleanText(selection).c_str());
        return false;
    }
    if (!check_pairs(selection)) return false;
    state->selection = selection;
    return true;
}

static bool check_file(scan *state, const crv_viewer_argument &argument) {
    const std::string path = utl_CleanText(argument.value);
    if (!state->selection) {
        fprintf(utl_ErrorStream(), "%%crv_06-f-req, No selection (-r) before the file \"%s\"\n",
                path.c_str());
        return false;
    }
    const int count = crv_CountSeries(argument, state->selection, state->num_files > 0);
    if (count == 0) {
        fprintf(utl_ErrorStream(),
                "%%crv_06-f-sel, The selection for \"%s\" is empty but for time\n", path.c_str());
        return false;
    }
    if (count > CRV_MAXCOLS - state->num_series) {
        fprintf(utl_ErrorStream(),
                "%%crv_06-f-col, \"%s\" would need %d series, %d of %d are free\n", path.c_str(),
                count, CRV_MAXCOLS - state->num_series, CRV_MAXCOLS);
        return false;
    }
    ++state->num_files;
    state->num_series += count;
    return true;
}

static bool check_option(scan *state, const crv_viewer_argument &argument) {
    if (is_file_option(argument.option)) return check_file(state, argument);
    switch (argument.option) {
    case crv_option::selection: return check_selection(state, argument.value);
    case crv_option::chart:
        if (argument.value) state->arguments->output_path = argument.value;
        return true;
    case crv_option::help: state->arguments->text = crv_viewer_text::help; return true;
    default: return true;
    }
}

// True if the option is written as in the table. crv ignores what follows a spelling, and with it
// the difference between a misspelled option and another one.
static bool is_whole(const crv_option_form &form, std::string_view name) {
    const std::string_view rest = name.substr(form.spelling.size());
    if (form.rest != crv_option_rest::number) return rest.empty();
    if (form.option == crv_option::y_label && rest.size() > 1) return false; // N is one digit
    return utl_IsWholeNumber(rest, INT_MAX);
}

// Reads the option at `index` and goes on to its value.
static bool read_option(scan *state, int *index) {
    const char *spelling = state->argv[*index];
    const std::string_view name = spelling;
    if (name == "--help" || name == "--version") {
        state->arguments->text =
            name == "--help" ? crv_viewer_text::help : crv_viewer_text::version;
        return true;
    }
    if (name.empty() || name[0] != '-' || name == "-") return report_stray(*state, spelling);
    const crv_option_form *form = crv_FindOption(name);
    if (!form || form->option == crv_option::unknown_file || !is_whole(*form, name))
        return report_unknown(*state, spelling);
    if (!crv_FindViewerOption(form->option)) return report_foreign(*state, spelling);
    crv_viewer_argument argument = {form->option, spelling, nullptr};
    if (!read_value(*state, *form, index, &argument)) return false;
    state->arguments->options.push_back(argument);
    return check_option(state, argument);
}

static bool check_total(const scan &state) {
    if (state.num_files == 0) {
        fprintf(utl_ErrorStream(), "%%crv_06-f-fil, No file is given, see %s --help\n",
                state.viewer->name);
        return false;
    }
    if (state.num_series >= state.viewer->min_series) return true;
    fprintf(utl_ErrorStream(), "%%crv_06-f-sel, The selection is empty but for X\n");
    return false;
}

bool crv_ParseViewerArguments(int argc, char **argv, const crv_viewer &viewer,
                              crv_viewer_arguments *arguments) {
    *arguments = {.options = {}, .output_path = viewer.default_path};
    scan state = {argc, argv, &viewer, arguments, nullptr, 0, 0};
    for (int index = 1; index < argc; ++index) {
        if (!read_option(&state, &index)) return false;
        if (arguments->text != crv_viewer_text::none) return true;
    }
    return check_total(state);
}
