// system/file_status.h - file type and identity queries: regular file, pipe, same file.
#pragma once

// True for a regular file; false for directories, symbolic links, devices and missing files.
bool utl_IsRegularFile(const char *path);

// True for a named pipe, also at the end of a symbolic link. Opening one can wait for its other
// end.
bool utl_IsPipe(const char *path);

// True if both paths lead to the same existing file, also through links.
bool utl_IsSameFile(const char *one, const char *other);
