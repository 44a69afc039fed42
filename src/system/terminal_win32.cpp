// system/terminal_win32.cpp - size, colours and character set by the console interface.
#include "system/terminal.h"

#include <io.h>
#include <windows.h>

static HANDLE handle_of(FILE *stream) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
}

// Only a console has a mode; _isatty is true for other character devices, too.
bool utl_IsTerminal(FILE *stream) {
    DWORD mode = 0;
    return GetConsoleMode(handle_of(stream), &mode) != 0;
}

// A console without escape sequences continues on the next line as soon as a line is full, so the
// last column stays free.
utl_terminal_size utl_ReadTerminalSize(FILE *stream) {
    CONSOLE_SCREEN_BUFFER_INFO info = {};
    if (!GetConsoleScreenBufferInfo(handle_of(stream), &info)) return {0, 0};
    const int columns = info.srWindow.Right - info.srWindow.Left + 1;
    return {columns - 1, info.srWindow.Bottom - info.srWindow.Top + 1};
}

// Consoles since Windows 10 obey escape sequences once this mode is set.
bool utl_EnableColors(FILE *stream) {
    constexpr DWORD obeys_sequences = 0x0004; // ENABLE_VIRTUAL_TERMINAL_PROCESSING
    DWORD mode = 0;
    return GetConsoleMode(handle_of(stream), &mode) &&
           SetConsoleMode(handle_of(stream), mode | obeys_sequences);
}

bool utl_IsOutputUtf8() { return GetConsoleOutputCP() == CP_UTF8; }
