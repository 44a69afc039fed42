// unit/text_columns_test.cpp - columns of text in a terminal.
#include "text/text_columns.h"

#include "text/utf8.h"

#include <gtest/gtest.h>

namespace {

TEST(text_columns, CountsCharactersNotBytes) {
    EXPECT_EQ(utl_CountColumns(""), 0);
    EXPECT_EQ(utl_CountColumns("Force (N)"), 9);
    EXPECT_EQ(utl_CountColumns("H\u00F6he \u00B5m"), 7);
    EXPECT_EQ(utl_CountColumns("\uFFFD"), 1);
}

TEST(text_columns, CountsWideCharactersTwice) {
    EXPECT_EQ(utl_CountColumns("\u8ECA\u4F53"), 4);
    EXPECT_EQ(utl_CountColumns("\uD55C\uAE00"), 4);
    EXPECT_EQ(utl_CountColumns("\uFF21"), 2);
    EXPECT_EQ(utl_CountColumns("\U0001F600"), 2);
    EXPECT_EQ(utl_CountColumns("\U00020000"), 2);
}

TEST(text_columns, CountsNoColumnForMarks) {
    EXPECT_EQ(utl_CountColumns("u\u0308"), 1);
    EXPECT_EQ(utl_CountColumns("a\u200Bb\uFEFF"), 2);
    EXPECT_EQ(utl_CountColumns("a\u202Eb\u202F"), 3); // the last is a narrow space
}

TEST(text_columns, CutsAtTheEnd) {
    EXPECT_EQ(utl_CutToColumns("bump", 4, "\u2026"), "bump");
    EXPECT_EQ(utl_CutToColumns("bumper", 4, "\u2026"), "bum\u2026");
    EXPECT_EQ(utl_CutToColumns("bumper", 4, "..."), "b...");
    EXPECT_EQ(utl_CutToColumns("travel", 2, "..."), "tr");
    EXPECT_EQ(utl_CutToColumns("bumper", 0, "..."), "");
}

TEST(text_columns, NeverSplitsWideCharacters) {
    EXPECT_EQ(utl_CutToColumns("\u8ECA\u4F53\u9AD8", 4, "\u2026"), "\u8ECA\u2026");
    EXPECT_EQ(utl_CutToColumns("\u8ECA\u4F53\u9AD8", 5, "\u2026"), "\u8ECA\u4F53\u2026");
    EXPECT_EQ(utl_CutToColumns("u\u0308u\u0308u\u0308", 2, "\u2026"), "u\u0308\u2026");
}

TEST(text_columns, DropsCharactersThatReverseText) {
    EXPECT_EQ(utl_DropInvisible("a\u202Eb\u2066c\u200F"), "abc");
    EXPECT_EQ(utl_DropInvisible("u\u0308"), "u\u0308");
}

TEST(text_columns, ReplacesOtherCharactersInAscii) {
    EXPECT_EQ(utl_ToAscii("H\u00F6he \u8ECA"), "H?he ?");
    EXPECT_EQ(utl_ToAscii("plain ~"), "plain ~");
}

} // namespace
