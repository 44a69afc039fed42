// system/command.cpp - commands to the shell, in a file of its own so that a fuzzer can put another
// in its place.
#include "system/console.h"

#include <cstdio>
#include <cstdlib>

bool utl_RunCommand(const char *command) {
    fflush(nullptr);
    return system(command) != -1;
}
