// util/product_log.cpp - appends usage lines and log entries, and prints the log.
#include "util/product_log.h"

#include "system/console.h"
#include "system/file_status.h"
#include "util/identity.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <string>
#include <string_view>

static constexpr int action_show = 0;
static constexpr int action_comment = 1;
static constexpr int action_usage = 100;
static constexpr const char *user_word = "NT_User";
static constexpr size_t max_path_length = 255; // of the invocation path

// Returns the base name of both files, see product_log.h.
static std::string base_name(std::string_view path, std::string_view application) {
    std::string base(path.substr(0, max_path_length));
    const size_t slash = base.rfind('/');
    if (slash != base.npos) base.replace(slash + 1, base.npos, application);
    if (base.starts_with(application) && base.find('/') == base.npos) base = application;
    return base;
}

// Writes the start of a record: date, user, version and "Command = (".
static void write_record_head(FILE *out) {
    const time_t now = time(nullptr);
    const struct tm *local = localtime(&now);
    utl_build_info identity;
    utl_GetBuildInfo(&identity);
    char date[32];
    snprintf(date, sizeof date, "%u-%02u-%02u", static_cast<unsigned>(local->tm_year + 1900),
             static_cast<unsigned>(local->tm_mon + 1), static_cast<unsigned>(local->tm_mday));
    fprintf(out, "%s %-10s %s  Command = (", date, user_word,
            identity.version + utl_what_prefix_length);
}

static bool close_record(FILE *out) {
    const bool written = !ferror(out);
    return fclose(out) == 0 && written;
}

// Returns null with errno set if the file cannot be opened or is a pipe: opening a pipe waits for a
// reader.
static FILE *open_to_append(const std::string &path) {
    if (utl_IsPipe(path.c_str())) {
        errno = ESPIPE;
        return nullptr;
    }
    return fopen(path.c_str(), "a");
}

static int add_usage(const std::string &path, int argc, char *const *argv, const char *comment) {
    FILE *out = open_to_append(path);
    if (!out) return 0;
    write_record_head(out);
    for (int k = 1; k < argc; ++k) fprintf(out, "%s, ", argv[k]);
    if (comment) {
        fprintf(out, ") %s\n", comment);
    } else {
        fprintf(out, ")\n");
    }
    return close_record(out) ? 1 : 0;
}

// Copies typed lines to the log up to an empty line. A line is read in parts of 127 characters,
// each after a prompt of its own; the parts make one line of the file. An empty part at the end of
// a long line does not end the entry.
static void add_comment_lines(FILE *out, const char *application) {
    char line[128];
    bool begins = true;
    for (;;) {
        printf("  %s > ", application);
        const bool ends = utl_ReadLineChunk(line, sizeof line);
        fprintf(out, " > %s%s", line, ends ? "\n" : "");
        if (begins && ends && line[0] == '\0') return;
        begins = ends;
    }
}

static int add_entry(const std::string &path, const char *application) {
    FILE *out = open_to_append(path);
    if (!out) {
        utl_ReportError(" utl_501-e-fopen append, .log");
        return 0;
    }
    fprintf(out, "\n");
    write_record_head(out);
    fprintf(out, "Log Entry)\n");
    printf("\n      Enter comment in the product log, <return> when finished:\n");
    add_comment_lines(out, application);
    if (!close_record(out)) {
        utl_ReportError(" utl_501-e-fwrite, .log");
        return 0;
    }
    printf("%%utl_501-s-fin, Completed entry in log file %s\n", path.c_str());
    return 1;
}

static void show_log(const std::string &path) {
    if (!utl_PrintFile(path.c_str())) utl_ReportError(" utl_501-e-fopen read, .log");
}

int utl_Report(int argc, char *const *argv, const char *application, const char *comment,
               int action, int debug_level) {
    const std::string base = base_name(argc > 0 ? argv[0] : "", application);
    if (debug_level == 501) printf("%%utl_501-v-val, filename = \"%s\"\n", base.c_str());
    switch (action) {
    case action_show: show_log(base + ".log"); return 1;
    case action_comment: return add_entry(base + ".log", application);
    case action_usage: return add_usage(base + ".use", argc, argv, comment);
    default: printf("%%utl_501-w-val, utl_Report() called with invalid action code.\n"); return 0;
    }
}
