// system/command.cpp - shell commands; a file of its own so that a fuzzer can replace it.
#include "system/console.h"

#include <cstdio>
#include <cstdlib>

bool utl_RunCommand(const char *command) {
    fflush(nullptr);
    return system(command) != -1;
}
