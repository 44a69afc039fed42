// system/same_file.cpp - see same_file.h.
#include "system/same_file.h"

#ifdef _WIN32

#include <windows.h>

// Which file it is, on which disk. Returns false when it is not there.
static bool identify(const char *path, BY_HANDLE_FILE_INFORMATION *identity) {
    constexpr DWORD share_all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    constexpr DWORD allow_directories = FILE_FLAG_BACKUP_SEMANTICS;
    void *file =
        CreateFileA(path, 0, share_all, nullptr, OPEN_EXISTING, allow_directories, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool identified = GetFileInformationByHandle(file, identity) != 0;
    CloseHandle(file);
    return identified;
}

bool utl_IsSameFile(const char *one, const char *other) {
    BY_HANDLE_FILE_INFORMATION a = {};
    BY_HANDLE_FILE_INFORMATION b = {};
    return identify(one, &a) && identify(other, &b) &&
           a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
           a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
}

#else

#include <sys/stat.h>

bool utl_IsSameFile(const char *one, const char *other) {
    struct stat a = {};
    struct stat b = {};
    return stat(one, &a) == 0 && stat(other, &b) == 0 && a.st_dev == b.st_dev &&
           a.st_ino == b.st_ino;
}

#endif
