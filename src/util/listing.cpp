// util/listing.cpp - runs the listing and removal commands of the system for the list of several
// files.
#include "util/listing.h"

#include "records/settings.h"
#include "system/console.h"
#include "util/listing_system.h"

#include <cstdio>
#include <string>

static constexpr const char *crv_listing = "crv_temp.tmp";

utl_line_reader *utl_OpenCrvListing(const char *pattern) {
    const utl_listing_commands *commands = utl_GetListingCommands();
    const std::string command = std::string(commands->list) + pattern + commands->list_end;
    if (!utl_RemoveOldListing(crv_listing)) return nullptr;
    if (crv_DBG == 34) {
        printf("    _34-i-wri, Writing \"crv_temp.tmp\". \n");
        printf("    _34-i-val command1 = \"%s\" \n", command.c_str());
        printf("    _34-i-val command2 = \"%s\" \n", commands->remove);
    }
    utl_RunCommand(command.c_str());
    if (crv_DBG == 34) printf("    _34-i-after system command. \n");
    return utl_OpenReader(crv_listing);
}

void utl_RemoveCrvListing() {
    utl_AllowRemoval(crv_listing);
    utl_RunCommand(utl_GetListingCommands()->remove);
}
