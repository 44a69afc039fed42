// app/setup.h - one run of the program, from its arguments to its exit status.
#pragma once

// Routine 05. Does one run: initialises settings and records, scans the arguments once from left to
// right, reads each file when its option is reached, and then writes the chart or prints a text.
// `envp` is not used. Returns after a run without chart and text; otherwise ends the program with
// one of these statuses:
//
// (traditional ones; console.h has the conventional ones)
//
//   0   no arguments, a selection after its file, fewer than two columns, columnized files, a
//       conditional value report, a file that cannot be written or (except a request file) read
//   1   a finished chart, a printed text, a request file that cannot be read
void crv_SetUp(int argc, char **argv, char **envp);
