// system/output_file.cpp - the end of a stream, with the first error that was met.
#include "system/output_file.h"

#include <cerrno>

bool utl_CloseStream(FILE *stream) {
    int error = 0;
    if (ferror(stream)) error = errno != 0 ? errno : EIO;
    if (fflush(stream) != 0 && error == 0) error = errno;
    if (fclose(stream) != 0 && error == 0) error = errno;
    if (error != 0) errno = error;
    return error == 0;
}
