// util/listing.h - listings of the current directory in temporary files, for the file pickers.
//
// An existing file of the temporary name is removed first, so that nothing is written through a
// link. A directory of that name is an error.
#pragma once

#include "text/line_reader.h"

// For the picker of several files (routine 34): runs the listing command of the system, which
// writes the names that match `pattern` to crv_temp.tmp, and opens that file. Returns null with
// errno set if the file cannot be opened. Debug level 34 prints the commands. utl_RemoveCrvListing
// removes the file.
utl_line_reader *utl_OpenCrvListing(const char *pattern);
void utl_RemoveCrvListing();

// For the picker of one file (routine 33): does the same with utl_temp.tmp, without trace lines.
// Names are sorted; hidden files are excluded, directories are included. Windows ignores case and
// lists directories first; other systems sort names by their bytes.
utl_line_reader *utl_OpenUtlListing(const char *pattern);
void utl_RemoveUtlListing();
