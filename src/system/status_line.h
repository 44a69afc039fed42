// system/status_line.h - one line on the terminal at standard error that is shown for a while and
// then erased.
//
// Implemented in status_line.cpp and, by system, status_line_posix.cpp and status_line_win32.cpp.
// What is printed while a line may be shown needs an utl_EraseStatusLine before it;
// utl_ErrorStream, utl_RunCommand, utl_ReadLineChunk and utl_Quit contain one.
#pragma once

#include <cstddef>
#include <string_view>

// Returns the number of columns of a status line, or 0 if standard error is not a terminal.
int utl_StatusLineColumns();

// Shows `text`, which fills `columns` columns at most, in place of the line shown before. An
// interrupt of the program erases it. Does nothing while the program runs in the background of its
// terminal.
void utl_ShowStatusLine(std::string_view text, int columns);

// Erases the line; the cursor is then at its start. Does nothing if none is shown. Leaves errno
// unchanged.
void utl_EraseStatusLine();

// ----- by system

// True if the program may write to the terminal at standard error: it is not in the background.
bool utl_IsInForeground();

// Waits until a read from `file` would not block, for `milliseconds` at most. Returns false if it
// still would; on Windows, it returns true at once.
bool utl_AwaitInput(int file, int milliseconds);

// Lets an interrupt, before it ends the program, write `text` to standard error. `text` stays valid
// until the next call; null ends this.
void utl_WriteOnInterrupt(const char *text, size_t length);
