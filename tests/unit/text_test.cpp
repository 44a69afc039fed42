// unit/text_test.cpp - fields, fixed text and number conversion, compared with strtod and atoi.
#include "text/fields.h"
#include "text/fixed_text.h"
#include "text/number_reader.h"

#include "support.h"

#include <bit>
#include <cmath>
#include <random>

namespace {

TEST(Text, CopyIsCutToField) {
    char field[4];
    utl_CopyText(field, "abcdef");
    EXPECT_STREQ(field, "abc");
    utl_CopyText(field, "xy");
    EXPECT_STREQ(field, "xy");
    utl_CopyText(field, "");
    EXPECT_STREQ(field, "");
}

TEST(Text, TrimmingTakesBlanksOnly) {
    EXPECT_EQ(utl_TrimEnd("ab  "), "ab");
    EXPECT_EQ(utl_TrimEnd("ab \t"), "ab \t");
    EXPECT_EQ(utl_TrimEnd("ab \n"), "ab \n");
    EXPECT_EQ(utl_TrimEnd("   "), "");
    EXPECT_EQ(utl_TrimEnd(""), "");
}

std::vector<std::string> fields_of(std::string_view rest) {
    std::vector<std::string> fields;
    std::string_view field;
    while (utl_NextField(&rest, &field)) fields.emplace_back(field);
    return fields;
}

TEST(Text, BlanksAndCommasSeparateFields) {
    EXPECT_EQ(fields_of(" a,b ,, c\td "), (std::vector<std::string>{"a", "b", "c\td"}));
    EXPECT_TRUE(fields_of(" , ").empty());
    EXPECT_TRUE(fields_of("").empty());
}

// Expects the same bits, or NaN for both.
void expect_same(double value, double wanted, const std::string &text) {
    if (std::isnan(wanted)) {
        EXPECT_TRUE(std::isnan(value)) << text;
    } else {
        EXPECT_EQ(std::bit_cast<uint64_t>(value), std::bit_cast<uint64_t>(wanted)) << text;
    }
}

TEST(Text, NumbersAreReadAsByAtof) {
    for (const char *text : {"",
                             "abc",
                             "1",
                             "-1",
                             "+1",
                             "  12.5x",
                             "\t\n-3e2",
                             "1e",
                             "1e+",
                             "1.e5",
                             ".5",
                             "-.5",
                             ".",
                             "-",
                             "+",
                             "+-1",
                             "0x10",
                             "-0x1p3",
                             "0x",
                             "0xg",
                             "inf",
                             "-Infinity",
                             "nan",
                             "nan(1)",
                             "1e400",
                             "-1e400",
                             "1e-400",
                             "4.9e-324",
                             "2e-308",
                             "1e308",
                             "1d5",
                             "1E5",
                             "0.1",
                             "1,5",
                             "- 5",
                             "-0",
                             "-0.0",
                             "1.7976931348623157e308",
                             "123456789012345678901234567890",
                             "0.000000000000000000000000000001234",
                             "9007199254740993"})
        expect_same(utl_ToDouble(text), atof(text), text);
}

TEST(Text, ReadsRandomNumbersLikeAtof) {
    std::mt19937_64 random(38);
    const std::string characters = "0123456789.eE+-x ";
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (size_t length = random() % 24; length > 0; --length)
            text += characters[random() % characters.size()];
        expect_same(utl_ToDouble(text), atof(text.c_str()), text);
        char printed[64];
        snprintf(printed, sizeof printed, "%.*g", static_cast<int>(1 + random() % 17),
                 std::bit_cast<double>(static_cast<uint64_t>(random())));
        expect_same(utl_ToDouble(printed), atof(printed), printed);
    }
}

// Fields of all lengths, some of them longer than the 64 characters of one mask.
std::string random_line(std::mt19937_64 *random) {
    const std::string characters = "0123456789012345678901234567890123456789...,,    eE+-x";
    std::string line;
    for (size_t length = (*random)() % 200; length > 0; --length) {
        const size_t repeats = (*random)() % 50 == 0 ? (*random)() % 140 : 1;
        line += std::string(repeats, characters[(*random)() % characters.size()]);
    }
    return line;
}

