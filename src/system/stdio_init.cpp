// system/stdio_init.cpp - see stdio_init.h.
#include "system/stdio_init.h"

#ifdef _WIN32

#include <windows.h>

// The runtime of old versions of the system does not have the switch: it is looked for when the
// program runs.
static void switch_on_count_conversion() {
    const HMODULE runtime = GetModuleHandleA("msvcrt.dll");
    if (!runtime) return;
    const auto found = GetProcAddress(runtime, "_set_printf_count_output");
    if (found) reinterpret_cast<int (*)(int)>(reinterpret_cast<void *>(found))(1);
}

// Lines need nothing: text leaves at once on a console. For files and pipes this runtime has blocks
// only.
void utl_SetUpRuntime() { switch_on_count_conversion(); }

#else

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

static void reopen_closed_std_fds() {
    int file = 0;
    while (file >= 0 && file <= STDERR_FILENO) file = open("/dev/null", O_RDWR);
    if (file > STDERR_FILENO) close(file);
}

// The %n conversion is always on here.
void utl_SetUpRuntime() {
    reopen_closed_std_fds();
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}

#endif
