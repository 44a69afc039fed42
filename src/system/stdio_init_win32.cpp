// system/stdio_init_win32.cpp - standard streams on Windows.
#include "system/stdio_init.h"

#include <windows.h>

// The switch for %n is missing in the runtime of old versions of the system: look it up at run
// time.
static void enable_count_conversion() {
    const HMODULE runtime = GetModuleHandleA("msvcrt.dll");
    if (!runtime) return;
    const auto found = GetProcAddress(runtime, "_set_printf_count_output");
    if (found) reinterpret_cast<int (*)(int)>(reinterpret_cast<void *>(found))(1);
}

// Console output is unbuffered. For files and pipes this runtime has no line buffers.
void utl_SetUpRuntime() { enable_count_conversion(); }
