// readers/input.cpp - warnings and errors of an open result file.
#include "readers/input.h"

#include "system/console.h"

#include <cerrno>

void crv_WarnMissingNumbers(crv_input *in) {
    if (in->warned_missing) return;
    in->warned_missing = true;
    fprintf(utl_ErrorStream(),
            "%%crv_%d-w-num, Missing numbers in \"%s\" read as 0.0, first on line %llu\n",
            in->routine, in->path, static_cast<unsigned long long>(in->lines->line_number));
}

bool crv_ReadFailed(const crv_input &in) {
    if (in.lines->error != 0) errno = in.lines->error;
    return in.lines->error != 0;
}
