// util/listing.h - listings of the current directory, which the host writes to temporary files.
//
// An existing file of the temporary name is removed first, so that nothing is written through a
// link. A directory of that name is an error.
#pragma once

#include "text/line_reader.h"

// The shell commands of a host: the pattern goes between `list` and `list_end`.
struct utl_listing_commands {
    const char *list;
    const char *list_end;
    const char *remove;
};

// Runs the listing command of the host, which writes the names that match `pattern` to
// crv_temp.tmp, and opens that file. Returns null with errno set if the file cannot be opened.
// Debug level 34 prints the commands. utl_RemoveCrvListing removes the file.
utl_line_reader *utl_OpenCrvListing(const char *pattern);
void utl_RemoveCrvListing();

// Does the same with utl_temp.tmp, without trace lines. Names are sorted; hidden files are
// excluded, directories are included. Windows ignores case and lists directories first; other hosts
// sort names by their bytes.
utl_line_reader *utl_OpenUtlListing(const char *pattern);
void utl_RemoveUtlListing();
