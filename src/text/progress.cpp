// text/progress.cpp - measures the reading of a file and writes the status line about it.
#include "text/progress.h"

#include "system/status_line.h"
#include "text/utf8.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string_view>

#include <sys/stat.h>
#include <unistd.h>

static constexpr int64_t delay = 1000; // ms until the line is shown
static constexpr int64_t period = 100; // ms between renewals
static constexpr int64_t never = std::numeric_limits<int64_t>::max();
static constexpr unsigned char first_wide = 0xe1; // first byte of U+1000 and above in UTF-8

static int64_t time_now() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

utl_progress utl_StartProgress(int file, const char *name) {
    utl_progress progress = {.name = name,
                             .size = 0,
                             .bytes = 0,
                             .start_time = time_now(),
                             .next_time = never,
                             .can_wait = false};
    struct stat status = {};
    static_assert(sizeof status.st_size == 8, "define _FILE_OFFSET_BITS as 64");
    const bool is_regular = fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    if (is_regular) progress.size = static_cast<uint64_t>(status.st_size);
    if (!is_regular && isatty(file)) return progress;
    progress.next_time = progress.start_time + delay;
    progress.can_wait = !is_regular && utl_StatusLineColumns() > 0;
    return progress;
}

// Shows the line, or does not look for a terminal again if there is none.
static void show(utl_progress *progress, int64_t now) {
    const int columns = utl_StatusLineColumns();
    progress->next_time = columns > 0 ? now + period : never;
    if (columns == 0) return;
    int filled = 0;
    const std::string text =
        utl_ProgressText(*progress, now - progress->start_time, columns, &filled);
    utl_ShowStatusLine(text, filled);
}

void utl_AwaitProgress(utl_progress *progress, int file) {
    if (!progress->can_wait) return;
    for (;;) {
        const int64_t now = time_now();
        if (now >= progress->next_time) show(progress, now);
        if (progress->next_time == never) return;
        if (utl_AwaitInput(file, static_cast<int>(progress->next_time - now))) return;
    }
}

void utl_CountProgress(utl_progress *progress, uint64_t bytes) {
    progress->bytes += bytes;
    const int64_t now = time_now();
    if (now >= progress->next_time) show(progress, now);
}

// ----- text

static std::string time_text(double seconds) {
    char text[32];
    if (seconds < 120) {
        snprintf(text, sizeof text, "%.0f s", std::ceil(seconds));
    } else if (seconds < 7200) {
        snprintf(text, sizeof text, "%.0f min", std::ceil(seconds / 60));
    } else {
        snprintf(text, sizeof text, "%.0f h", std::ceil(seconds / 3600));
    }
    return text;
}

static std::string numbers_text(const utl_progress &progress, double seconds) {
    const auto bytes = static_cast<double>(progress.bytes);
    char text[96];
    if (progress.size == 0 || progress.bytes > progress.size) {
        snprintf(text, sizeof text, "%.1f MB", bytes / 1e6);
        return text;
    }
    const auto size = static_cast<double>(progress.size);
    snprintf(text, sizeof text, "%3.0f %%  %.1f MB/s", std::floor(100 * bytes / size),
             bytes / 1e6 / seconds);
    std::string numbers = text;
    if (progress.bytes == 0) return numbers;
    numbers.append("  ").append(time_text(seconds * (size - bytes) / bytes)).append(" left");
    return numbers;
}

static bool is_continuation(char c) { return (static_cast<unsigned char>(c) & 0xc0) == 0x80; }

static int columns_of(std::string_view character) {
    return static_cast<unsigned char>(character[0]) >= first_wide ? 2 : 1;
}

// Returns the longest end of UTF-8 text that fits, and subtracts its columns from *left.
static std::string_view end_that_fits(std::string_view text, int *left) {
    size_t begin = text.size();
    while (begin > 0) {
        size_t at = begin - 1;
        while (at > 0 && is_continuation(text[at])) --at;
        const int columns = columns_of(text.substr(at));
        if (columns > *left) break;
        *left -= columns;
        begin = at;
    }
    return text.substr(begin);
}

std::string utl_ProgressText(const utl_progress &progress, int64_t milliseconds, int columns,
                             int *filled) {
    const double seconds = static_cast<double>(std::max<int64_t>(milliseconds, 1)) / 1000;
    std::string text = numbers_text(progress, seconds).append("  ");
    text.resize(std::min(text.size(), static_cast<size_t>(std::max(columns, 0))));
    int left = columns - static_cast<int>(text.size());
    const std::string name = utl_CleanText(progress.name);
    text += end_that_fits(name, &left);
    *filled = columns - left;
    return text;
}
