// system/file_status_win32.cpp - file type by attributes, file identity by volume and file index.
#include "system/file_status.h"

#include <windows.h>

bool utl_IsRegularFile(const char *path) {
    constexpr DWORD not_regular =
        FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DEVICE;
    const DWORD attributes = GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & not_regular) == 0;
}

// Named pipes have a namespace of their own here, which contains no files of users.
bool utl_IsPipe(const char * /*path*/) { return false; }

// Reads volume and file index. Returns false if the file does not exist.
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
