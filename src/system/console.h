// system/console.h - process exit, error messages, prompts and shell commands.
//
// Implemented in console.cpp, exit.cpp, command.cpp and, by system, console_posix.cpp and
// console_win32.cpp.
#pragma once

#include <cstddef>
#include <cstdio>

// Ends the program with `status`. Every end of a run except the return from main goes through here.
[[noreturn]] void utl_Quit(int status);

// Returns standard error after flushing standard output, so that messages keep their order when
// both streams go to one file. Every message on standard error goes through this routine or through
// one of the next two. Leaves errno unchanged.
FILE *utl_ErrorStream();

// Prints `report` and the system's last error on standard error, as perror does.
void utl_ReportError(const char *report);

// Does the same and ends the program with `status`.
[[noreturn]] void utl_QuitWithError(const char *report, int status);

// Reads one line from standard input into `answer`: at most size - 1 characters, without the line
// end. Discards the rest of the line; a line of a million characters ends there. The end of
// standard input gives an empty answer. Flushes standard output first, so that the prompt is shown.
void utl_ReadAnswer(char *answer, size_t size);

// Does the same, but leaves the rest of the line for the next read. Returns true if the line ended.
bool utl_ReadLineChunk(char *answer, size_t size);

// Runs `command` through the command interpreter of the system, after flushing all streams. Returns
// false with errno set if no interpreter could be started; the exit status of the command is
// ignored.
bool utl_RunCommand(const char *command);

// Prints the text file `path` on standard output. Returns false with errno set if it cannot be
// opened; on Windows the command that prints it reports that, and the result is true.
bool utl_PrintFile(const char *path);
