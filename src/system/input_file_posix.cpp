// system/input_file_posix.cpp - input files on POSIX systems.
#include "system/input_file.h"

#include <fcntl.h>

int utl_OpenInput(const char *path) { return open(path, O_RDONLY | O_CLOEXEC); }
