// util/identity.cpp - build information, offset from GMT by two conversions, and date formats.
#include "util/identity.h"

#include "text/fixed_text.h"

#include <cstdio>
#include <cstdlib>

// CRV_BUILD_DATE and CRV_BUILD_TIME have the form of __DATE__ and __TIME__. The build defines them,
// so that builds of the same source are identical.
static constexpr const char *compile_date = "@(#)Kelp Compile date: " CRV_BUILD_DATE;
static constexpr const char *compile_time = "@(#)Kelp " CRV_BUILD_TIME;
static constexpr const char *version = "@(#)Kelp Version: (2003.0.15.0) - (%s)";
static constexpr const char *library_mark = "@(#)Kelp crv_core.a";
static constexpr const char *build_stamp = CRV_BUILD_DATE " " CRV_BUILD_TIME;

int utl_GetBuildInfo(utl_build_info *identity) {
    char system[64];
    utl_SystemText(system, sizeof system, 0);
    utl_CopyText(identity->compile_date, compile_date);
    utl_CopyText(identity->compile_time, compile_time);
    snprintf(identity->version, sizeof identity->version, version, system);
    utl_CopyText(identity->library_mark, library_mark);
    utl_CopyText(identity->build_stamp, build_stamp);
    return 0;
}

const char *utl_ProgramVersion() { return CRV_VERSION; }

int utl_GmtOffset(char *buffer, size_t size, int debug) {
    time_t now = time(nullptr);
    struct tm gmt = *gmtime(&now);
    gmt.tm_isdst = -1;
    const struct tm shown_gmt = gmt; // mktime changes its argument
    const time_t as_local = mktime(&gmt);
    if (debug)
        printf("%%utl_23-i-val, GMT = %4d-%02d-%02d %02d:%02d\n", shown_gmt.tm_year + 1900,
               shown_gmt.tm_mon + 1, shown_gmt.tm_mday, shown_gmt.tm_hour, shown_gmt.tm_min);

    now = time(nullptr);
    struct tm local = *localtime(&now);
    const struct tm shown_local = local;
    const auto offset = static_cast<int>(difftime(mktime(&local), as_local));
    const int hours = offset / 3600;
    const int minutes = abs((offset - hours * 3600) / 60);
    if (debug)
        printf("%%utl_23-i-val, Loc = %4d-%02d-%02d %02d:%02d %+03d%02d\n",
               shown_local.tm_year + 1900, shown_local.tm_mon + 1, shown_local.tm_mday,
               shown_local.tm_hour, shown_local.tm_min, hours, minutes);
    snprintf(buffer, size, "%+03d%02d", hours, minutes);
    return 0;
}

int utl_DateText(const struct tm *when, int kind, char *buffer, size_t size, int debug_level) {
    struct tm local = {};
    if (!when) {
        const time_t now = time(nullptr);
        local = *localtime(&now);
        when = &local;
    }
    const int month = when->tm_mon + 1;
    const int year = when->tm_year + 1900;
    char short_date[48];
    char long_date[48];
    char minutes[32];
    char seconds[48];
    snprintf(short_date, sizeof short_date, "%02d-%02d-%02d", month, when->tm_mday, when->tm_year);
    snprintf(long_date, sizeof long_date, "%02d-%02d-%04d", month, when->tm_mday, year);
    snprintf(minutes, sizeof minutes, "%02d:%02d", when->tm_hour, when->tm_min);
    snprintf(seconds, sizeof seconds, "%02d:%02d:%d", when->tm_hour, when->tm_min, when->tm_sec);
    if (debug_level == 23)
        printf("    _23-v-val, string_date = %s, string_time_01 = %s\n", short_date, minutes);

    char text[160];
    char offset[32];
    switch (kind) {
    case 0: snprintf(text, sizeof text, "%s", short_date); break;
    case 1: snprintf(text, sizeof text, "%s %s", short_date, minutes); break;
    case 3:
        snprintf(text, sizeof text, "%04d-%02d-%02d %s", year, month, when->tm_mday, minutes);
        break;
    case 4:
        snprintf(text, sizeof text, "%04d-%02d-%02d %s", year, month, when->tm_mday, seconds);
        break;
    case 5:
        utl_GmtOffset(offset, sizeof offset, debug_level);
        snprintf(text, sizeof text, "%04d-%02d-%02d %s %s", year, month, when->tm_mday, seconds,
                 offset);
        break;
    default: snprintf(text, sizeof text, "%s %s", long_date, minutes); break;
    }
    if (debug_level == 23) printf("    _23-v-val, datestring = \"%s\"\n", text);
    utl_CopyText(buffer, size, text);
    return 0;
}
