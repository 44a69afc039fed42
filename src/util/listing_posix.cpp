// util/listing_posix.cpp - listings on POSIX systems: /bin/ls, and glob for the list of one file.
#include "util/listing_system.h"

#include <cerrno>
#include <cstdio>
#include <glob.h>
#include <sys/stat.h>
#include <unistd.h>

static constexpr utl_listing_commands usual_commands = {
    .list = "/bin/ls > crv_temp.tmp ",
    .list_end = "",
    .remove = "rm crv_temp.tmp",
};

// NixOS and Guix have ls in another directory.
static constexpr utl_listing_commands commands_without_bin_ls = {
    .list = "ls > crv_temp.tmp ",
    .list_end = "",
    .remove = "rm crv_temp.tmp",
};

static constexpr const char *utl_listing = "utl_temp.tmp";

const utl_listing_commands *utl_GetListingCommands() {
    return access("/bin/ls", X_OK) == 0 ? &usual_commands : &commands_without_bin_ls;
}

// unlink reports a directory by different errors, and on some systems it removes one for root.
bool utl_RemoveOldListing(const char *path) {
    struct stat status = {};
    if (lstat(path, &status) == 0 && S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        return false;
    }
    return unlink(path) == 0 || errno == ENOENT;
}

// On a terminal, rm asks before it removes a write-protected file.
void utl_AllowRemoval(const char *path) { chmod(path, S_IRUSR | S_IWUSR); }

// Writes the names that match, one per line, and closes `out`. Returns false with errno set if
// writing fails.
static bool write_names(FILE *out, const char *pattern) {
    glob_t found = {};
    if (glob(pattern, 0, nullptr, &found) == 0)
        for (size_t k = 0; k < found.gl_pathc; ++k) fprintf(out, "%s\n", found.gl_pathv[k]);
    globfree(&found);
    const bool written = fflush(out) == 0;
    const int error = errno;
    fclose(out);
    errno = error;
    return written;
}

utl_line_reader *utl_OpenUtlListing(const char *pattern) {
    if (!utl_RemoveOldListing(utl_listing)) return nullptr;
    FILE *out = fopen(utl_listing, "w");
    if (!out) return nullptr;
    if (write_names(out, pattern)) return utl_OpenReader(utl_listing);
    const int error = errno;
    utl_RemoveUtlListing();
    errno = error;
    return nullptr;
}

void utl_RemoveUtlListing() { remove(utl_listing); }
