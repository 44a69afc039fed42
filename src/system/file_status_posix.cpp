// system/file_status_posix.cpp - file type by stat, file identity by device and inode number.
#include "system/file_status.h"

#include <sys/stat.h>

bool utl_IsRegularFile(const char *path) {
    struct stat status = {};
    return lstat(path, &status) == 0 && S_ISREG(status.st_mode);
}

bool utl_IsPipe(const char *path) {
    struct stat status = {};
    return stat(path, &status) == 0 && S_ISFIFO(status.st_mode);
}

bool utl_IsSameFile(const char *one, const char *other) {
    struct stat a = {};
    struct stat b = {};
    return stat(one, &a) == 0 && stat(other, &b) == 0 && a.st_dev == b.st_dev &&
           a.st_ino == b.st_ino;
}
