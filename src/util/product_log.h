// util/product_log.h - usage file and product log: text files with records of runs and comments.
//
// The base name of both files is the path that the program was started by, cut to 255 characters,
// with the application name as its last component: /opt/bin/crv.exe gives /opt/bin/crv, crv.exe
// gives crv. A path without '/' that does not begin with the application name is used unchanged,
// also one with backslashes.
#pragma once

// Routine 501. Writes or prints one of the files, by action. Returns 1 on success and 0 otherwise.
//
//   0       prints the log, base name and ".log"
//   1       appends an entry to the log: comment lines that the user types, up to an empty one
//   100     appends a line to the usage file, base name and ".use": date, version, the arguments
//           after the program name, and `comment` unless it is null
//   other   prints a warning
//
// Errors of the log are reported on standard error, those of the usage file are not. Debug level
// 501 prints the base name.
//
// Deliberate: each argument of a usage line is followed by a comma and a blank, also the last one.
int utl_Report(int argc, char *const *argv, const char *application, const char *comment,
               int action, int debug_level);
