// system/command.cpp - shell commands; a file of its own so that a fuzzer can replace it.
#include "system/console.h"

#include "system/status_line.h"

#include <cstdio>
#include <cstdlib>

utl_command_end utl_RunCommand(const char *command) {
    utl_EraseStatusLine();
    fflush(nullptr);
    const int result = system(command);
    if (result == -1) return utl_command_end::not_started;
    return result == 0 ? utl_command_end::succeeded : utl_command_end::failed;
}