TEST(Text, TakesFieldsLikeScalarForm) {
    std::mt19937_64 random(39);
    for (int round = 0; round < 50000; ++round) {
        const padded_text line(random_line(&random));
        std::string_view rest = line.text();
        std::string_view field;
        utl_line_fields fields = utl_SplitLine(line.text());
        utl_line_fields numbers = fields;
        while (utl_NextField(&rest, &field)) {
            ASSERT_EQ(utl_TakeField(&fields), field) << line.text();
            double number = -1;
            ASSERT_TRUE(utl_TakeNumber(&numbers, &number)) << line.text();
            expect_same(number, atof(std::string(field).c_str()), std::string(field));
        }
        for (int k = 0; k < 2; ++k) ASSERT_EQ(utl_TakeField(&fields), "") << line.text();
        double number = -1;
        EXPECT_FALSE(utl_TakeNumber(&numbers, &number));
        EXPECT_EQ(number, 0.0);
    }
}

TEST(Text, AWholeNumberIsDigitsUpToItsLimit) {
    for (const char *text : {"0", "7", "007", "4294967295"})
        EXPECT_TRUE(utl_IsWholeNumber(text, UINT32_MAX)) << text;
    for (const char *text :
         {"", "-1", "+1", " 1", "1 ", "1.0", "4294967296", "99999999999999999999"})
        EXPECT_FALSE(utl_IsWholeNumber(text, UINT32_MAX)) << text;
    EXPECT_TRUE(utl_IsWholeNumber("30", 30));
    EXPECT_FALSE(utl_IsWholeNumber("31", 30));
}

TEST(Text, TrimsBothEndsOfALine) {
    EXPECT_EQ(utl_TrimLine(" \t a b \r\n"), "a b");
    EXPECT_EQ(utl_TrimLine("a"), "a");
    EXPECT_EQ(utl_TrimLine(" \r\n"), "");
    EXPECT_EQ(utl_TrimLine(""), "");
}

TEST(Text, TakesNumbersInAnyOrder) {
    const padded_text line(" 1,2  3 ,4" + std::string(70, ' ') + "5 ");
    utl_line_fields fields = utl_SplitLine(line.text());
    for (const unsigned ordinal : {3U, 4U, 4U, 1U, 2U, 5U, 6U, 5U, 7U, 1U}) {
        double number = -1;
        EXPECT_EQ(utl_TakeNumberAt(&fields, ordinal, &number), ordinal <= 5);
        EXPECT_EQ(number, ordinal <= 5 ? ordinal : 0);
    }
    double numbers[6] = {-1, -1, -1, -1, -1, -1};
    EXPECT_EQ(utl_TakeNumbers(&fields, numbers), 5);
    for (int k = 0; k < 6; ++k) EXPECT_EQ(numbers[k], k < 5 ? k + 1 : 0);
}

TEST(Text, ANumberEndsWithItsText) {
    EXPECT_EQ(utl_ToDouble(std::string_view("12345").substr(0, 2)), 12.0);
    EXPECT_EQ(utl_ToDouble(std::string_view("+12345").substr(0, 3)), 12.0);
    EXPECT_EQ(utl_ToDouble(std::string_view("0x1F").substr(0, 3)), 1.0);
    EXPECT_EQ(utl_ToInt(std::string_view("12345").substr(0, 2)), 12);
}

double number_in_line(const std::string &field) {
    const padded_text line(field + " ");
    utl_line_fields fields = utl_SplitLine(line.text());
    double number = -1;
    EXPECT_TRUE(utl_TakeNumber(&fields, &number)) << field;
    return number;
}

// The digits of these wrap to 0 or 1 in 64 bits.
TEST(Text, ReadsMoreThanNineteenDigits) {
    for (const char *text :
         {"18446744073709551616", "18446744073709551617", "0.18446744073709551617",
          "1844674407.3709551617", "00000000.0000000018446744073709551617"}) {
        expect_same(utl_ToDouble(text), atof(text), text);
        expect_same(number_in_line(text), atof(text), text);
    }
}

