// system/console.h - the program's doors to the outside: the end of the run, answers from the user,
// commands to the shell.
#pragma once

#include <cstddef>
#include <cstdio>

// Ends the program with `status`. Every end of a run but the return from main goes through here.
[[noreturn]] void utl_Quit(int status);

// Standard error, with all that was printed so far out before it: the messages keep their order
// when both streams go to one file. Every message for standard error goes through here, or through
// one of the next two.
FILE *utl_ErrorStream();

// Reports the system's last error after the text `report`, as perror does.
void utl_ReportError(const char *report);

// Reports the system's last error after the text `report`, as perror does, and ends the program
// with `status`.
[[noreturn]] void utl_QuitWithError(const char *report, int status);

// Reads one line from standard input into `answer`: at most size - 1 characters, the rest of the
// line is consumed and lost, the line end is not part of it. The end of standard input is an empty
// answer. A line that goes on for a million characters ends there. What was printed so far, the
// prompt included, is on the screen before the program waits.
void utl_ReadAnswer(char *answer, size_t size);

// The same, but the rest of the line is left for the next read. Returns whether the line ended.
bool utl_ReadLineChunk(char *answer, size_t size);

// Runs `command` through the system's command interpreter. What was printed so far is out before it
// starts. Returns false with errno set when no interpreter could be started; how the command itself
// ended does not count.
bool utl_RunCommand(const char *command);
