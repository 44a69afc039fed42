// app/texts.h - prints the help, debug help, examples, bug list and status on standard output, and
// ends a run whose result was printed there.
#pragma once

#include "util/identity.h"

void crv_PrintHelp();
void crv_PrintDebugHelp();
void crv_PrintExamples();
void crv_PrintBugs();

// Prints version, build, date, system and limits. `program` is the name that the program was
// started by.
void crv_PrintStatus(const char *program, const utl_build_info &identity);

// Ends a run whose result is a text or value on standard output, by utl_Finish. With conventional
// statuses a closed standard output, where the result is lost, is a failure and is reported.
[[noreturn]] void crv_FinishPrinted(int status);
