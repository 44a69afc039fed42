// util/listing.cpp - see listing.h.
#include "util/listing.h"

#include "records/settings.h"
#include "util/console.h"

#include <cerrno>
#include <cstdio>
#include <glob.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

static constexpr const char *crv_listing = "crv_temp.tmp";
static constexpr const char *utl_listing = "utl_temp.tmp";

#ifdef __VMS
static constexpr const char *list_command = "directory/out=crv_temp.tmp/nohead/notrail ";
static constexpr const char *list_command_end = ";0";
static constexpr const char *remove_command = "delete crv_temp.tmp;0";
#else
static constexpr const char *list_command = "/bin/ls > crv_temp.tmp ";
static constexpr const char *list_command_end = "";
static constexpr const char *remove_command = "rm crv_temp.tmp";
#endif

// Returns false with errno set when a link is there and stays.
static bool remove_link(const char *path) {
    struct stat status = {};
    if (lstat(path, &status) != 0 || !S_ISLNK(status.st_mode)) return true;
    return unlink(path) == 0;
}

utl_lines *utl_OpenCrvListing(const char *pattern) {
    const std::string command = std::string(list_command) + pattern + list_command_end;
    if (!remove_link(crv_listing)) return nullptr;
    if (crv_DBG == 34) {
        printf("    _34-i-wri, Writing \"crv_temp.tmp\". \n");
        printf("    _34-i-val command1 = \"%s\" \n", command.c_str());
        printf("    _34-i-val command2 = \"%s\" \n", remove_command);
    }
    utl_RunCommand(command.c_str());
    if (crv_DBG == 34) printf("    _34-i-after system command. \n");
    return utl_OpenLines(crv_listing);
}

void utl_RemoveCrvListing() { utl_RunCommand(remove_command); }

// Writes the names, one a line. What cannot be written shows when the listing is opened.
static void write_names(const char *pattern) {
    FILE *out = fopen(utl_listing, "w");
    if (!out) return;
    glob_t found = {};
    if (glob(pattern, 0, nullptr, &found) == 0)
        for (size_t k = 0; k < found.gl_pathc; ++k) fprintf(out, "%s\n", found.gl_pathv[k]);
    globfree(&found);
    fclose(out);
}

utl_lines *utl_OpenUtlListing(const char *pattern) {
    if (!remove_link(utl_listing)) return nullptr;
    write_names(pattern);
    return utl_OpenLines(utl_listing);
}

void utl_RemoveUtlListing() { remove(utl_listing); }
