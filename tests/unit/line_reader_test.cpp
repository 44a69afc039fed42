// unit/line_reader_test.cpp - lines, limits and skipping, compared with fgets.
#include "text/line_reader.h"

#include "support.h"

#include <cstring>
#include <random>
#include <sys/stat.h>
#include <thread>

namespace {

struct read_line {
    std::string text;
    utl_line_status status;
    bool operator==(const read_line &) const = default;
};

void PrintTo(const read_line &line, std::ostream *out) {
    *out << testing::PrintToString(line.text) << " status " << static_cast<int>(line.status);
}

std::vector<read_line> lines_of(const std::string &bytes, size_t limit) {
    const text_file file(bytes);
    utl_line_reader *in = utl_OpenReader(file.path());
    std::vector<read_line> lines;
    do {
        const utl_line line = utl_ReadLine(in, limit);
        lines.push_back({std::string(line.text), line.status});
    } while (lines.back().status != utl_line_status::eof);
    utl_CloseReader(in);
    return lines;
}

// Reference by fgets and feof, for text without CR.
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
            lines.push_back({text, utl_line_status::newline});
        } else {
            lines.push_back(
                {text, feof(in) ? utl_line_status::unterminated : utl_line_status::partial});
        }
    }
    lines.push_back({"", utl_line_status::eof});
    fclose(in);
    return lines;
}

using lines = std::vector<read_line>;

TEST(LineReader, NewlineIsNotPartOfText) {
    EXPECT_EQ(lines_of("ab\n\nc\n", 126), (lines{{"ab", utl_line_status::newline},
                                                 {"", utl_line_status::newline},
                                                 {"c", utl_line_status::newline},
                                                 {"", utl_line_status::eof}}));
}

TEST(LineReader, AnEmptyFileHasNothing) {
    EXPECT_EQ(lines_of("", 126), (lines{{"", utl_line_status::eof}}));
}

TEST(LineReader, UnterminatedLastLineIsReported) {
    EXPECT_EQ(lines_of("ab\ncd", 126), (lines{{"ab", utl_line_status::newline},
                                              {"cd", utl_line_status::unterminated},
                                              {"", utl_line_status::eof}}));
}

TEST(LineReader, LongLineIsReturnedInParts) {
    EXPECT_EQ(lines_of("abcdefg\n", 4), (lines{{"abcd", utl_line_status::partial},
                                               {"efg", utl_line_status::newline},
                                               {"", utl_line_status::eof}}));
}

TEST(LineReader, TheLimitCountsTheLineEnd) {
    EXPECT_EQ(lines_of("abc\n", 4),
              (lines{{"abc", utl_line_status::newline}, {"", utl_line_status::eof}}));
    EXPECT_EQ(lines_of("abcd\n", 4), (lines{{"abcd", utl_line_status::partial},
                                            {"", utl_line_status::newline},
                                            {"", utl_line_status::eof}}));
}

TEST(LineReader, UnterminatedLineAtLimitIsPartial) {
    EXPECT_EQ(lines_of("abcd", 4),
              (lines{{"abcd", utl_line_status::partial}, {"", utl_line_status::eof}}));
}

TEST(LineReader, CrBeforeNewlineDoesNotCount) {
    EXPECT_EQ(lines_of("abc\r\nde\r\n", 4), (lines{{"abc", utl_line_status::newline},
                                                   {"de", utl_line_status::newline},
                                                   {"", utl_line_status::eof}}));
    EXPECT_EQ(lines_of("abcd\r\n", 4), (lines{{"abcd", utl_line_status::partial},
                                              {"", utl_line_status::newline},
                                              {"", utl_line_status::eof}}));
}

TEST(LineReader, ACrElsewhereIsText) {
    EXPECT_EQ(lines_of("a\rb\n", 9),
              (lines{{"a\rb", utl_line_status::newline}, {"", utl_line_status::eof}}));
    EXPECT_EQ(lines_of("a\r\r\n", 9),
              (lines{{"a\r", utl_line_status::newline}, {"", utl_line_status::eof}}));
    EXPECT_EQ(lines_of("ab\r", 9),
              (lines{{"ab\r", utl_line_status::unterminated}, {"", utl_line_status::eof}}));
}

