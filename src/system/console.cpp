// system/console.cpp - error messages and answers from standard input.
#include "system/console.h"

#include "system/status_line.h"

#include <cerrno>

// A line is read in at most this many chunks of 127 characters, about a million in all: a device
// or program that feeds the input may send no line ends.
static constexpr int max_chunks = 8192;

FILE *utl_ErrorStream() {
    const int error = errno;
    utl_EraseStatusLine();
    fflush(stdout);
    errno = error;
    return stderr;
}

void utl_ReportError(const char *report) {
    utl_ErrorStream();
    perror(report);
}

void utl_QuitWithError(const char *report, int status) {
    utl_ReportError(report);
    utl_Fail(status);
}

// Returns the next character of standard input; skips a CR before a line end.
static int next_character() {
    const int c = getchar();
    if (c != '\r') return c;
    const int after = getchar();
    if (after == '\n') return after;
    ungetc(after, stdin);
    return c;
}

bool utl_ReadLineChunk(char *answer, size_t size) {
    utl_EraseStatusLine();
    fflush(stdout);
    size_t length = 0;
    while (length + 1 < size) {
        const int c = next_character();
        if (c == EOF || c == '\n') {
            answer[length] = '\0';
            return true;
        }
        answer[length++] = static_cast<char>(c);
    }
    answer[length] = '\0';
    return false;
}

void utl_ReadAnswer(char *answer, size_t size) {
    char rest[128];
    bool ended = utl_ReadLineChunk(answer, size);
    for (int chunks = 0; !ended && chunks < max_chunks; ++chunks)
        ended = utl_ReadLineChunk(rest, sizeof rest);
}
