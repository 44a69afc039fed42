// app/info.cpp - one run of crv-info: arguments, files in their order, output.
#include "app/info.h"

#include "system/console.h"
#include "system/output_file.h"
#include "system/result_stream.h"
#include "text/number_reader.h"
#include "text/utf8.h"
#include "util/identity.h"

#include <climits>
#include <cstdio>
#include <iterator>
#include <string_view>

static constexpr int status_done = 0;
static constexpr int status_failed = 1;
static constexpr int status_mistake = 2;

static constexpr const char *help_text[] = {
    "Usage: crv-info [--json | --pairs] [-f | -fm | -fp | -fg] FILE...\n",
    "Print what result files contain, and a command line that charts the first series.\n",
    "\n",
    "  crv-info run1.req\n",
    "\n",
    "The suffix of a name gives its format: .req, .mad, .pos or .vdr. An option gives the format\n",
    "of all files after it. The name - is standard input.\n",
    "\n",
    "  -f, -fr     request files\n",
    "  -fm         Madymo files\n",
    "  -fp         column files with labels on line 1\n",
    "  -fpN        column files with labels on line N, 0 without labels\n",
    "  -fg         frame files\n",
    "  --json      print JSON: an array with one object for each file\n",
    "  --pairs     print the pairs that -r can select, one on a line, with their meaning\n",
    "  -h, --help  help\n",
    "  --version   version\n",
    "  --          all further arguments are files\n",
    "\n",
    "Exit status: 0 done, 1 a file cannot be read, 2 a mistake on the command line.\n",
};

namespace {

enum class info_output : uint8_t { text, json, pairs, help, version };

struct info_run {
    std::vector<crv_info_file> files;
    info_output output = info_output::text;
};

} // namespace

// Sets the format of the files that follow. Returns false if `option` is not a file option.
static bool read_format(std::string_view option, crv_info_file *next) {
    next->label_line = 1;
    if (option == "-f" || option == "-fr") {
        next->format = crv_format::request;
    } else if (option == "-fm") {
        next->format = crv_format::madymo;
    } else if (option == "-fg") {
        next->format = crv_format::frame;
    } else if (option == "-fp") {
        next->format = crv_format::column;
    } else if (option.starts_with("-fp") && utl_IsWholeNumber(option.substr(3), INT_MAX)) {
        next->format = crv_format::column;
        next->label_line = utl_ToInt(option.substr(3));
    } else {
        return false;
    }
    return true;
}

static bool read_output(std::string_view option, info_output *output) {
    if (option == "--help" || option == "-h") {
        *output = info_output::help;
    } else if (option == "--version") {
        *output = info_output::version;
    } else if (option == "--json") {
        *output = info_output::json;
    } else if (option == "--pairs") {
        *output = info_output::pairs;
    } else {
        return false;
    }
    return true;
}

static bool add_file(const std::string &path, crv_info_file file, info_run *run) {
    if (path.empty()) {
        fprintf(utl_ErrorStream(), "%%crv_08-f-fil, A file name is empty\n");
        return false;
    }
    if (path == "-" && file.format == crv_format::unknown) {
        fprintf(utl_ErrorStream(),
                "%%crv_08-f-fmt, Standard input needs its format before it: -f, -fm, -fp or -fg\n");
        return false;
    }
    file.path = path;
    run->files.push_back(file);
    return true;
}

static bool check_outputs(info_output one, info_output other) {
    if (one == info_output::text || one == other) return true;
    fprintf(utl_ErrorStream(), "%%crv_08-f-opt, --json and --pairs cannot be given together\n");
    return false;
}

// Returns false after a mistake, which has been reported. Arguments after --help and --version are
// not looked at.
static bool read_arguments(int argc, char **argv, info_run *run) {
    crv_info_file next;
    bool options_end = false;
    for (int index = 1; index < argc; ++index) {
        const std::string argument = argv[index];
        const bool is_option = !options_end && argument.size() > 1 && argument[0] == '-';
        info_output output = info_output::text;
        if (!is_option) {
            if (!add_file(argument, next, run)) return false;
        } else if (argument == "--") {
            options_end = true;
        } else if (read_output(argument, &output)) {
            const bool is_last = output == info_output::help || output == info_output::version;
            if (!is_last && !check_outputs(run->output, output)) return false;
            run->output = output;
            if (is_last) return true;
        } else if (!read_format(argument, &next)) {
            fprintf(utl_ErrorStream(),
                    "%%crv_08-f-opt, Unknown option \"%s\", see crv-info --help\n",
                    utl_CleanText(argument).c_str());
            return false;
        }
    }
    if (!run->files.empty()) return true;
    fprintf(utl_ErrorStream(), "%%crv_08-f-fil, No file is given, see crv-info --help\n");
    return false;
}

static void print_text(const std::string &text, FILE *result) {
    fwrite(text.data(), 1, text.size(), result);
}

// Reads a file and adds what was asked for. Returns the error.
static std::string describe_file(crv_info *info, info_output output, std::string *text) {
    const bool wants_pairs = output == info_output::pairs;
    std::string error = crv_ReadInfo(info, wants_pairs ? crv_info_header : crv_info_all);
    if (!error.empty()) {
        if (output == info_output::json) *text = crv_InfoErrorJson(info->file, error);
        return error;
    }
    crv_AddNotes(info);
    crv_AddCommand(info);
    switch (output) {
    case info_output::json: *text = crv_InfoJson(*info); break;
    case info_output::pairs: *text = crv_InfoPairs(*info); break;
    default: *text = crv_InfoText(*info); break;
    }
    return error;
}

// Returns the number of files that cannot be read.
static int print_files(const info_run &run, FILE *result) {
    int failures = 0;
    bool printed = false;
    const bool is_json = run.output == info_output::json;
    if (is_json) print_text("[\n", result);
    for (const crv_info_file &file : run.files) {
        crv_info info;
        info.file = file;
        std::string text;
        const std::string error = describe_file(&info, run.output, &text);
        if (!error.empty()) {
            ++failures;
            fprintf(utl_ErrorStream(), "%%crv_08-e-fil, \"%s\" cannot be read: %s\n",
                    utl_CleanText(file.path).c_str(), error.c_str());
        }
        if (text.empty()) continue;
        if (printed && is_json) print_text(",\n", result);
        if (printed && run.output == info_output::text) print_text("\n", result);
        print_text(text, result);
        printed = true;
    }
    if (is_json) print_text("\n]\n", result);
    return failures;
}

// Returns the number of files that cannot be read.
static int print_output(const info_run &run, FILE *result) {
    if (run.output == info_output::help) {
        for (const char *line : help_text) fputs(line, result);
    } else if (run.output == info_output::version) {
        fprintf(result, "crv-info %s\n", utl_ProgramVersion());
    } else {
        return print_files(run, result);
    }
    return 0;
}

static int report_lost_output() {
    fprintf(utl_ErrorStream(), "%%crv_08-e-out, Standard output could not be written\n");
    return status_failed;
}

int crv_RunInfo(int argc, char **argv) {
    FILE *result = utl_SetUpResultStream();
    info_run run;
    if (!read_arguments(argc, argv, &run)) return status_mistake;
    if (!result) return report_lost_output();
    const int failures = print_output(run, result);
    if (!utl_CloseStream(result)) return report_lost_output();
    return failures == 0 ? status_done : status_failed;
}
