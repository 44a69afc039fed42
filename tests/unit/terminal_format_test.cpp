// unit/terminal_format_test.cpp - the format of pictures that do not go to a terminal.
#include "terminal/format.h"

#include "support.h"

namespace {

// Variables of the environment that matter; the destructor removes them.
class terminal_format : public testing::Test {
  protected:
    void SetUp() override {
        for (const char *name : names) unsetenv(name);
        stream = tmpfile();
    }
    void TearDown() override {
        for (const char *name : names) unsetenv(name);
        fclose(stream);
    }
    crv_terminal_format choose() { return crv_ChooseFormat(stream); }

    static constexpr const char *names[] = {"COLUMNS",  "LINES", "LC_ALL",
                                            "LC_CTYPE", "LANG",  "NO_COLOR"};
    FILE *stream = nullptr;
};

TEST_F(terminal_format, FileIs80By24) {
    EXPECT_EQ(choose().columns, 80);
    EXPECT_EQ(choose().rows, 24);
    EXPECT_FALSE(choose().colors);
    EXPECT_FALSE(choose().braille);
}

TEST_F(terminal_format, VariablesGiveSize) {
    setenv("COLUMNS", "132", 1);
    EXPECT_EQ(choose().columns, 132);
    EXPECT_EQ(choose().rows, 24);
    setenv("LINES", "50", 1);
    EXPECT_EQ(choose().rows, 50);
}

TEST_F(terminal_format, OtherContentsOfVariablesAreIgnored) {
    for (const char *text : {"", "0", "-5", "wide", "80x", " 90", "4 0"}) {
        setenv("COLUMNS", text, 1);
        EXPECT_EQ(choose().columns, 80) << text;
    }
    setenv("COLUMNS", "99999999999999999999", 1);
    EXPECT_EQ(choose().columns, crv_max_picture_size);
}

TEST_F(terminal_format, LocaleDecidesOnBraille) {
    for (const char *locale : {"C.UTF-8", "de_DE.utf8", "en_US.UTF-8@euro"}) {
        setenv("LANG", locale, 1);
        EXPECT_TRUE(choose().braille) << locale;
    }
    for (const char *locale : {"", "C", "POSIX", "de_DE.ISO-8859-1", "UTF-8", "de_DE.UTF-80"}) {
        setenv("LANG", locale, 1);
        EXPECT_FALSE(choose().braille) << locale;
    }
}

TEST_F(terminal_format, FirstLocaleVariableThatIsNotEmptyCounts) {
    setenv("LANG", "C.UTF-8", 1);
    setenv("LC_CTYPE", "C", 1);
    EXPECT_FALSE(choose().braille);
    setenv("LC_ALL", "C.UTF-8", 1);
    EXPECT_TRUE(choose().braille);
    setenv("LC_ALL", "", 1);
    EXPECT_FALSE(choose().braille);
    setenv("LC_CTYPE", "", 1);
    EXPECT_TRUE(choose().braille);
}

} // namespace
