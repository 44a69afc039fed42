// system/command.cpp - shell commands; a file of its own so that a fuzzer can replace it.
#include "system/console.h"

#include "system/status_line.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

// A missing interpreter and a command that fails give the same result.
static bool is_interpreter_missing() {
    if (system(nullptr) != 0) return false;
    errno = ENOENT;
    return true;
}

utl_command_end utl_RunCommand(const char *command) {
    utl_EraseStatusLine();
    fflush(nullptr);
    const int result = system(command);
    if (result == 0) return utl_command_end::succeeded;
    if (result == -1 || is_interpreter_missing()) return utl_command_end::not_started;
    return utl_command_end::failed;
}
