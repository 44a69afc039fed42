// system/exit.cpp - the end of the program, in a file of its own so that a fuzzer can put another
// in its place.
#include "system/console.h"

#include <cstdlib>

void utl_Quit(int status) { exit(status); }
