// util/listing_win32.cpp - listings on Windows, both by dir.
#include "system/console.h"
#include "util/listing_system.h"

#include <cerrno>
#include <string>
#include <unistd.h>

static constexpr utl_listing_commands commands = {
    .list = "dir /o /b > crv_temp.tmp ",
    .list_end = "",
    .remove = "del crv_temp.tmp",
};

const utl_listing_commands *utl_GetListingCommands() { return &commands; }

bool utl_RemoveOldListing(const char *path) { return unlink(path) == 0 || errno == ENOENT; }

void utl_AllowRemoval(const char * /*path*/) {}

utl_line_reader *utl_OpenUtlListing(const char *pattern) {
    const std::string command = std::string("dir /o /b > utl_temp.tmp ") + pattern;
    if (!utl_RemoveOldListing("utl_temp.tmp")) return nullptr;
    utl_RunCommand(command.c_str());
    return utl_OpenReader("utl_temp.tmp");
}

void utl_RemoveUtlListing() { utl_RunCommand("del utl_temp.tmp"); }
