// text/line_reader.h - reads text files line by line as fgets does, without a copy of the line.
//
// A CR directly before a line end is dropped and does not count. A NUL ends the text of its line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

enum class utl_line_status {
    newline,      // a whole line; its line end is not part of the text
    partial,      // the limit was reached first: the rest of the line comes with the next read
    unterminated, // the file ended before the line did
    eof,          // the file had ended already; the text is empty
};

struct utl_line {
    std::string_view text; // valid until the next read
    utl_line_status status;
    bool has_lt_or_nul = false; // a '<' may be in the text; without the flag there is none
};

// An open file with its one block of text.
struct utl_line_reader {
    int file;
    int error; // errno of a read that failed, 0 while all is well; a failed read ends the file
    bool at_file_end;      // the block holds all that is left
    uint64_t line_number;  // of the line that the last read came from, counted from 1
    uint64_t lines_ended;  // line ends seen
    const char *next;      // first character not yet read
    const char *block_end; // one past the last character in the block
    char *block;
};

// Opens `path` for reading and reads its first block. Returns null with errno set when that fails,
// also for a folder and for a device that may never end. A pipe is waited for until it has a
// writer.
utl_line_reader *utl_OpenReader(const char *path);

// Reads on: at max_lines `limit` characters, the line end counted as one of them, 1 <= limit <=
// 65,536.
utl_line utl_ReadLine(utl_line_reader *in, size_t limit);

// Skips up to `max_lines` lines as if each had been read, and returns how many: whole lines of less
// than `limit` characters without a '<'. It can stop early, and reading goes on with the line that
// it stopped at.
int64_t utl_SkipLines(utl_line_reader *in, size_t limit, int64_t max_lines);

void utl_CloseReader(utl_line_reader *in);
