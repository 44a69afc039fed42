// system/output_file_win32.cpp - output files by a temporary file of the system and a move that
// replaces.
#include "system/output_file.h"

#include <cerrno>
#include <windows.h>

static bool fail_with(int error) {
    errno = error;
    return false;
}

// Returns true if `path` is a device or a pipe, for instance NUL.
static bool is_device(const char *path) {
    constexpr DWORD share_all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    void *file = CreateFileA(path, 0, share_all, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool found = GetFileType(file) != FILE_TYPE_DISK;
    CloseHandle(file);
    return found;
}

static std::string directory_of(const std::string &path) {
    const size_t slash = path.find_last_of("/\\:");
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

bool utl_OpenOutput(const char *path, utl_output_file *file) {
    *file = {};
    file->path = path;
    if (is_device(path)) {
        file->stream = fopen(path, "wb");
        return file->stream != nullptr;
    }
    const DWORD attributes = GetFileAttributesA(path);
    constexpr DWORD not_writable = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & not_writable) != 0)
        return fail_with(EACCES);
    char name[MAX_PATH];
    if (GetTempFileNameA(directory_of(file->path).c_str(), "crv", 0, name) == 0)
        return fail_with(EACCES);
    file->temporary = name;
    file->stream = fopen(name, "wb");
    if (!file->stream) DeleteFileA(name);
    return file->stream != nullptr;
}

bool utl_CloseOutput(utl_output_file *file) {
    const bool written = utl_CloseStream(file->stream);
    if (file->temporary.empty()) return written;
    constexpr DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    if (written && MoveFileExA(file->temporary.c_str(), file->path.c_str(), flags) != 0)
        return true;
    const int error = written ? EACCES : errno;
    DeleteFileA(file->temporary.c_str());
    return fail_with(error);
}

void utl_DiscardOutput(utl_output_file *file) {
    fclose(file->stream);
    if (!file->temporary.empty()) DeleteFileA(file->temporary.c_str());
}
