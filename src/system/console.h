// system/console.h - process exit, error messages, prompts and shell commands.
//
// Implemented in console.cpp, run_status.cpp, exit.cpp, command.cpp and, by system,
// console_posix.cpp and console_win32.cpp.
#pragma once

#include <cstddef>
#include <cstdio>

// Ends the program with `status`. Every end of a run goes through here, and through one of the next
// three routines unless its status is the same in both modes.
[[noreturn]] void utl_Quit(int status);

// The ends of a run. `status` is the traditional exit status, which does not tell success from
// failure. With conventional statuses it is not used: then utl_Finish, for a finished chart, table,
// text or value, ends with 0; utl_FinishUnreached, for a value that is never reached, with 3; and
// utl_Fail, for every failure, with 1. The first two also end with 1 after a noted failure, and if
// standard output could not be written.
[[noreturn]] void utl_Finish(int status);
[[noreturn]] void utl_FinishUnreached(int status);
[[noreturn]] void utl_Fail(int status);

// Makes the statuses conventional until the program ends.
void utl_UseConventionalStatuses();

// Notes a failure after which the run goes on, such as that of the printer command. Returns true if
// statuses are conventional: the failure then decides the status, and the caller gives the reason.
bool utl_NoteFailure();

// Notes that standard output was closed at the start of the run, and tells whether it was. What is
// printed then goes to the null device, without an error.
void utl_NoteClosedOutput();
bool utl_IsOutputClosed();

// Writes what standard output still holds. Returns false if that or an earlier write has failed.
bool utl_FlushOutput();

// Returns standard error after flushing standard output, so that messages keep their order when
// both streams go to one file. Every message on standard error goes through this routine or through
// one of the next two. Leaves errno unchanged.
FILE *utl_ErrorStream();

// Prints `report` and the system's last error on standard error, as perror does.
void utl_ReportError(const char *report);

// Does the same and ends the program by utl_Fail.
[[noreturn]] void utl_QuitWithError(const char *report, int status);

// Reads one line from standard input into `answer`: at most size - 1 characters, without the line
// end. Discards the rest of the line; a line of a million characters ends there. The end of
// standard input gives an empty answer. Flushes standard output first, so that the prompt is shown.
void utl_ReadAnswer(char *answer, size_t size);

// Does the same, but leaves the rest of the line for the next read. Returns true if the line ended.
bool utl_ReadLineChunk(char *answer, size_t size);

enum class utl_command_end {
    succeeded,
    failed,      // a status that is not 0, or a signal
    not_started, // no command interpreter could be started; errno is set
};

// Runs `command` through the command interpreter of the system, after flushing all streams.
utl_command_end utl_RunCommand(const char *command);

// Prints the text file `path` on standard output. Returns false with errno set if it cannot be
// opened; on Windows the command that prints it reports that, and the result is true.
bool utl_PrintFile(const char *path);
