// util/listing.h - listings of the current directory in temporary files, made by the host.
//
// An existing file of the temporary name is removed first, unless it is a directory: nothing is
// written through a link.
#pragma once

#include "text/line_reader.h"

// The shell commands of a host: the pattern goes between `list` and `list_end`.
struct utl_listing_commands {
    const char *list;
    const char *list_end;
    const char *remove;
};

// Runs the host's listing command, which writes the names that match `pattern` to crv_temp.tmp, and
// opens that file. Returns null with errno set if it cannot be opened. Debug level 34 prints the
// commands.
utl_line_reader *utl_OpenCrvListing(const char *pattern);
void utl_RemoveCrvListing();

// Does the same with utl_temp.tmp. Names are sorted, hidden names left out, directories included.
// Windows sorts regardless of case and lists directories first; other hosts, which have no such
// command, sort names by their bytes.
utl_line_reader *utl_OpenUtlListing(const char *pattern);
void utl_RemoveUtlListing();
