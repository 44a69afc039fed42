// system/input_file.h - opens files for reading as bytes.
#pragma once

// Opens `path` for reading, without any conversion of its bytes; commands that are started do not
// inherit it. Returns the file descriptor, or -1 with errno set.
int utl_OpenInput(const char *path);

// Returns another descriptor of standard input, for reading as bytes, or -1 with errno set.
int utl_OpenStandardInput();
