// util/listing_vms.cpp - listing commands on VMS, a system for which no build exists. The listing
// for one file would be made as on POSIX systems.
#include "util/listing_system.h"

const utl_listing_commands utl_system_listing = {
    .list = "directory/out=crv_temp.tmp/nohead/notrail ",
    .list_end = ";0",
    .remove = "delete crv_temp.tmp;0",
};
