// text/line_reader.h - reads text files line by line as fgets does, without copying the line.
//
// A CR directly before a line end is dropped and does not count. A NUL ends the text of its line.
#pragma once

#include "text/progress.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

enum class utl_line_status {
    newline,      // a complete line; the text does not contain its line end
    partial,      // the limit was reached first: the next read returns the rest of the line
    unterminated, // the file ended before the line did
    eof,          // the file had ended before; the text is empty
};

struct utl_line {
    std::string_view text; // valid until the next read
    utl_line_status status;
    bool has_lt_or_nul = false; // if false, the text contains no '<' and was not cut at a NUL
};

// An open file with its one block of text.
struct utl_line_reader {
    int file;
    int error;             // errno of a failed read, 0 without one; a failed read ends the file
    bool at_file_end;      // the block contains all that is left
    uint64_t line_number;  // of the line that the last read came from, counted from 1
    uint64_t lines_ended;  // line ends read so far
    uint64_t bytes_read;   // characters that have come into the block
    const char *next;      // first character not yet read
    const char *block_end; // one past the last character in the block
    char *block;
    utl_progress progress;
};

// Opens `path` for reading and reads its first block. Returns null with errno set if that fails; a
// directory and a device without end fail too. Opening a pipe waits for a writer. Reading shows its
// progress under the name `path`, which must be valid until the reader is closed.
utl_line_reader *utl_OpenReader(const char *path);

// Does the same with standard input.
utl_line_reader *utl_OpenStandardReader();

// Reads at most `limit` characters of the current line, its line end counted as one of them;
// 1 <= limit <= 65,536.
utl_line utl_ReadLine(utl_line_reader *in, size_t limit);

// Skips at most `max_lines` lines and returns the number skipped. Stops before a line that contains
// '<', that has `limit` or more characters, or that is unterminated; it may stop earlier. The next
// read returns the line it stopped at.
int64_t utl_SkipLines(utl_line_reader *in, size_t limit, int64_t max_lines);

// Reads the rest of the file without looking at it. bytes_read is then the size of the file.
void utl_SkipRest(utl_line_reader *in);

void utl_CloseReader(utl_line_reader *in);
