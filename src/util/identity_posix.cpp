// util/identity_posix.cpp - the system text without the version numbers of Windows.
#include "util/identity.h"

#include <cstdio>

int utl_SystemText(char *buffer, size_t size, int /*debug_level*/) {
    snprintf(buffer, size, "Windows_NT %d.%d os-%d.wi-%d", 0, 0, 0, 0);
    return 1;
}
