// util/listing_vms.cpp - listing commands on VMS, a system for which no build exists. The listing
// for one file would be made as on POSIX systems.
#include "util/listing_system.h"

static constexpr utl_listing_commands commands = {
    .list = "directory/out=crv_temp.tmp/nohead/notrail ",
    .list_end = ";0",
    .remove = "delete crv_temp.tmp;0",
};

const utl_listing_commands *utl_GetListingCommands() { return &commands; }
