// util/file_pickers.cpp - numbered lists for several files (routine 34) and for one (routine 33).
#include "util/file_pickers.h"

#include "records/settings.h"
#include "system/console.h"
#include "system/memory.h"
#include "text/fixed_text.h"
#include "text/line_reader.h"
#include "text/number_reader.h"
#include "util/listing.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

static constexpr size_t listing_limit = 79; // characters of a line, with its line end
static constexpr size_t name_block = 80;    // bytes for a listed name
static constexpr size_t answer_size = 16;   // 15 characters and the zero
static constexpr int status_no_memory = 0;  // of routines 34 and 35
static constexpr int status_failed = 1;     // of routine 33
static constexpr int no_selection = -10;    // printed in the selection line

namespace {

// The error messages of a picker if memory runs out, and its exit status.
struct alloc_messages {
    const char *first_name;
    const char *later_name;
    const char *entry;
    int status;
};

// Files `first` to `last` of a list, counted from 1; `first` is no_selection if none is selected.
struct file_range {
    int first;
    int last;
};

} // namespace

static crv_file *new_file(std::string_view name, size_t block, const char *name_report,
                          const char *entry_report, int status) {
    auto *copy = static_cast<char *>(crv_Calloc(block, 1));
    if (!copy) utl_QuitWithError(name_report, status);
    utl_CopyText(copy, block, name);
    auto *file = static_cast<crv_file *>(crv_Calloc(1, sizeof(crv_file)));
    if (!file) utl_QuitWithError(entry_report, status);
    *file = {nullptr, copy};
    return file;
}

// Removes the last character that was read: the line end, or in a part of an overlong line a
// character of the name.
static std::string_view filename_from(utl_line line) {
    if (line.status == utl_line_status::newline || line.text.empty()) return line.text;
    return line.text.substr(0, line.text.size() - 1);
}

// Reads the names of an open listing and closes it. Ignores an unterminated last line.
static crv_file *read_listing(utl_line_reader *in, const alloc_messages &messages, int *count) {
    crv_file *list = nullptr;
    crv_file **end = &list;
    *count = 0;
    for (;;) {
        const utl_line line = utl_ReadLine(in, listing_limit);
        if (line.status == utl_line_status::unterminated || line.status == utl_line_status::eof)
            break;
        const char *name_report = *count == 0 ? messages.first_name : messages.later_name;
        *end =
            new_file(filename_from(line), name_block, name_report, messages.entry, messages.status);
        end = &(*end)->next;
        ++*count;
    }
    utl_CloseReader(in);
    return list;
}

static void free_list(crv_file *list) {
    while (list) list = crv_FreeFile(list);
}

crv_file *crv_FreeFile(crv_file *file) {
    crv_file *next = file->next;
    free(file->name);
    free(file);
    return next;
}

crv_file *crv_AllocFile(const char *name) {
    const size_t size = strlen(name) + 1;
    crv_file *file = new_file(name, size < 256 ? 256 : size, "    _35-e-malloc", "    _35-e-calloc",
                              status_no_memory);
    if (crv_DBG == 35) printf("    _35-i-val, File %3.0u: %s\n", 1U, file->name);
    return file;
}

// Returns the number of a file. A negative result without a minus sign is an overflow and becomes
// 0.
static int file_number(std::string_view text) {
    const int number = utl_ToInt(text);
    return number < 0 && text.find('-') == text.npos ? 0 : number;
}

// ----- several files

static void print_list(const crv_file *list) {
    unsigned number = 0;
    printf(" \n");
    for (const crv_file *file = list; file; file = file->next)
        printf(" %3.0u --> %s\n", ++number, file->name);
    printf("\n");
    printf("Enter (E) or return to EXIT, (A) all, (n:n) for a range \n");
    printf("Select file(s) to be processed? 1, 2, 3, ...: ");
}

static file_range one_file(std::string_view answer, int count) {
    const int number = file_number(answer);
    if (number > count) {
        printf("%%crv_34-f-fil, Improper file selection, num too high \n");
        return {no_selection, number};
    }
    if (number < 1) {
        printf("%%crv_34-f-fil, Improper file selection, num too low \n");
        return {no_selection, number};
    }
    return {number, number};
}

static file_range several_files(std::string_view answer, size_t colon, int count) {
    const int first = file_number(answer.substr(0, colon));
    const int last = file_number(answer.substr(colon + 1));
    if (first < 1 || first > count || last > count || first > last) {
        printf("%%crv_34-f-fil, Improper specified range \n");
        return {no_selection, last};
    }
    return {first, last};
}

