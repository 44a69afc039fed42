// util/listing.h - listings of the current folder in temporary files, as the host makes them.
//
// What stands where the temporary file goes is removed first, unless it is a folder: nothing is
// written through a link.
#pragma once

#include "text/line_reader.h"

// Has the host's listing command write the names that match `pattern` to crv_temp.tmp, and opens
// that. Returns null with errno set when it cannot be opened. Debug level 34 shows the commands.
utl_line_reader *utl_OpenCrvListing(const char *pattern);
void utl_RemoveCrvListing();

// The same with utl_temp.tmp; names are sorted, hidden ones left out, folders among them. Windows
// sorts regardless of case and puts folders first; elsewhere, where there is no such listing
// command, names are sorted by their bytes.
utl_line_reader *utl_OpenUtlListing(const char *pattern);
void utl_RemoveUtlListing();
