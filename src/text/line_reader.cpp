// text/line_reader.cpp - one block of 256 KiB per file; a line is a view into it. A line that
// continues after the block is moved to its front before the rest is read.
#include "text/line_reader.h"

#include "system/input_file.h"
#include "system/memory.h"
#include "system/status_line.h"
#include "text/line_scan.h"
#include "text/simd.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

static constexpr size_t block_size = 256 * 1024;

// Moves the unread text to the front of the block and reads into the rest of the block, until
// `wanted` characters are present or the file ends.
static void fill_block(utl_line_reader *in, size_t wanted) {
    auto held = static_cast<size_t>(in->block_end - in->next);
    memmove(in->block, in->next, held);
    while (held < wanted && !in->at_file_end) {
        const auto room = static_cast<unsigned>(block_size - held);
        utl_AwaitProgress(&in->progress, in->file);
        const ssize_t got = read(in->file, in->block + held, room);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) in->error = errno;
        if (got <= 0) {
            in->at_file_end = true;
            utl_EraseStatusLine();
        } else {
            held += static_cast<size_t>(got);
            in->bytes_read += static_cast<uint64_t>(got);
            utl_CountProgress(&in->progress, static_cast<uint64_t>(got));
        }
    }
    in->next = in->block;
    in->block_end = in->block + held;
}

// True for a character device that still has data, such as /dev/zero, except a terminal, which its
// user can end.
static bool is_unbounded_device(const utl_line_reader *in) {
    struct stat status = {};
    return !in->at_file_end && fstat(in->file, &status) == 0 && S_ISCHR(status.st_mode) &&
           !isatty(in->file);
}

// Takes over an open file, or -1, whose progress is shown under `name`.
static utl_line_reader *open_reader(int file, const char *name) {
    if (file < 0) return nullptr;

    auto *in = static_cast<utl_line_reader *>(crv_Calloc(1, sizeof(utl_line_reader)));
    auto *block = static_cast<char *>(crv_Calloc(block_size + utl_padding, 1));
    if (in && block) {
        *in = {.file = file,
               .error = 0,
               .at_file_end = false,
               .line_number = 0,
               .lines_ended = 0,
               .bytes_read = 0,
               .next = block,
               .block_end = block,
               .block = block,
               .progress = utl_StartProgress(file, name)};
        fill_block(in, 1); // fails for a directory, which opens like a file
        if (in->error == 0 && is_unbounded_device(in)) in->error = ENOTSUP;
        if (in->error == 0) return in;
        errno = in->error;
    }
    const int error = errno;
    close(file);
    free(block);
    free(in);
    errno = error;
    return nullptr;
}

utl_line_reader *utl_OpenReader(const char *path) { return open_reader(utl_OpenInput(path), path); }

utl_line_reader *utl_OpenStandardReader() {
    return open_reader(utl_OpenStandardInput(), "standard input");
}

// Returns the text of `length` characters at `begin` up to its first NUL.
static std::string_view text_before_nul(const char *begin, size_t length) {
    const void *nul = length > 0 ? memchr(begin, '\0', length) : nullptr;
    return {begin, nul ? static_cast<size_t>(static_cast<const char *>(nul) - begin) : length};
}

// The longest line that fits has one character more than the limit if it ends in CR LF.
static size_t max_raw_length(size_t limit) { return limit + 1; }

// Reads on until the block contains a whole line, if one fits. Returns the number of characters
// present.
static size_t buffer_line(utl_line_reader *in, size_t limit) {
    if (static_cast<size_t>(in->block_end - in->next) < max_raw_length(limit) && !in->at_file_end)
        fill_block(in, max_raw_length(limit));
    return static_cast<size_t>(in->block_end - in->next);
}

utl_line utl_ReadLine(utl_line_reader *in, size_t limit) {
    const size_t held = buffer_line(in, limit);
    in->line_number = in->lines_ended + 1;
    if (held == 0) return {{}, utl_line_status::eof};

    const char *begin = in->next;
    const utl_line_scan line =
        utl_ScanLine(begin, held < max_raw_length(limit) ? held : max_raw_length(limit));
    size_t length = line.length;
    utl_line_status status = utl_line_status::newline;
    if (line.ended && length > 0 && begin[length - 1] == '\r') --length;
    if (line.ended && length < limit) {
        in->next = begin + line.length + 1;
        ++in->lines_ended;
    } else {
        length = held < limit ? held : limit;
        in->next = begin + length;
        status = length == limit ? utl_line_status::partial : utl_line_status::unterminated;
    }
    return {line.has_lt_or_nul ? text_before_nul(begin, length) : std::string_view(begin, length),
            status, line.has_lt_or_nul};
}

int64_t utl_SkipLines(utl_line_reader *in, size_t limit, int64_t max_lines) {
    int64_t skipped_lines = 0;
    while (skipped_lines < max_lines) {
        const size_t held = buffer_line(in, limit);
        const utl_line_run run =
            utl_ScanLineRun(in->next, held, limit, static_cast<size_t>(max_lines - skipped_lines));
        if (run.lines == 0) break;
        in->next += run.length;
        skipped_lines += static_cast<int64_t>(run.lines);
    }
    in->lines_ended += static_cast<uint64_t>(skipped_lines);
    return skipped_lines;
}

void utl_SkipRest(utl_line_reader *in) {
    while (!in->at_file_end) {
        in->next = in->block_end;
        fill_block(in, 1);
    }
    in->next = in->block_end;
}

void utl_CloseReader(utl_line_reader *in) {
    utl_EraseStatusLine();
    close(in->file);
    free(in->block);
    free(in);
}
