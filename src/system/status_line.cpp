// system/status_line.cpp - shows and erases a line by returning to its start, so that it needs no
// escape sequences.
#include "system/status_line.h"

#include "system/terminal.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string>

static constexpr int default_columns = 80; // of a terminal that does not tell its size
static constexpr int max_columns = 500;

static struct {
    size_t columns;                // that are shown, 0 without a line
    char erasing[max_columns + 2]; // return, blanks, return
    size_t length;
} status_line;

int utl_StatusLineColumns() {
    if (!utl_IsTerminal(stderr)) return 0;
    const int columns = utl_ReadTerminalSize(stderr).columns;
    // The last column stays free: some terminals go on to the next line once it is filled.
    return columns > 1 ? std::min(columns - 1, max_columns) : default_columns - 1;
}

static void set_columns(size_t columns) {
    status_line.columns = columns;
    status_line.length = columns + 2;
    std::fill_n(status_line.erasing, status_line.length, ' ');
    status_line.erasing[0] = status_line.erasing[columns + 1] = '\r';
}

void utl_ShowStatusLine(std::string_view text, int columns) {
    if (!utl_IsInForeground()) return;
    const auto filled = static_cast<size_t>(std::clamp(columns, 0, max_columns));
    std::string line = "\r";
    line += text;
    if (filled < status_line.columns) line.append(status_line.columns - filled, ' ');
    fflush(stdout);
    set_columns(std::max(filled, status_line.columns));
    utl_WriteOnInterrupt(status_line.erasing, status_line.length);
    fwrite(line.data(), 1, line.size(), stderr);
}

void utl_EraseStatusLine() {
    if (status_line.columns == 0) return;
    const int error = errno;
    utl_WriteOnInterrupt(nullptr, 0);
    fwrite(status_line.erasing, 1, status_line.length, stderr);
    fflush(stderr);
    status_line.columns = 0;
    errno = error;
}
