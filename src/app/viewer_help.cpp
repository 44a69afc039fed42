// app/viewer_help.cpp - the text of --help, from the tables of options.
#include "app/viewer_options.h"
#include "app/viewer_run.h"

static constexpr int spelling_width = 22;

static void print_row(FILE *stream, const std::string &option, std::string_view summary) {
    fprintf(stream, "  %-*s %.*s\n", spelling_width, option.c_str(),
            static_cast<int>(summary.size()), summary.data());
}

// The form with its value, such as "-ylN label".
static std::string shown_form(const crv_option_form &form, const crv_viewer &viewer) {
    std::string text(form.spelling);
    if (form.rest == crv_option_rest::number) text += "N";
    if (form.option == crv_option::chart) return viewer.output_needs_name ? "-p file" : "-p [file]";
    std::string_view value = form.value_name;
    if (value.starts_with('[')) value = value.substr(1, value.size() - 2);
    return value.empty() ? text : text + " " + std::string(value);
}

static void print_options(const crv_viewer &viewer, FILE *stream) {
    for (const crv_option_form &form : crv_option_forms) {
        const crv_viewer_option *entry = crv_FindViewerOption(form.option);
        if (!entry || entry->effect.empty() || form.summary.empty()) continue;
        const bool is_chart = form.option == crv_option::chart;
        if (is_chart && form.spelling != "-p") continue; // -p1 and -p2 do the same
        print_row(stream, shown_form(form, viewer), is_chart ? viewer.chart_summary : form.summary);
    }
    print_row(stream, "--help", "help");
    print_row(stream, "--version", "version");
}

static void print_ignored_options(FILE *stream) {
    fprintf(stream, "\nAccepted without effect, so that a command line of crv can be used:");
    for (const crv_option_form &form : crv_option_forms) {
        const crv_viewer_option *entry = crv_FindViewerOption(form.option);
        if (!entry || !entry->effect.empty()) continue;
        fprintf(stream, " %.*s", static_cast<int>(form.spelling.size()), form.spelling.data());
    }
    fprintf(stream, "\n");
}

void crv_PrintViewerHelp(const crv_viewer &viewer, FILE *stream) {
    fprintf(stream, "Usage: %s OPTION...\n", viewer.name);
    fprintf(stream, "%s\n\n", viewer.purpose);
    fprintf(stream, "  %s\n\n", viewer.example);
    fprintf(stream, "A selection and a time window are those of the files after them.\n\n");
    print_options(viewer, stream);
    print_ignored_options(stream);
    fprintf(stream, "Exit status: 0 done, 1 nothing written, 2 a mistake on the command line.\n");
}
