// util/listing_host.h - what a host provides for listings, one listing_HOST.cpp each.
#pragma once

#include "util/listing.h"

extern const utl_listing_commands utl_host_listing;

// Makes the file `path` removable without a question.
void utl_AllowRemoval(const char *path);

// Removes an old listing, or a link or pipe of its name. Returns false with errno set if it stays.
bool utl_RemoveOldListing(const char *path);
