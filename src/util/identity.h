// util/identity.h - build information, system version, GMT offset and date as text, for the status
// and the product log.
//
// Each routine writes at most `size` - 1 characters and a zero into `buffer`. It returns 0, or 1 on
// failure.
#pragma once

#include <cstddef>
#include <ctime>

// Length of "@(#)Kelp ", by which what(1) finds the strings of the build information in the
// program. Skip it when printing them.
constexpr size_t utl_what_prefix_length = 9;

struct utl_build_info {
    char compile_date[48];
    char compile_time[32];
    char version[128];
    char library_mark[20];
    char build_stamp[32];
};

int utl_GetBuildInfo(utl_build_info *identity);

// Returns the version of the release, such as "1.0.0".
const char *utl_ProgramVersion();

// Writes "Windows_NT %d.%d os-%d.wi-%d" with the version numbers of Windows. On other systems the
// numbers are 0 and the routine fails.
int utl_SystemText(char *buffer, size_t size, int debug_level);

// Writes the offset of local time from GMT as hours and minutes, "+0100". Prints both times if
// `debug` is not 0.
//
// Deliberate: an offset between minus one hour and zero has no minus sign.
int utl_GmtOffset(char *buffer, size_t size, int debug);

// Writes the date and time `when`, or the current local time if it is null, in the form `kind`:
//
//   0   12-10-107               3   2007-12-10 10:05
//   1   12-10-107 10:05         4   2007-12-10 10:05:7
//   2   12-10-2007 10:05        5   2007-12-10 10:05:7 +0100
//   any other kind: as 2
//
// Debug level 23 prints the text. Deliberate: the short date counts years from 1900, and seconds
// have no leading zero.
int utl_DateText(const struct tm *when, int kind, char *buffer, size_t size, int debug_level);
