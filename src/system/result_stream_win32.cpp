// system/result_stream_win32.cpp - duplicates the descriptor of standard output in binary mode, and
// replaces it.
#include "system/result_stream.h"

#include "system/stdio_init.h"

#include <fcntl.h>
#include <io.h>

FILE *utl_SetUpResultStream() {
    utl_SetUpRuntime();
    const int result = dup(1);
    if (dup2(2, 1) < 0 || result < 0) return nullptr;
    setmode(result, O_BINARY);
    return fdopen(result, "wb");
}
