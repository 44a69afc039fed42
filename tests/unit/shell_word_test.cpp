// unit/shell_word_test.cpp
#include "util/shell_word.h"

#include "support.h"

namespace {

TEST(ShellWord, HarmlessTextStays) {
    EXPECT_EQ(utl_ShellWord("dir/run-1_a.req"), "dir/run-1_a.req");
}

TEST(ShellWord, OthersAreQuoted) {
    EXPECT_EQ(utl_ShellWord(""), "''");
    EXPECT_EQ(utl_ShellWord("two words"), "'two words'");
    EXPECT_EQ(utl_ShellWord("$HOME;`x`\"\\*~"), "'$HOME;`x`\"\\*~'");
    EXPECT_EQ(utl_ShellWord("it's"), "'it'\\''s'");
    EXPECT_EQ(utl_ShellWord("\xC3\xA9"), "'\xC3\xA9'");
}

TEST(ShellWord, HiddenBytesAreOctal) {
    EXPECT_EQ(utl_ShellWord("a\nb\x1B\xFF"), "'a'$'\\012''b'$'\\033\\377'");
    EXPECT_EQ(utl_ShellWord("\xC2\x9B"), "$'\\302\\233'"); // a control character of two bytes
}

// The shell reads back every byte that a name can have.
TEST(ShellWord, ShellReadsTheSameText) {
    std::string text;
    for (int c = 1; c < 256; ++c) text += static_cast<char>(c);
    text += "''x";
    const text_file script("printf %s " + utl_ShellWord(text) + "\n", ".sh");
    FILE *out = popen((std::string("bash ") + script.path()).c_str(), "r");
    ASSERT_TRUE(out);
    std::string back;
    for (int c = getc(out); c != EOF; c = getc(out)) back += static_cast<char>(c);
    pclose(out);
    EXPECT_EQ(back, text);
}

} // namespace
