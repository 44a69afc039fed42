// unit/line_scan_test.cpp - compares the vector forms of the line scan with the scalar forms, and
// the scalar forms with expected results.
#include "text/line_scan.h"
#include "text/simd.h"

#include "support.h"

#include <cstring>
#include <random>

#ifndef _WIN32
#include <sys/mman.h>
#endif

namespace {

// Returns random text in which one of `rarity` characters is a line end, a mark or a NUL, followed
// by padding with such characters, which must be ignored.
std::string random_text(std::mt19937_64 *random, size_t length, size_t rarity) {
    const std::string special("\n\n\n<\0\r", 6);
    std::string text;
    while (text.size() < length)
        text += (*random)() % rarity == 0 ? special[(*random)() % special.size()]
                                          : static_cast<char>('a' + (*random)() % 20);
    while (text.size() < length + utl_padding) text += special[text.size() % special.size()];
    return text;
}

TEST(LineScan, FindsNewlineAndMarks) {
    const std::string text =
        "plain\nwith < mark\n" + std::string(1, '\0') + "\nrest" + std::string(utl_padding, 'x');
    utl_line_scan line = utl_ScanLineScalar(text.data(), 24);
    EXPECT_EQ(line.length, 5U);
    EXPECT_TRUE(line.ended);
    EXPECT_FALSE(line.has_lt_or_nul);
    line = utl_ScanLineScalar(text.data() + 6, 18);
    EXPECT_EQ(line.length, 11U);
    EXPECT_TRUE(line.has_lt_or_nul);
    line = utl_ScanLineScalar(text.data() + 18, 6);
    EXPECT_EQ(line.length, 1U);
    EXPECT_TRUE(line.has_lt_or_nul);
    line = utl_ScanLineScalar(text.data() + 20, 4);
    EXPECT_EQ(line.length, 4U);
    EXPECT_FALSE(line.ended);
}

TEST(LineScan, SkipsLinesWithoutMarks) {
    const std::string text = "one\ntwo\na<b\nfour\n" + std::string(utl_padding, 'x');
    EXPECT_EQ(utl_ScanLineRunScalar(text.data(), 17, 100, 1).lines, 1U);
    EXPECT_EQ(utl_ScanLineRunScalar(text.data(), 17, 100, 1).length, 4U);
    EXPECT_EQ(utl_ScanLineRunScalar(text.data(), 17, 100, 9).lines, 2U) << "stops before the mark";
    EXPECT_EQ(utl_ScanLineRunScalar(text.data(), 7, 100, 9).lines, 1U)
        << "stops before a line without its end";
    EXPECT_EQ(utl_ScanLineRunScalar(text.data(), 17, 4, 9).lines, 2U);
    EXPECT_EQ(utl_ScanLineRunScalar(text.data(), 17, 3, 9).lines, 0U)
        << "stops before a line of the limit";
}

// Runs the vector forms with vectors of 16 characters, and with wide ones if the processor has
// them.
class VectorScan : public testing::TestWithParam<bool> {
  protected:
    void SetUp() override {
        if (GetParam() && !utl_HasWideVectors()) GTEST_SKIP() << "no wide vectors";
        utl_uses_wide_vectors = GetParam();
    }
    void TearDown() override { utl_uses_wide_vectors = utl_HasWideVectors(); }
};

INSTANTIATE_TEST_SUITE_P(Widths, VectorScan, testing::Bool());

#ifndef _WIN32
// Two pages of memory, of which only the first can be read.
class guarded_page {
  public:
    guarded_page() {
        const int access = PROT_READ | PROT_WRITE;
        void *pages = mmap(nullptr, 2 * size, access, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        begin_ = static_cast<char *>(pages);
        mprotect(begin_ + size, size, PROT_NONE);
    }
    guarded_page(const guarded_page &) = delete;
    guarded_page &operator=(const guarded_page &) = delete;
    ~guarded_page() { munmap(begin_, 2 * size); }
    char *end() const { return begin_ + size; }

  private:
    static constexpr size_t size = 65536; // a multiple of the page size of every system
    char *begin_;
};

TEST_P(VectorScan, ReadsOnlyPaddingAfterText) {
    const guarded_page page;
    for (size_t length = 0; length <= 100; ++length) {
        char *const text = page.end() - utl_padding - length;
        memset(text, 'x', length + utl_padding);
        EXPECT_EQ(utl_ScanLine(text, length).length, length);
        EXPECT_EQ(utl_ScanLineRun(text, length, 510, 10).lines, 0U);
        EXPECT_EQ(utl_ScanLineRunScalar(text, length, 510, 10).lines, 0U);
        if (length > 0) text[length / 2] = '\n';
        EXPECT_EQ(utl_ScanLine(text, length).length, length / 2);
        EXPECT_EQ(utl_ScanLineRun(text, length, 510, 10).lines, length > 0 ? 1U : 0U);
    }
}
#endif

TEST_P(VectorScan, VectorFormScansLikeScalarForm) {
    std::mt19937_64 random(16);
    for (int round = 0; round < 30000; ++round) {
        const size_t most = random() % 80;
        const std::string text = random_text(&random, most, 1 + random() % 60);
        const utl_line_scan plain = utl_ScanLineScalar(text.data(), most);
        const utl_line_scan vector = utl_ScanLine(text.data(), most);
        ASSERT_EQ(vector.length, plain.length) << testing::PrintToString(text);
        ASSERT_EQ(vector.ended, plain.ended) << testing::PrintToString(text);
        ASSERT_EQ(vector.has_lt_or_nul, plain.has_lt_or_nul) << testing::PrintToString(text);
    }
}

TEST_P(VectorScan, VectorFormSkipsLikeScalarForm) {
    std::mt19937_64 random(17);
    for (int round = 0; round < 30000; ++round) {
        const size_t length = random() % 300;
        const std::string text = random_text(&random, length, 1 + random() % 60);
        const size_t limit = 1 + random() % 60;
        const size_t most = 1 + random() % 12;
        const utl_line_run plain = utl_ScanLineRunScalar(text.data(), length, limit, most);
        const utl_line_run vector = utl_ScanLineRun(text.data(), length, limit, most);
        ASSERT_EQ(vector.lines, plain.lines)
            << testing::PrintToString(text) << limit << " " << most;
        ASSERT_EQ(vector.length, plain.length)
            << testing::PrintToString(text) << limit << " " << most;
    }
}

} // namespace
