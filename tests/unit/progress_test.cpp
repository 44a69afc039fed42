// unit/progress_test.cpp - text of the progress line: numbers, name, and its width.
#include "text/progress.h"

#include "support.h"

#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace {

struct shown {
    std::string text;
    int filled;
};

shown text_of(uint64_t bytes, uint64_t size, int64_t milliseconds, int columns = 79,
              const char *name = "run1.req") {
    utl_progress progress = {};
    progress.name = name;
    progress.size = size;
    progress.bytes = bytes;
    shown result;
    result.text = utl_ProgressText(progress, milliseconds, columns, &result.filled);
    return result;
}

TEST(Progress, RegularFileHasShareRateAndTimeLeft) {
    EXPECT_EQ(text_of(30'000'000, 120'000'000, 2000).text, " 25 %  15.0 MB/s  6 s left  run1.req");
    EXPECT_EQ(text_of(1'199'999, 1'200'000, 1000).text, " 99 %  1.2 MB/s  1 s left  run1.req");
    EXPECT_EQ(text_of(500, 500, 1000).text, "100 %  0.0 MB/s  0 s left  run1.req");
}

TEST(Progress, TimeLeftIsRoundedUp) {
    EXPECT_EQ(text_of(1000, 120'000, 1000).text, "  0 %  0.0 MB/s  119 s left  run1.req");
    EXPECT_EQ(text_of(1000, 121'001, 1000).text, "  0 %  0.0 MB/s  3 min left  run1.req");
    EXPECT_EQ(text_of(1000, 7'200'000, 1000).text, "  0 %  0.0 MB/s  120 min left  run1.req");
    EXPECT_EQ(text_of(1000, 7'201'000, 1000).text, "  0 %  0.0 MB/s  2 h left  run1.req");
}

TEST(Progress, NothingReadHasNoTimeLeft) {
    EXPECT_EQ(text_of(0, 1000, 1000).text, "  0 %  0.0 MB/s  run1.req");
}

TEST(Progress, PipeHasBytesOnly) {
    EXPECT_EQ(text_of(12'345'678, 0, 2000).text, "12.3 MB  run1.req");
    EXPECT_EQ(text_of(0, 0, 2000).text, "0.0 MB  run1.req");
}

TEST(Progress, FileThatGrowsHasBytesOnly) {
    EXPECT_EQ(text_of(2'000'001, 2'000'000, 2000).text, "2.0 MB  run1.req");
}

TEST(Progress, LongNameLosesItsStart) {
    const shown line = text_of(12'345'678, 0, 2000, 15);
    EXPECT_EQ(line.text, "12.3 MB  n1.req");
    EXPECT_EQ(line.filled, 15);
    EXPECT_EQ(text_of(12'345'678, 0, 2000, 17).text, "12.3 MB  run1.req");
    EXPECT_EQ(text_of(12'345'678, 0, 2000, 17).filled, 17);
    EXPECT_EQ(text_of(12'345'678, 0, 2000, 30).filled, 17);
}

TEST(Progress, NarrowTerminalCutsNumbers) {
    EXPECT_EQ(text_of(12'345'678, 0, 2000, 9).text, "12.3 MB  ");
    EXPECT_EQ(text_of(12'345'678, 0, 2000, 4).text, "12.3");
    EXPECT_EQ(text_of(12'345'678, 0, 2000, 4).filled, 4);
}

TEST(Progress, ReplacesControlCharactersAndBadBytes) {
    EXPECT_EQ(text_of(0, 0, 2000, 79, "a\x1b[1m\xff\n.req").text,
              "0.0 MB  a\xef\xbf\xbd[1m\xef\xbf\xbd\xef\xbf\xbd.req");
}

// "日本" has two wide characters of three bytes each, "é" one narrow of two.
TEST(Progress, CutsNameBetweenCharacters) {
    const char *name = "\xe6\x97\xa5\xe6\x9c\xac\xc3\xa9";
    EXPECT_EQ(text_of(0, 0, 2000, 8 + 5, name).text, "0.0 MB  \xe6\x97\xa5\xe6\x9c\xac\xc3\xa9");
    EXPECT_EQ(text_of(0, 0, 2000, 8 + 5, name).filled, 13);
    EXPECT_EQ(text_of(0, 0, 2000, 8 + 4, name).text, "0.0 MB  \xe6\x9c\xac\xc3\xa9");
    EXPECT_EQ(text_of(0, 0, 2000, 8 + 4, name).filled, 11);
    EXPECT_EQ(text_of(0, 0, 2000, 8 + 2, name).text, "0.0 MB  \xc3\xa9");
}

#ifndef _WIN32
TEST(Progress, NothingIsShownOfTypedInput) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    const utl_progress progress = utl_StartProgress(terminal, "-");
    close(terminal);
    EXPECT_EQ(progress.next_time, INT64_MAX);
    EXPECT_FALSE(progress.can_wait);
}
#endif

// U+1000, the first that may be wide.
TEST(Progress, CharactersFromU1000MayBeWide) {
    EXPECT_EQ(text_of(0, 0, 2000, 8 + 1, "\xe1\x80\x80").text, "0.0 MB  ");
    EXPECT_EQ(text_of(0, 0, 2000, 8 + 2, "\xe1\x80\x80").text, "0.0 MB  \xe1\x80\x80");
    EXPECT_EQ(text_of(0, 0, 2000, 8 + 2, "\xe1\x80\x80").filled, 10);
}

} // namespace
