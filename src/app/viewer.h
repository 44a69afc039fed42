// app/viewer.h - one run of a viewer: a program that reads result files by the options of crv and
// writes what they contain in one form.
#pragma once

#include "records/view.h"

#include <cstdio>

// What distinguishes a viewer from the others.
struct crv_viewer {
    const char *name;          // of the program
    const char *purpose;       // for --help: what it does, an imperative
    const char *example;       // for --help: a command line
    const char *chart_summary; // for --help: what -p does
    const char *default_path;  // of the output; null for standard output
    bool output_needs_name;    // -p without a name is a mistake, not the default path
    int min_series;            // least number of series, X included
    bool draws_pairs;          // a point without X is left out, which a warning tells

    // Writes the view to the stream, whose failures the caller finds. Returns false, after a
    // message, if it cannot be written for another reason.
    bool (*write)(const crv_view &view, FILE *stream);
};

// Routine 06. Does one run and returns its exit status:
//
//   0   the output is complete; also --help, -h and --version
//   1   a file that cannot be read, a missing request, no points, or an output that cannot be
//       written; no output is left, and a file that it would replace is unchanged
//   2   a mistake on the command line, found before any file is read
//
// Some failures of a reader end the program here, with status 1. The arguments are those of crv,
// but each must be an option that matters for a chart, or its value. The result goes to the path of
// -p or the default, everything else to standard error. Never prompts or runs a command.
int crv_RunViewer(int argc, char **argv, const crv_viewer &viewer);
