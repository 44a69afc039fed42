// unit/product_log_test.cpp - usage file and product log.
#include "util/product_log.h"

#include "support.h"

#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class product_log : public fresh_run {
  protected:
    void SetUp() override {
        fresh_run::SetUp();
        folder = testing::TempDir() + "crv_unit_log_" + std::to_string(getpid());
        mkdir(folder.c_str(), 0700);
        program = folder + "/crv.exe";
    }
    void TearDown() override {
        for (const char *name : {"/crv.use", "/crv.log"}) remove((folder + name).c_str());
        rmdir(folder.c_str());
        fresh_run::TearDown();
    }

    int report(std::vector<std::string> arguments, const char *comment, int action,
               int debug_level = 0) {
        arguments.insert(arguments.begin(), program);
        std::vector<char *> argv;
        for (std::string &argument : arguments) argv.push_back(argument.data());
        int result = -1;
        out = stdout_of([&] {
            result = utl_Report(static_cast<int>(argv.size()), argv.data(), "crv", comment, action,
                                debug_level);
        });
        return result;
    }

    void type(const std::string &text) {
        const text_file typed(text, ".txt");
        ASSERT_TRUE(freopen(typed.path(), "r", stdin));
    }

    std::string folder, program, out;
};

std::string today() {
    const time_t now = time(nullptr);
    char text[32];
    strftime(text, sizeof text, "%Y-%m-%d", localtime(&now));
    return text;
}

std::string head() {
    return today() + " NT_User    Version: (2003.0.15.0) - (Windows_NT 0.0 os-0.wi-0)  Command = (";
}

TEST_F(product_log, PathIsCutTo255Characters) {
    program = std::string(300, 'a');
    report({}, nullptr, 2, 501);
    EXPECT_EQ(out.substr(0, out.find('\n')),
              "%utl_501-v-val, filename = \"" + std::string(255, 'a') + "\"");

    // Cut within the name of the directory, the path ends before that name.
    program = folder + "/" + std::string(250, 'd') + "/crv.exe";
    ASSERT_LT(folder.size(), 255U);
    EXPECT_EQ(report({"-u"}, nullptr, 100), 1);
    EXPECT_EQ(bytes_of(folder + "/crv.use"), head() + "-u, )\n");
}

TEST_F(product_log, CommaFollowsEveryArgument) {
    EXPECT_EQ(report({"-u", "-r", "1,2"}, nullptr, 100), 1);
    EXPECT_EQ(bytes_of(folder + "/crv.use"), head() + "-u, -r, 1,2, )\n");
    EXPECT_EQ(out, "");
}

TEST_F(product_log, MissingArgumentsLeaveEmptyParentheses) {
    EXPECT_EQ(report({}, nullptr, 100), 1);
    EXPECT_EQ(bytes_of(folder + "/crv.use"), head() + ")\n");
}

TEST_F(product_log, CommentFollowsUsageLine) {
    EXPECT_EQ(report({"%s"}, "100%n", 100), 1);
    EXPECT_EQ(report({}, "", 100), 1);
    EXPECT_EQ(bytes_of(folder + "/crv.use"), head() + "%s, ) 100%n\n" + head() + ") \n");
}

TEST_F(product_log, UnwritableUsageFileIsSilent) {
    program = "/nowhere/crv";
    EXPECT_EQ(stderr_of([&] { EXPECT_EQ(report({}, nullptr, 100), 0); }), "");
    EXPECT_EQ(out, "");
}

TEST_F(product_log, LogIncludesEmptyCommentLine) {
    type("first line\nsecond %s\n\nnot read\n");
    EXPECT_EQ(report({}, nullptr, 1), 1);
    EXPECT_EQ(bytes_of(folder + "/crv.log"),
              "\n" + head() + "Log Entry)\n > first line\n > second %s\n > \n");
    EXPECT_EQ(out, "\n      Enter comment in the product log, <return> when finished:\n"
                   "  crv >   crv >   crv > %utl_501-s-fin, Completed entry in log file " +
                       folder + "/crv.log\n");
}

TEST_F(product_log, EofEndsComment) {
    type("only line");
    EXPECT_EQ(report({}, nullptr, 1), 1);
    EXPECT_EQ(bytes_of(folder + "/crv.log"), "\n" + head() + "Log Entry)\n > only line\n > \n");
}