// What atoi returns where a long has 64 bits; elsewhere it clamps a value to 32 bits.
int atoi_by_64_bits(const char *text) {
    return static_cast<int>(static_cast<uint32_t>(strtoll(text, nullptr, 10)));
}

TEST(Text, ReadsNothingAfterCutText) {
    for (const std::string &text : std::vector<std::string>{
             "1234567890123456789012345678.901234567890e123", "-0.12345678901234567890123",
             "1.5e-1234567", "+12.5e+123", "0x1F.8p+12", "-infinity", "nan(123)", "123,456"}) {
        for (size_t length = 0; length <= text.size(); ++length) {
            const std::string cut = text.substr(0, length);
            const std::string_view view = std::string_view(text).substr(0, length);
            expect_same(utl_ToDouble(view), atof(cut.c_str()), cut);
            EXPECT_EQ(utl_ToInt(view), atoi_by_64_bits(cut.c_str())) << cut;
            const padded_text line(text);
            utl_line_fields fields = utl_SplitLine(line.text().substr(0, length));
            double number = -1;
            if (utl_TakeNumber(&fields, &number))
                expect_same(number, atof(cut.substr(0, cut.find(',')).c_str()), cut);
        }
    }
}

TEST(Text, ReadsOtherCharactersAsEndOfNumber) {
    for (char c = '!'; c <= '~'; ++c) {
        if (c == ',') continue;
        for (const std::string &text :
             {std::string("1") + c + "5", std::string("-12") + c + "25e+1", c + std::string("1.5"),
              std::string("1.5") + c + "+12", std::string("1.5e") + c + "12"})
            expect_same(number_in_line(text), atof(text.c_str()), text);
    }
}

TEST(Text, ReadsLongDecimalBeforeOtherCharacters) {
    const std::string number = "1" + std::string(200, '0') + "." + std::string(3000, '0') + "e-100";
    EXPECT_EQ(utl_ToDouble(number), 1e100);
    EXPECT_EQ(utl_ToDouble(number + "z"), 1e100);
    EXPECT_EQ(utl_ToDouble("-" + number), -1e100);
}

TEST(Text, ReadsLongLeadingZeros) {
    const std::string zeros(3000, '0');
    EXPECT_EQ(utl_ToDouble(zeros + "5"), 5.0);
    EXPECT_EQ(utl_ToDouble("-" + zeros + "5"), -5.0);
}

// Where the line limit cuts a line, its text continues after the end.
TEST(Text, CutNumberIsNotContinued) {
    const struct {
        std::string line;
        size_t length;
        double number;
    } cuts[] = {{"1e5 ", 2, 1.0},
                {"1e+5 ", 3, 1.0},
                {"-7.5E-3 ", 6, -7.5},
                {"12.5 ", 2, 12.0},
                {"12.5 ", 3, 12.0}};
    for (const auto &cut : cuts) {
        const padded_text line(cut.line);
        utl_line_fields fields = utl_SplitLine(line.text().substr(0, cut.length));
        double number = -1;
        EXPECT_TRUE(utl_TakeNumber(&fields, &number));
        EXPECT_EQ(number, cut.number) << cut.line << " cut to " << cut.length;
    }
}

TEST(Text, IntegersAreReadAsByAtoi) {
    for (const char *text : {"",
                             "x",
                             "5",
                             "-5",
                             "+5",
                             " 7.9",
                             "\t8",
                             "\n8",
                             "\v8",
                             "\f8",
                             "\r8",
                             "\b8",
                             "\0168",
                             "--1",
                             "2147483647",
                             "2147483648",
                             "-2147483649",
                             "4294967295",
                             "9223372036854775800",
                             "-9223372036854775801",
                             "9223372036854775807",
                             "9223372036854775808",
                             "-9223372036854775808",
                             "-9223372036854775809",
                             "99999999999999999999999",
                             "0x10",
                             "1e3",
                             "- 5"})
        EXPECT_EQ(utl_ToInt(text), atoi_by_64_bits(text)) << text;
}

} // namespace