TEST(LineReader, NulEndsTextNotLine) {
    EXPECT_EQ(lines_of(std::string("ab\0cd\ne\n", 8), 126), (lines{{"ab", utl_line_status::newline},
                                                                   {"e", utl_line_status::newline},
                                                                   {"", utl_line_status::eof}}));
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
        wanted.push_back({text, utl_line_status::newline});
    }
    wanted.push_back({"", utl_line_status::eof});
    EXPECT_EQ(lines_of(bytes, 126), wanted);
}

TEST(LineReader, CountsLinesNotPieces) {
    const text_file file("abcdef\nx\n");
    utl_line_reader *in = utl_OpenReader(file.path());
    utl_ReadLine(in, 4);
    EXPECT_EQ(in->line_number, 1U);
    utl_ReadLine(in, 4);
    EXPECT_EQ(in->line_number, 1U);
    utl_ReadLine(in, 4);
    EXPECT_EQ(in->line_number, 2U);
    utl_CloseReader(in);
}

TEST(LineReader, SkippedLinesAreAsIfRead) {
    std::mt19937_64 random(83);
    for (int round = 0; round < 20; ++round) {
        std::string bytes;
        while (bytes.size() < 600'000) { // more than two blocks
            bytes += std::string(random() % 140, 'x');
            if (random() % 200 == 0) bytes += '<';
            bytes += random() % 5 == 0 ? "\r\n" : "\n";
        }
        const text_file file(bytes);
        utl_line_reader *skipping = utl_OpenReader(file.path());
        utl_line_reader *reading = utl_OpenReader(file.path());
        for (utl_line_status status = utl_line_status::newline; status != utl_line_status::eof;) {
            const auto most = static_cast<int64_t>(random() % 50);
            const int64_t skipped = utl_SkipLines(skipping, 126, most);
            ASSERT_LE(skipped, most);
            for (int64_t k = 0; k < skipped; ++k) {
                const utl_line line = utl_ReadLine(reading, 126);
                ASSERT_EQ(line.status, utl_line_status::newline);
                ASSERT_FALSE(line.has_lt_or_nul) << "a line with a mark is not skipped";
            }
            const utl_line next = utl_ReadLine(skipping, 126);
            const utl_line wanted = utl_ReadLine(reading, 126);
            ASSERT_EQ(next.text, wanted.text);
            ASSERT_EQ(next.status, wanted.status);
            ASSERT_EQ(skipping->line_number, reading->line_number);
            status = next.status;
        }
        utl_CloseReader(skipping);
        utl_CloseReader(reading);
    }
}

TEST(LineReader, AMissingFileDoesNotOpen) {
    EXPECT_EQ(utl_OpenReader("/nowhere/at/all.req"), nullptr);
    EXPECT_EQ(errno, ENOENT);
}

TEST(LineReader, AFolderDoesNotOpen) {
    EXPECT_EQ(utl_OpenReader("/"), nullptr);
#ifdef _WIN32
    EXPECT_EQ(errno, EACCES);
#else
    EXPECT_EQ(errno, EISDIR);
#endif
}

#ifndef _WIN32
TEST(LineReader, UnboundedDeviceDoesNotOpen) {
    EXPECT_EQ(utl_OpenReader("/dev/zero"), nullptr);
    EXPECT_EQ(errno, ENOTSUP);
}

TEST(LineReader, EmptyDeviceIsEmptyFile) {
    utl_line_reader *in = utl_OpenReader("/dev/null");
    ASSERT_NE(in, nullptr);
    EXPECT_EQ(utl_ReadLine(in, 126).status, utl_line_status::eof);
    utl_CloseReader(in);
}

TEST(LineReader, PipeIsReadToEof) {
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
    utl_line_reader *in = utl_OpenReader(path.c_str());
    int count = 0;
    while (utl_ReadLine(in, 126).status == utl_line_status::newline) ++count;
    utl_CloseReader(in);
    writer.join();
    remove(path.c_str());
    EXPECT_EQ(count, 1000);
}
#endif

} // namespace
