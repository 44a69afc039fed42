// system/terminal.h - the terminal at a standard stream: its size, colours and character set.
//
// Implemented in terminal_posix.cpp and terminal_win32.cpp.
#pragma once

#include <cstdio>

// Columns and rows of characters; 0 where the system does not know them.
struct utl_terminal_size {
    int columns;
    int rows;
};

// True if the stream leads to a terminal or console.
bool utl_IsTerminal(FILE *stream);

// Returns the size of the terminal at the stream: that of its window, in columns that a line can
// fill without continuing on the next one. Returns {0, 0} if there is none.
utl_terminal_size utl_ReadTerminalSize(FILE *stream);

// True if the terminal at the stream obeys the escape sequences for colours; prepares it for them.
// False if the stream does not lead to a terminal. On POSIX systems, TERM=dumb declares a terminal
// without escape sequences.
bool utl_EnableColors(FILE *stream);

// True if output is read as UTF-8: on POSIX systems by the locale (LC_ALL, LC_CTYPE or LANG, the
// first that is set and not empty), on Windows by the code page of the console.
bool utl_IsOutputUtf8();
