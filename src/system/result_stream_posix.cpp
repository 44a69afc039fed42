// system/result_stream_posix.cpp - duplicates the descriptor of standard output, and replaces it.
#include "system/result_stream.h"

#include "system/stdio_init.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

FILE *utl_SetUpResultStream() {
    // Above the standard descriptors, of which any may be closed.
    const int result = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int error = errno;
    utl_SetUpRuntime();
    if (dup2(STDERR_FILENO, STDOUT_FILENO) < 0) return nullptr;
    errno = error;
    return result < 0 ? nullptr : fdopen(result, "w");
}
