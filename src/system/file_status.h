// system/file_status.h - what stands at a path.
#pragma once

// A file with bytes of its own: no folder, no link, no device.
bool utl_IsRegularFile(const char *path);

// A named pipe, also behind a link: opening it could wait for somebody at its other end.
bool utl_IsPipe(const char *path);
