// util/identity.h - who the program is, where it runs and when: texts for the status and the
// product log.
//
// Each routine writes into a buffer of `size` characters, cut to size - 1, and returns 0, or 1 when
// it has failed.
#pragma once

#include <cstddef>
#include <ctime>

// The identification strings begin with "@(#)Kelp ", by which a what-style tool finds them in the
// program. Users of them skip that.
constexpr size_t utl_what_prefix_length = 9;

struct utl_build_info {
    char compile_date[48];
    char compile_time[32];
    char version[128];
    char library_mark[20];
    char build_stamp[32];
};

int utl_GetBuildInfo(utl_build_info *identity);

// "Windows_NT %d.%d os-%d.wi-%d" with the numbers of the system. Fails where there are none; they
// are 0 then.
int utl_SystemText(char *buffer, size_t size, int debug_level);

// The offset of local time from GMT as hours and minutes, "+0100". With `debug` other than 0 it
// prints both times.
//
// Deliberate: an offset between minus one hour and zero has no minus sign.
int utl_GmtOffset(char *buffer, size_t size, int debug);

// Date and time `when`, the current local time when it is null:
//
//   kind 0   12-10-107                  kind 3   2007-12-10 10:05
//        1   12-10-107 10:05                 4   2007-12-10 10:05:7
//        2   12-10-2007 10:05                5   2007-12-10 10:05:7 +0100
//   any other is as kind 2
//
// Deliberate: the year of the short date is counted from 1900, and seconds have no leading zero.
int utl_DateText(const struct tm *when, int kind, char *buffer, size_t size, int debug_level);
