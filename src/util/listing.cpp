// util/listing.cpp - see listing.h.
#include "util/listing.h"

#include "records/settings.h"
#include "system/console.h"

#include <cerrno>
#include <cstdio>
#include <string>
#include <unistd.h>

#ifndef _WIN32
#include <glob.h>
#include <sys/stat.h>
#endif

static constexpr const char *crv_listing = "crv_temp.tmp";
static constexpr const char *utl_listing = "utl_temp.tmp";

#if defined(_WIN32)
static constexpr const char *list_command = "dir /o /b > crv_temp.tmp ";
static constexpr const char *list_command_end = "";
static constexpr const char *remove_command = "del crv_temp.tmp";
#elif defined(__VMS)
static constexpr const char *list_command = "directory/out=crv_temp.tmp/nohead/notrail ";
static constexpr const char *list_command_end = ";0";
static constexpr const char *remove_command = "delete crv_temp.tmp;0";
#else
static constexpr const char *list_command = "/bin/ls > crv_temp.tmp ";
static constexpr const char *list_command_end = "";
static constexpr const char *remove_command = "rm crv_temp.tmp";
#endif

// Removes what stands where a listing goes: an old listing, or a link or pipe, which must not be
// written to. Returns false with errno set when it stays.
static bool remove_existing(const char *path) { return unlink(path) == 0 || errno == ENOENT; }

utl_line_reader *utl_OpenCrvListing(const char *pattern) {
    const std::string command = std::string(list_command) + pattern + list_command_end;
    if (!remove_existing(crv_listing)) return nullptr;
    if (crv_DBG == 34) {
        printf("    _34-i-wri, Writing \"crv_temp.tmp\". \n");
        printf("    _34-i-val command1 = \"%s\" \n", command.c_str());
        printf("    _34-i-val command2 = \"%s\" \n", remove_command);
    }
    utl_RunCommand(command.c_str());
    if (crv_DBG == 34) printf("    _34-i-after system command. \n");
    return utl_OpenReader(crv_listing);
}

void utl_RemoveCrvListing() {
#ifndef _WIN32
    // On a terminal the command asks before it removes what may not be written.
    chmod(crv_listing, S_IRUSR | S_IWUSR);
#endif
    utl_RunCommand(remove_command);
}

#ifdef _WIN32

utl_line_reader *utl_OpenUtlListing(const char *pattern) {
    const std::string command = std::string("dir /o /b > utl_temp.tmp ") + pattern;
    if (!remove_existing(utl_listing)) return nullptr;
    utl_RunCommand(command.c_str());
    return utl_OpenReader(utl_listing);
}

void utl_RemoveUtlListing() { utl_RunCommand("del utl_temp.tmp"); }

#else

// Writes the names, one a line. Returns false with errno set when that fails.
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
    if (!remove_existing(utl_listing)) return nullptr;
    FILE *out = fopen(utl_listing, "w");
    if (!out) return nullptr;
    if (write_names(out, pattern)) return utl_OpenReader(utl_listing);
    const int error = errno;
    utl_RemoveUtlListing();
    errno = error;
    return nullptr;
}

void utl_RemoveUtlListing() { remove(utl_listing); }

#endif
