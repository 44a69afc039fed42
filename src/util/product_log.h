// util/product_log.h - records of runs and comments in two text files beside the program.
//
// The base name of both is the path that the program was called by, cut to 255 characters, with the
// application's name in place of the last part: /opt/bin/crv.exe gives /opt/bin/crv, crv.exe gives
// crv. A path with backslashes keeps its last part.
#pragma once

// Routine 501. Returns 1 on success and 0 otherwise. By action:
//
//   0     shows the log, base name and ".log"
//   1     adds an entry to the log: comment lines that the user types, up to an empty one
//   100   adds a line to the usage file, base name and ".use": date, version, and the arguments
//   after the program's name,
//         with `comment` behind them unless that is null
//   other complains
//
// A usage file that cannot be written is not reported.
//
// Deliberate: every argument of a usage line has a comma and a blank behind it, the last one too.
int utl_Report(int argc, char *const *argv, const char *application, const char *comment,
               int action, int debug_level);
