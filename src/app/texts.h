// app/texts.h - prints the help, debug help, examples, bug list and status on standard output.
#pragma once

#include "util/identity.h"

void crv_PrintHelp();
void crv_PrintDebugHelp();
void crv_PrintExamples();
void crv_PrintBugs();

// Prints version, build, date, system and limits. `program` is the name that the program was
// started by.
void crv_PrintStatus(const char *program, const utl_build_info &identity);
