// unit/utf8_test.cpp - UTF-8 characters, and text that is safe to show.
#include "text/utf8.h"

#include "support.h"

#include <string>
#include <string_view>

namespace {

using namespace std::string_literals;

const std::string replaced = "\xEF\xBF\xBD";

TEST(Utf8, ValidTextIsKept) {
    // One character of each length, and the first and last of the longer ones.
    for (const char *text :
         {"Time (sec)", "", "\xC2\xA0", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
          "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF",
          "Kr\xC3\xA4"
          "fte <&\"'>"})
        EXPECT_EQ(utl_CleanText(text), text);
}

TEST(Utf8, EachInvalidByteIsReplaced) {
    EXPECT_EQ(utl_CleanText("Kr\xE4"
                            "fte"),
              "Kr" + replaced + "fte");
    EXPECT_EQ(utl_CleanText("\x80\xBF\xFF"), replaced + replaced + replaced);
    EXPECT_EQ(utl_CleanText("a\xC3"), "a" + replaced); // cut character
    EXPECT_EQ(utl_CleanText("\xE2\x82x"), replaced + replaced + "x");
    EXPECT_EQ(utl_CleanText("\xC0\xAF"), replaced + replaced); // overlong
    EXPECT_EQ(utl_CleanText("\xE0\x9F\xBF"), replaced + replaced + replaced);
    EXPECT_EQ(utl_CleanText("\xF0\x8F\xBF\xBF"), replaced + replaced + replaced + replaced);
    EXPECT_EQ(utl_CleanText("\xED\xA0\x80"), replaced + replaced + replaced); // surrogate
    EXPECT_EQ(utl_CleanText("\xF4\x90\x80\x80"), replaced + replaced + replaced + replaced);
}

TEST(Utf8, ControlCharactersAreReplaced) {
    EXPECT_EQ(utl_CleanText("\x1B[31mred\n"), replaced + "[31mred" + replaced);
    EXPECT_EQ(utl_CleanText("\t\r\x7F"), replaced + replaced + replaced);
    EXPECT_EQ(utl_CleanText("a\0b"s), "a" + replaced + "b");
    EXPECT_EQ(utl_CleanText("\xC2\x80\xC2\x9F"), replaced + replaced); // U+0080, U+009F
    EXPECT_EQ(utl_CleanText(" ~"), " ~");
}

TEST(Utf8, LengthIsThatOfTheFirstCharacter) {
    EXPECT_EQ(utl_Utf8Length("ab"), 1U);
    EXPECT_EQ(utl_Utf8Length("\xC3\xA4x"), 2U);
    EXPECT_EQ(utl_Utf8Length("\xE2\x82\xAC"), 3U);
    EXPECT_EQ(utl_Utf8Length("\xF0\x9F\x98\x80"), 4U);
    EXPECT_EQ(utl_Utf8Length("\xE2\x82"), 0U);
    EXPECT_EQ(utl_Utf8Length(""), 0U);
    EXPECT_EQ(utl_Utf8Length("\0"s), 1U);
}

} // namespace
