// system/output_file.h - output files that appear whole or not at all.
#pragma once

#include <cstdio>
#include <string>

// Flushes and closes the stream. Returns false with errno set if that or any write before failed,
// with the error of the write if errno still has it.
bool utl_CloseStream(FILE *stream);

// An output that is being written. A regular file is written under a temporary name in the
// directory of its own; a pipe or device is written directly.
struct utl_output_file {
    FILE *stream = nullptr;
    std::string path;
    std::string temporary; // empty for a direct output
};

// Opens the output `path` for bytes without any conversion. At most one output may be open. What a
// symbolic link leads to is written, not the link. An existing file stays as it is until the output
// is closed; the new one gets its permissions. Where the system has signals, one that ends the
// program removes the temporary file before; there so does every exit. Returns false with errno set
// if it cannot be written.
//
// Windows differs: the new file has the permissions that its directory gives, a symbolic link is
// itself replaced, a read-only file cannot be written, and errno is EACCES where a call of the
// system failed and not one of the C library. Neither an exit nor Ctrl-C removes the temporary
// file: it stays if the program ends before the output is closed or discarded.
bool utl_OpenOutput(const char *path, utl_output_file *file);

// Closes the output and moves it to its name. Returns false with errno set if that or any write
// before failed; then no part of it is left, and an existing file is unchanged.
bool utl_CloseOutput(utl_output_file *file);

// Closes the output and removes what was written. An existing file is unchanged.
void utl_DiscardOutput(utl_output_file *file);
