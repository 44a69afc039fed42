// unit/identity_test.cpp - build information, system text, GMT offset and date texts.
#include "util/identity.h"

#include "support.h"

#include <cstring>

namespace {

class identity : public fresh_run {
  protected:
    void zone(const char *name) {
        setenv("TZ", name, 1);
        tzset();
    }
    void TearDown() override {
        zone("UTC0");
        fresh_run::TearDown();
    }
    std::string offset() {
        char buffer[16];
        EXPECT_EQ(utl_GmtOffset(buffer, sizeof buffer, 0), 0);
        return buffer;
    }
};

// 10 December 2007, 10:05:07
struct tm december() {
    struct tm when = {};
    when.tm_year = 107;
    when.tm_mon = 11;
    when.tm_mday = 10;
    when.tm_hour = 10;
    when.tm_min = 5;
    when.tm_sec = 7;
    return when;
}

std::string date_text(int kind, size_t size = 64) {
    const struct tm when = december();
    char buffer[64];
    EXPECT_EQ(utl_DateText(&when, kind, buffer, size, 0), 0);
    return buffer;
}

TEST_F(identity, KindZeroCountsYearsFrom1900) { EXPECT_EQ(date_text(0), "12-10-107"); }

TEST_F(identity, OtherKindsJoinDateAndTime) {
    EXPECT_EQ(date_text(1), "12-10-107 10:05");
    EXPECT_EQ(date_text(2), "12-10-2007 10:05");
    EXPECT_EQ(date_text(3), "2007-12-10 10:05");
    EXPECT_EQ(date_text(4), "2007-12-10 10:05:7");
}

TEST_F(identity, KindFiveHasSecondsAndOffset) {
    zone("ABC-1");
    EXPECT_EQ(date_text(5), "2007-12-10 10:05:7 +0100");
}

TEST_F(identity, OtherKindsAreTheLongDate) {
    for (const int kind : {-1, 6, 99}) EXPECT_EQ(date_text(kind), "12-10-2007 10:05");
}

TEST_F(identity, BufferIsFilledButOneCharacter) {
    EXPECT_EQ(date_text(4, 5), "2007");
    EXPECT_EQ(date_text(4, 1), "");
}

TEST_F(identity, MissingTimeIsCurrentTime) {
    const time_t before = time(nullptr);
    char text[64], wanted_before[64], wanted_after[64];
    utl_DateText(nullptr, 4, text, sizeof text, 0);
    const time_t after = time(nullptr);
    struct tm when = *localtime(&before);
    utl_DateText(&when, 4, wanted_before, sizeof wanted_before, 0);
    when = *localtime(&after);
    utl_DateText(&when, 4, wanted_after, sizeof wanted_after, 0);
    EXPECT_TRUE(strcmp(text, wanted_before) == 0 || strcmp(text, wanted_after) == 0) << text;
}

TEST_F(identity, Level23TracesPartsAndResult) {
    const struct tm when = december();
    char buffer[64];
    EXPECT_EQ(stdout_of([&] { utl_DateText(&when, 4, buffer, sizeof buffer, 23); }),
              "    _23-v-val, string_date = 12-10-107, string_time_01 = 10:05\n"
              "    _23-v-val, datestring = \"2007-12-10 10:05:7\"\n");
}

TEST_F(identity, OffsetsAreHoursAndMinutes) {
    zone("UTC0");
    EXPECT_EQ(offset(), "+0000");
    zone("ABC-1");
    EXPECT_EQ(offset(), "+0100");
    zone("ABC-5:45");
    EXPECT_EQ(offset(), "+0545");
    zone("ABC5:30");
    EXPECT_EQ(offset(), "-0530");
    zone("ABC12");
    EXPECT_EQ(offset(), "-1200");
}

// In this zone daylight saving time lasts all year: it applies to both times whose difference is
// the offset.
TEST_F(identity, SummerDateHasSummerOffset) {
    zone("WIN-1SUM-2,0/0,J365/25");
    EXPECT_EQ(offset(), "+0200");
}

TEST_F(identity, SecondsOfOffsetAreDropped) {
    zone("ABC-1:00:59");
    EXPECT_EQ(offset(), "+0100");
    zone("ABC-10:59:59");
    EXPECT_EQ(offset(), "+1059");
    zone("ABC7:29:59");
    EXPECT_EQ(offset(), "-0729");
}

TEST_F(identity, OffsetOfMinutesHasNoMinus) {
    zone("ABC0:30");
    EXPECT_EQ(offset(), "+0030");
}

TEST_F(identity, TheOffsetTracesBothTimes) {
    zone("ABC-2");
    char buffer[16];
    const std::string shown = stdout_of([&] { utl_GmtOffset(buffer, sizeof buffer, 1); });
    EXPECT_THAT(
        shown,
        testing::MatchesRegex(
            "%utl_23-i-val, GMT = [0-9]{4}-[0-9][0-9]-[0-9][0-9] [0-9][0-9]:[0-9][0-9]\n"
            "%utl_23-i-val, Loc = [0-9]{4}-[0-9][0-9]-[0-9][0-9] [0-9][0-9]:[0-9][0-9] \\+0200\n"));
}

TEST_F(identity, TracedTimesComeFromClock) {
    zone("ABC-2");
    char buffer[16], gmt[64], local[64];
    std::string shown;
    time_t before = 0;
    do { // until both times are in the same minute
        before = time(nullptr);
        shown = stdout_of([&] { utl_GmtOffset(buffer, sizeof buffer, 7); });
    } while (before / 60 != time(nullptr) / 60);
    strftime(gmt, sizeof gmt, "%%utl_23-i-val, GMT = %Y-%m-%d %H:%M\n", gmtime(&before));
    strftime(local, sizeof local, "%%utl_23-i-val, Loc = %Y-%m-%d %H:%M +0200\n",
             localtime(&before));
    EXPECT_EQ(shown, std::string(gmt) + local);
}

TEST_F(identity, AnyLevelTracesOffsetOfDate) {
    const struct tm when = december();
    char buffer[64];
    EXPECT_THAT(stdout_of([&] { utl_DateText(&when, 5, buffer, sizeof buffer, 5); }),
                testing::StartsWith("%utl_23-i-val, GMT = "));
    EXPECT_EQ(stdout_of([&] { utl_DateText(&when, 5, buffer, sizeof buffer, 0); }), "");
}

TEST_F(identity, EveryStringHasItsMark) {
    utl_build_info id;
    EXPECT_EQ(utl_GetBuildInfo(&id), 0);
    EXPECT_THAT(
        id.compile_date,
        testing::MatchesRegex("@\\(#\\)Kelp Compile date: [A-Z][a-z][a-z] [ 1-3][0-9] [0-9]{4}"));
    EXPECT_THAT(id.compile_time,
                testing::MatchesRegex("@\\(#\\)Kelp [0-9][0-9]:[0-9][0-9]:[0-9][0-9]"));
    EXPECT_STREQ(id.version, "@(#)Kelp Version: (2003.0.15.0) - (Windows_NT 0.0 os-0.wi-0)");
    EXPECT_EQ(strlen(id.library_mark), 19U);
    EXPECT_STREQ(id.library_mark, "@(#)Kelp crv_core.a");
    EXPECT_EQ(id.build_stamp, std::string(id.compile_date + 23) + " " + (id.compile_time + 9));
}

TEST_F(identity, TheSystemHasNoNumbersHere) {
    char buffer[64];
    EXPECT_EQ(utl_SystemText(buffer, sizeof buffer, 0), 1);
    EXPECT_STREQ(buffer, "Windows_NT 0.0 os-0.wi-0");
}

} // namespace
