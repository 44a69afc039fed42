// util/same_file.cpp - see same_file.h.
#include "util/same_file.h"

#include <sys/stat.h>

bool utl_IsSameFile(const char *one, const char *other) {
    struct stat a = {};
    struct stat b = {};
    return stat(one, &a) == 0 && stat(other, &b) == 0 && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}
