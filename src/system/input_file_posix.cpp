// system/input_file_posix.cpp - input files on POSIX systems.
#include "system/input_file.h"

#include <fcntl.h>
#include <unistd.h>

int utl_OpenInput(const char *path) { return open(path, O_RDONLY | O_CLOEXEC); }

int utl_OpenStandardInput() { return fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0); }