TEST_F(product_log, CommentIsReadIn127Characters) {
    const std::string begin = "\n" + head() + "Log Entry)\n > ";
    const auto c = [](size_t count) { return std::string(count, 'c'); };
    const std::string wanted[][2] = {{c(125), c(125) + "\n > \n"},
                                     {c(126), c(126) + "\n > \n"},
                                     {c(127), c(127) + " > \n > \n"},
                                     {c(128), c(127) + " > c\n > \n"},
                                     {c(300), c(127) + " > " + c(127) + " > " + c(46) + "\n > \n"}};
    for (const auto &[typed, written] : wanted) {
        type(typed + "\n\n");
        EXPECT_EQ(report({}, nullptr, 1), 1);
        EXPECT_EQ(bytes_of(folder + "/crv.log"), begin + written);
        remove((folder + "/crv.log").c_str());
    }
    type(c(300) + "\n\n");
    report({}, nullptr, 1);
    EXPECT_THAT(out, testing::HasSubstr("finished:\n  crv >   crv >   crv >   crv > %utl_501"));
}

TEST_F(product_log, SecondEntryFollowsFirst) {
    type("one\n\n");
    report({}, nullptr, 1);
    type("two\n\n");
    report({}, nullptr, 1);
    const std::string begin = "\n" + head() + "Log Entry)\n > ";
    EXPECT_EQ(bytes_of(folder + "/crv.log"), begin + "one\n > \n" + begin + "two\n > \n");
}

TEST_F(product_log, UsagePipeDoesNotBlock) {
    ASSERT_EQ(mkfifo((folder + "/crv.use").c_str(), 0600), 0);
    EXPECT_EQ(report({}, nullptr, 100), 0);
}

TEST_F(product_log, AMissingLogIsReported) {
    EXPECT_EQ(stderr_of([&] { EXPECT_EQ(report({}, nullptr, 0), 1); }),
              " utl_501-e-fopen read, .log: No such file or directory\n");
}

TEST_F(product_log, UnwritableLogIsReported) {
    program = "/nowhere/crv";
    EXPECT_EQ(stderr_of([&] { EXPECT_EQ(report({}, nullptr, 1), 0); }),
              " utl_501-e-fopen append, .log: No such file or directory\n");
}

TEST_F(product_log, FullDiskLosesCommentWithReport) {
    ASSERT_EQ(symlink("/dev/full", (folder + "/crv.log").c_str()), 0);
    for (const size_t length : {size_t{1}, size_t{10'000}}) {
        type(std::string(length, 'c') + "\n\n");
        EXPECT_EQ(stderr_of([&] { EXPECT_EQ(report({}, nullptr, 1), 0); }),
                  " utl_501-e-fwrite, .log: No space left on device\n");
        EXPECT_THAT(out, testing::Not(testing::HasSubstr("Completed")));
    }
}

TEST_F(product_log, TheLogIsShown) {
    std::ofstream(folder + "/crv.log") << "an entry\n%s\n";
    EXPECT_EQ(report({}, nullptr, 0), 1);
    EXPECT_EQ(out, "an entry\n%s\n");
}

TEST_F(product_log, AnUnknownActionIsComplainedOf) {
    for (const int action : {2, -1, 99, 101}) {
        EXPECT_EQ(report({}, nullptr, action), 0);
        EXPECT_EQ(out, "%utl_501-w-val, utl_Report() called with invalid action code.\n");
    }
}

TEST_F(product_log, TheBaseNameFollowsTheInvocation) {
    const char *const cases[][2] = {{"/opt/bin/crv.exe", "/opt/bin/crv"},
                                    {"crv.exe", "crv"},
                                    {"crv", "crv"},
                                    {"plot", "plot"},
                                    {"crv/prog", "crv/crv"},
                                    {"./plot", "./crv"},
                                    {"crvx", "crv"},
                                    {"C:\\bin\\crv.exe", "C:\\bin\\crv.exe"},
                                    {"/", "/crv"},
                                    {"", ""}};
    for (const auto &[path, base] : cases) {
        program = path;
        report({}, nullptr, 2, 501);
        EXPECT_THAT(
            out, testing::StartsWith("%utl_501-v-val, filename = \"" + std::string(base) + "\"\n"));
    }
}

} // namespace