static file_range choose_range(std::string_view answer, int count) {
    const char letter = answer.empty() ? '\0' : answer[0];
    if (letter == '\0' || letter == 'e' || letter == 'E' || letter == 'q' || letter == 'Q')
        printf("%%crv_34-i-fin, Routine exiting. \n");
    if (letter == 'a' || letter == 'A') {
        printf("%%crv_34-i-files, All Files, %d through %d \n", 1, count);
        return {1, count};
    }
    if (!utl_IsDigit(letter)) {
        printf("%%crv_34-f-fil, Improper file selection, choose a numeric \n");
        return {no_selection, -1};
    }
    const size_t colon = answer.find(':');
    return colon == answer.npos ? one_file(answer, count) : several_files(answer, colon, count);
}

// Returns the files of the range and frees the others.
static crv_file *keep_range(crv_file *list, file_range range) {
    crv_file *kept = nullptr;
    crv_file **end = &kept;
    for (int number = 1; list; ++number) {
        if (range.first == no_selection || number < range.first || number > range.last) {
            list = crv_FreeFile(list);
            continue;
        }
        *end = list;
        end = &list->next;
        list = list->next;
        *end = nullptr;
    }
    return kept;
}

crv_file *crv_ListFiles(const char *pattern) {
    static constexpr alloc_messages messages = {"    _34-e-first, malloc", "    _34-e-malloc",
                                                "    _34-e-calloc", status_no_memory};
    utl_line_reader *in = utl_OpenCrvListing(pattern);
    if (!in) {
        utl_ReportError("    _34-e-fopen");
        return nullptr;
    }
    int count = 0;
    crv_file *list = read_listing(in, messages, &count);
    print_list(list);
    utl_RemoveCrvListing();

    char answer[answer_size];
    utl_ReadAnswer(answer, sizeof answer);
    const file_range range = choose_range(answer, count);
    printf("%%crv_34-i-val, Selection = %d through %d \n", range.first, range.last);
    crv_file *kept = keep_range(list, range);
    unsigned number = 0;
    if (crv_DBG == 34)
        for (const crv_file *file = kept; file; file = file->next)
            printf("    _34-i-val, File %3.0u: %s\n", ++number, file->name);
    return kept;
}

// ----- one file

[[noreturn]] static void reject_answer() {
    fprintf(utl_ErrorStream(), "%%utl_33-f-nofil, Improper file selection.\n");
    utl_Fail(status_failed);
}

static crv_file *list_files(const char *pattern, int *count) {
    static constexpr alloc_messages messages = {"    _33-e-first, malloc", "    _33-e-malloc",
                                                "    _33-e-calloc", status_failed};
    utl_line_reader *in = utl_OpenUtlListing(pattern);
    if (!in) utl_QuitWithError("    _33-e-fopen, utl_lstfile()", status_failed);
    return read_listing(in, messages, count);
}

static void print_choices(const crv_file *list) {
    int number = 0;
    printf(" \n");
    for (const crv_file *file = list; file; file = file->next)
        printf("%3.0d --> %s\n", ++number, file->name);
    printf("\n");
    printf("Select file to be processed? 1, 2, 3, ...: ");
}

static void ask_name(std::string *name) {
    char typed[4096];
    printf(" Enter desired file: ");
    utl_ReadAnswer(typed, sizeof typed);
    *name = typed;
}

// Stores the name of file `number` of the list, counted from 1.
static void choose_file(const crv_file *list, int number, int count, std::string *name) {
    if (!list || number < 1 || number > count) reject_answer();
    for (; number > 1 && list->next; --number) list = list->next;
    *name = list->name;
}

// Acts on the answer and returns the result of utl_lstfile.
static int follow_answer(const char *answer, const crv_file *list, int count, bool allow_typing,
                         std::string *name) {
    name->clear();
    if (answer[0] == 'e' || answer[0] == 'E') {
        printf("%%utl_33-i-nofil, No file selected, returning NULL.\n");
        return 0;
    }
    if (answer[0] == '\0' && allow_typing) {
        ask_name(name);
    } else if (answer[0] == '\0') {
        choose_file(list, 1, count, name);
    } else {
        if (!utl_IsDigit(answer[0])) reject_answer();
        choose_file(list, file_number(answer), count, name);
    }
    return 1;
}

int utl_lstfile(const char *pattern, std::string *name, uint32_t allow_typing, int debug_level) {
    if (debug_level == 33) printf("    _33-v-val, file_spec =(%s)\n", pattern);
    int count = 0;
    crv_file *list = list_files(pattern, &count);
    print_choices(list);
    utl_RemoveUtlListing();
    char answer[answer_size];
    utl_ReadAnswer(answer, sizeof answer);
    const int result = follow_answer(answer, list, count, allow_typing != 0, name);
    free_list(list);
    return result;
}
