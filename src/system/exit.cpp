// system/exit.cpp - process exit; a file of its own so that a fuzzer can replace it.
#include "system/console.h"

#include "system/status_line.h"

#include <cstdlib>

void utl_Quit(int status) {
    utl_EraseStatusLine();
    exit(status);
}
