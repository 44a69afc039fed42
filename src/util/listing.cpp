// util/listing.cpp - runs the listing and removal commands of the system for the list of several
// files.
#include "util/listing.h"

#include "records/settings.h"
#include "system/console.h"
#include "util/listing_system.h"

#include <cerrno>
#include <cstdio>
#include <string>
#include <unistd.h>

static constexpr const char *crv_listing = "crv_temp.tmp";

bool utl_RemoveOldListing(const char *path) { return unlink(path) == 0 || errno == ENOENT; }

utl_line_reader *utl_OpenCrvListing(const char *pattern) {
    const std::string command =
        std::string(utl_system_listing.list) + pattern + utl_system_listing.list_end;
    if (!utl_RemoveOldListing(crv_listing)) return nullptr;
    if (crv_DBG == 34) {
        printf("    _34-i-wri, Writing \"crv_temp.tmp\". \n");
        printf("    _34-i-val command1 = \"%s\" \n", command.c_str());
        printf("    _34-i-val command2 = \"%s\" \n", utl_system_listing.remove);
    }
    utl_RunCommand(command.c_str());
    if (crv_DBG == 34) printf("    _34-i-after system command. \n");
    return utl_OpenReader(crv_listing);
}

void utl_RemoveCrvListing() {
    utl_AllowRemoval(crv_listing);
    utl_RunCommand(utl_system_listing.remove);
}
