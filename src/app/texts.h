// app/texts.h - the texts that the program prints about itself.
#pragma once

#include "util/identity.h"

void crv_PrintHelp();
void crv_PrintDebugHelp();
void crv_PrintExamples();
void crv_PrintBugs();

// The status: `program` is the name that the program was called by.
void crv_PrintStatus(const char *program, const utl_build_info &identity);
