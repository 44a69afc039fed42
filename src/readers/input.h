// readers/input.h - an open result file: path, lines, and the warnings that all readers give.
#pragma once

#include "text/line_reader.h"

struct crv_input {
    const char *path;
    utl_line_reader *lines;
    int routine; // number of the reader in its messages
    bool warned_missing;
};

// Warns on standard error, once per file, that a line has fewer numbers than are read from it; the
// missing ones count as 0.0.
void crv_WarnMissingNumbers(crv_input *in);

// Returns true with errno set if a read failed; the lines then ended early.
bool crv_ReadFailed(const crv_input &in);
