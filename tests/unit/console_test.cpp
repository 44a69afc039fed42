// unit/console_test.cpp - answers from standard input, and messages on standard error.
#include "system/console.h"

#include "support.h"

#include <csignal>

namespace {

std::string answer_to(const std::string &typed, size_t size) {
    const text_file file(typed);
    if (!freopen(file.path(), "r", stdin)) return "no standard input";
    char answer[64];
    utl_ReadAnswer(answer, size);
    return answer;
}

TEST(Console, AnswerIsLineWithoutNewline) {
    EXPECT_EQ(answer_to("yes\nno\n", 64), "yes");
    EXPECT_EQ(answer_to("yes\r\n", 64), "yes");
    EXPECT_EQ(answer_to("a\rb", 64), "a\rb");
    EXPECT_EQ(answer_to("a\r", 64), "a\r");
}

TEST(Console, EofIsEmptyAnswer) { EXPECT_EQ(answer_to("", 64), ""); }

// Reads two answers of at most three characters.
void expect_abc_then_nex(const std::string &input) {
    const text_file file(input);
    ASSERT_TRUE(freopen(file.path(), "r", stdin));
    char answer[4];
    utl_ReadAnswer(answer, sizeof answer);
    EXPECT_STREQ(answer, "abc");
    utl_ReadAnswer(answer, sizeof answer);
    EXPECT_STREQ(answer, "nex");
}

TEST(Console, RestOfLongAnswerIsConsumed) { expect_abc_then_nex("abcdefgh\nnext\n"); }

TEST(Console, UnterminatedAnswerEndsAfterMillionCharacters) {
    ASSERT_TRUE(freopen("/dev/zero", "r", stdin));
    char answer[4] = "new";
    utl_ReadAnswer(answer, sizeof answer);
    EXPECT_STREQ(answer, "");
}

// 8192 chunks of 127 characters, after those that fit into the answer.
TEST(Console, DiscardsAtMostAMillionCharacters) {
    expect_abc_then_nex("abc" + std::string(8192 * 127, 'x') + "next\n");
}

TEST(Console, OutputIsFlushedBeforeErrorReport) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    printf("no line end");
    errno = ENOENT;
    EXPECT_EQ(utl_ErrorStream(), stderr);
    EXPECT_EQ(lseek(STDOUT_FILENO, 0, SEEK_CUR), 11);
    printf(", nor here");
    utl_ReportError("report");
    EXPECT_EQ(lseek(STDOUT_FILENO, 0, SEEK_CUR), 21);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "report: No such file or directory\n");
    testing::internal::GetCapturedStdout();
}

TEST(Console, QuittingEndsWithTheStatus) {
    EXPECT_EXIT(utl_Quit(3), testing::ExitedWithCode(3), "");
}

TEST(Console, ReportsFailedCommand) {
    EXPECT_EQ(utl_RunCommand(":"), utl_command_end::succeeded);
    EXPECT_EQ(utl_RunCommand("exit 7"), utl_command_end::failed);
    EXPECT_EQ(utl_RunCommand("kill -9 $$"), utl_command_end::failed);
}

// The system cannot wait for the shell of a process that ignores its children.
TEST(Console, ReportsFailedSystemCall) {
    auto *const before = signal(SIGCHLD, SIG_IGN);
    errno = 0;
    EXPECT_EQ(utl_RunCommand(":"), utl_command_end::not_started);
    EXPECT_EQ(errno, ECHILD);
    signal(SIGCHLD, before);
    EXPECT_EQ(utl_RunCommand(":"), utl_command_end::succeeded);
}

} // namespace
