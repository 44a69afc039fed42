// app/setup.h - the order of a run.
#pragma once

// Routine 05. One run: settings and records are set up, the arguments scanned once from left to right, every file read
// at the moment its option is met, and then the chart written or a text printed. Returns at the plain end of a run only;
// other ends leave the program with these statuses:
//
//   0  no arguments, a selection that comes after its file, less than two columns, a file that cannot be read or written
//      (but for request files), the end of columnizing, the conditional value report
//   1  a finished chart, a text printed, a request file that cannot be read
void crv_SetUp(int argc, char **argv, char **envp);
