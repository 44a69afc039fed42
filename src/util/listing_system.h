// util/listing_system.h - what a system provides for listings, in its listing_SYSTEM.cpp: commands,
// file operations, and the routines of listing.h for the picker of one file.
#pragma once

#include "util/listing.h"

// The shell commands of a system: the pattern goes between `list` and `list_end`.
struct utl_listing_commands {
    const char *list;
    const char *list_end;
    const char *remove;
};

// Returns the commands of this machine.
const utl_listing_commands *utl_GetListingCommands();

// Changes the file `path` so that the removal command does not ask before it removes it.
void utl_AllowRemoval(const char *path);

// Removes an existing file, link or pipe `path`. Returns true if there is none afterwards,
// otherwise false with errno set. A directory is not removed.
bool utl_RemoveOldListing(const char *path);
