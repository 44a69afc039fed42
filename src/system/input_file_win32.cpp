// system/input_file_win32.cpp - input files on Windows, where text mode would drop every CR before
// a line end and end the file at a Ctrl-Z.
#include "system/input_file.h"

#include <fcntl.h>
#include <io.h>

int utl_OpenInput(const char *path) { return open(path, O_RDONLY | O_BINARY | O_NOINHERIT); }

int utl_OpenStandardInput() {
    const int file = dup(0);
    if (file >= 0) setmode(file, O_BINARY);
    return file;
}
