// util/listing_vms.cpp - the commands for listings on VMS, which is described but not built. The
// listing for the picker of one file is made as on POSIX systems.
#include "util/listing_host.h"

const utl_listing_commands utl_host_listing = {
    .list = "directory/out=crv_temp.tmp/nohead/notrail ",
    .list_end = ";0",
    .remove = "delete crv_temp.tmp;0",
};
