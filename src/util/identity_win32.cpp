// util/identity_win32.cpp - the system text with the version numbers of Windows.
#include "util/identity.h"

#include <cstdio>
#include <cstdlib>

int utl_SystemText(char *buffer, size_t size, int /*debug_level*/) {
    snprintf(buffer, size, "Windows_NT %d.%d os-%d.wi-%d", static_cast<int>(_winmajor),
             static_cast<int>(_winminor), static_cast<int>(_osver), static_cast<int>(_winver));
    return 0;
}
