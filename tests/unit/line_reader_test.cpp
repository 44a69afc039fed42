// unit/line_reader_test.cpp
#include "text/line_reader.h"

#include "support.h"

#include <cstring>
#include <random>
#include <sys/stat.h>
#include <thread>

namespace {

struct read_line {
    std::string text;
    utl_end end;
    bool operator==(const read_line &) const = default;
};

void PrintTo(const read_line &line, std::ostream *out) {
    *out << testing::PrintToString(line.text) << " end " << static_cast<int>(line.end);
}

std::vector<read_line> lines_of(const std::string &bytes, size_t limit) {
    const text_file file(bytes);
    utl_lines *in = utl_OpenLines(file.path());
    std::vector<read_line> lines;
    do {
        const utl_line line = utl_NextLine(in, limit);
        lines.push_back({std::string(line.text), line.end});
    } while (lines.back().end != utl_end::nothing);
    utl_CloseLines(in);
    return lines;
}

// The same by fgets and feof: the reference. Knows no CR.
std::vector<read_line> lines_by_fgets(const std::string &bytes, size_t limit) {
    const text_file file(bytes);
    FILE *in = fopen(file.path(), "r");
    std::vector<read_line> lines;
    std::vector<char> buffer(limit + 1);
    for (;;) {
        if (!fgets(buffer.data(), static_cast<int>(buffer.size()), in)) break;
        std::string text = buffer.data();
        if (!text.empty() && text.back() == '\n') {
            text.pop_back();
            lines.push_back({text, utl_end::newline});
        } else {
            lines.push_back({text, feof(in) ? utl_end::file_end : utl_end::limit});
        }
    }
    lines.push_back({"", utl_end::nothing});
    fclose(in);
    return lines;
}

using lines = std::vector<read_line>;

TEST(LineReader, ALineEndIsNotPartOfTheText) {
    EXPECT_EQ(lines_of("ab\n\nc\n", 126), (lines{{"ab", utl_end::newline},
                                                 {"", utl_end::newline},
                                                 {"c", utl_end::newline},
                                                 {"", utl_end::nothing}}));
}

TEST(LineReader, AnEmptyFileHasNothing) { EXPECT_EQ(lines_of("", 126), (lines{{"", utl_end::nothing}})); }

TEST(LineReader, ALastLineWithoutItsEndMeetsTheFileEnd) {
    EXPECT_EQ(lines_of("ab\ncd", 126),
              (lines{{"ab", utl_end::newline}, {"cd", utl_end::file_end}, {"", utl_end::nothing}}));
}

TEST(LineReader, ALineLongerThanTheLimitComesInPieces) {
    EXPECT_EQ(lines_of("abcdefg\n", 4),
              (lines{{"abcd", utl_end::limit}, {"efg", utl_end::newline}, {"", utl_end::nothing}}));
}

TEST(LineReader, TheLimitCountsTheLineEnd) {
    EXPECT_EQ(lines_of("abc\n", 4), (lines{{"abc", utl_end::newline}, {"", utl_end::nothing}}));
    EXPECT_EQ(lines_of("abcd\n", 4),
              (lines{{"abcd", utl_end::limit}, {"", utl_end::newline}, {"", utl_end::nothing}}));
}

TEST(LineReader, ALineOfExactlyTheLimitAtTheVeryEndIsNotTheFileEnd) {
    EXPECT_EQ(lines_of("abcd", 4), (lines{{"abcd", utl_end::limit}, {"", utl_end::nothing}}));
}

TEST(LineReader, ACrBeforeTheLineEndIsDroppedAndDoesNotCount) {
    EXPECT_EQ(lines_of("abc\r\nde\r\n", 4),
              (lines{{"abc", utl_end::newline}, {"de", utl_end::newline}, {"", utl_end::nothing}}));
    EXPECT_EQ(lines_of("abcd\r\n", 4),
              (lines{{"abcd", utl_end::limit}, {"", utl_end::newline}, {"", utl_end::nothing}}));
}

TEST(LineReader, ACrElsewhereIsText) {
    EXPECT_EQ(lines_of("a\rb\n", 9), (lines{{"a\rb", utl_end::newline}, {"", utl_end::nothing}}));
    EXPECT_EQ(lines_of("a\r\r\n", 9), (lines{{"a\r", utl_end::newline}, {"", utl_end::nothing}}));
    EXPECT_EQ(lines_of("ab\r", 9), (lines{{"ab\r", utl_end::file_end}, {"", utl_end::nothing}}));
}

TEST(LineReader, ANulEndsTheTextButNotTheLine) {
    EXPECT_EQ(lines_of(std::string("ab\0cd\ne\n", 8), 126),
              (lines{{"ab", utl_end::newline}, {"e", utl_end::newline}, {"", utl_end::nothing}}));
}

TEST(LineReader, ReadsAsFgetsDoes) {
    std::mt19937 random(20171220);
    for (int round = 0; round < 300; ++round) {
        std::string bytes;
        const size_t length = random() % 400;
        const size_t ends = 2 + random() % 40;
        while (bytes.size() < length)
            bytes += random() % ends == 0 ? '\n' : static_cast<char>('a' + random() % 26);
        const size_t limit = 2 + random() % 40;
        ASSERT_EQ(lines_of(bytes, limit), lines_by_fgets(bytes, limit))
            << testing::PrintToString(bytes) << limit;
    }
}

TEST(LineReader, LinesAcrossBlocksAreWhole) {
    std::string bytes;
    lines wanted;
    for (int k = 0; bytes.size() < 700'000; ++k) {
        const std::string text = std::string(static_cast<size_t>(k % 120), 'x') + std::to_string(k);
        bytes += text + (k % 3 == 0 ? "\r\n" : "\n");
        wanted.push_back({text, utl_end::newline});
    }
    wanted.push_back({"", utl_end::nothing});
    EXPECT_EQ(lines_of(bytes, 126), wanted);
}

TEST(LineReader, CountsLinesNotPieces) {
    const text_file file("abcdef\nx\n");
    utl_lines *in = utl_OpenLines(file.path());
    utl_NextLine(in, 4);
    EXPECT_EQ(in->line_number, 1U);
    utl_NextLine(in, 4);
    EXPECT_EQ(in->line_number, 1U);
    utl_NextLine(in, 4);
    EXPECT_EQ(in->line_number, 2U);
    utl_CloseLines(in);
}

TEST(LineReader, PassedLinesAreAsIfRead) {
    std::mt19937_64 random(83);
    for (int round = 0; round < 20; ++round) {
        std::string bytes;
        while (bytes.size() < 600'000) { // more than two blocks
            bytes += std::string(random() % 140, 'x');
            if (random() % 200 == 0) bytes += '<';
            bytes += random() % 5 == 0 ? "\r\n" : "\n";
        }
        const text_file file(bytes);
        utl_lines *passing = utl_OpenLines(file.path());
        utl_lines *reading = utl_OpenLines(file.path());
        for (utl_end end = utl_end::newline; end != utl_end::nothing;) {
            const auto most = static_cast<int64_t>(random() % 50);
            const int64_t passed = utl_PassLines(passing, 126, most);
            ASSERT_LE(passed, most);
            for (int64_t k = 0; k < passed; ++k) {
                const utl_line line = utl_NextLine(reading, 126);
                ASSERT_EQ(line.end, utl_end::newline);
                ASSERT_FALSE(line.marked) << "a marked line is not passed over";
            }
            const utl_line next = utl_NextLine(passing, 126);
            const utl_line wanted = utl_NextLine(reading, 126);
            ASSERT_EQ(next.text, wanted.text);
            ASSERT_EQ(next.end, wanted.end);
            ASSERT_EQ(passing->line_number, reading->line_number);
            end = next.end;
        }
        utl_CloseLines(passing);
        utl_CloseLines(reading);
    }
}

TEST(LineReader, AMissingFileDoesNotOpen) {
    EXPECT_EQ(utl_OpenLines("/nowhere/at/all.req"), nullptr);
    EXPECT_EQ(errno, ENOENT);
}

TEST(LineReader, AFolderDoesNotOpen) {
    EXPECT_EQ(utl_OpenLines("/"), nullptr);
#ifdef _WIN32
    EXPECT_EQ(errno, EACCES);
#else
    EXPECT_EQ(errno, EISDIR);
#endif
}

#ifndef _WIN32
TEST(LineReader, ADeviceThatMayNeverEndDoesNotOpen) {
    EXPECT_EQ(utl_OpenLines("/dev/zero"), nullptr);
    EXPECT_EQ(errno, ENOTSUP);
}

TEST(LineReader, AnEmptyDeviceIsAnEmptyFile) {
    utl_lines *in = utl_OpenLines("/dev/null");
    ASSERT_NE(in, nullptr);
    EXPECT_EQ(utl_NextLine(in, 126).end, utl_end::nothing);
    utl_CloseLines(in);
}

TEST(LineReader, APipeIsReadToItsEnd) {
    const std::string path = testing::TempDir() + "crv_unit_pipe_" + std::to_string(getpid());
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::thread writer([&] {
        FILE *out = fopen(path.c_str(), "w");
        for (int k = 0; k < 1000; ++k) {
            fprintf(out, "line %d\n", k);
            if (k % 100 == 0) fflush(out);
        }
        fclose(out);
    });
    utl_lines *in = utl_OpenLines(path.c_str());
    int count = 0;
    while (utl_NextLine(in, 126).end == utl_end::newline) ++count;
    utl_CloseLines(in);
    writer.join();
    remove(path.c_str());
    EXPECT_EQ(count, 1000);
}
#endif

} // namespace
