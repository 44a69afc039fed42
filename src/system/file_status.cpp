// system/file_status.cpp - see file_status.h.
#include "system/file_status.h"

#ifdef _WIN32

#include <windows.h>

bool utl_IsRegularFile(const char *path) {
    constexpr DWORD not_regular =
        FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DEVICE;
    const DWORD attributes = GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & not_regular) == 0;
}

// Pipes have a place of their own here, where no file of a user lies.
bool utl_IsPipe(const char * /*path*/) { return false; }

#else

#include <sys/stat.h>

bool utl_IsRegularFile(const char *path) {
    struct stat status = {};
    return lstat(path, &status) == 0 && S_ISREG(status.st_mode);
}

bool utl_IsPipe(const char *path) {
    struct stat status = {};
    return stat(path, &status) == 0 && S_ISFIFO(status.st_mode);
}

#endif
