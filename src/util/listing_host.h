// util/listing_host.h - commands and file operations of a host for listings; one listing_HOST.cpp
// each.
#pragma once

#include "util/listing.h"

extern const utl_listing_commands utl_host_listing;

// Changes the file `path` so that the removal command does not ask before it removes it.
void utl_AllowRemoval(const char *path);

// Removes an existing file, link or pipe `path`. Returns true if there is none afterwards,
// otherwise false with errno set.
bool utl_RemoveOldListing(const char *path);
