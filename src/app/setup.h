// app/setup.h - the order of a run.
#pragma once

// Routine 05. Does one run: sets up settings and records, scans the arguments once from left to
// right, reads every file as soon as its option is reached, and then writes the chart or prints a
// text. Returns only at the plain end of a run. Every other end exits with one of these statuses:
//
//   0  no arguments, a selection after its file, fewer than two columns, the end of columnizing,
//   the
//      conditional value report, a file that cannot be read (except a request file) or written
//   1  a finished chart, a printed text, a request file that cannot be read
void crv_SetUp(int argc, char **argv, char **envp);
