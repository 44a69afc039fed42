// unit/stdio_init_test.cpp - set-up of the standard streams, each in a process of its own.
#include "system/stdio_init.h"

#include "system/console.h"

#include "support.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr int passed = 7;

void leave(bool good) { _exit(good ? passed : 1); }

int lowest_free_descriptor() {
    const int file = open("/dev/null", O_RDONLY);
    close(file);
    return file;
}

bool is_open_on_null_device(int file) {
    struct stat wanted = {};
    struct stat opened = {};
    return stat("/dev/null", &wanted) == 0 && fstat(file, &opened) == 0 &&
           opened.st_rdev == wanted.st_rdev && (fcntl(file, F_GETFL) & O_ACCMODE) == O_RDWR;
}

void close_streams_and_set_up() {
    const int next = lowest_free_descriptor();
    for (int file = 0; file <= STDERR_FILENO; ++file) close(file);
    utl_SetUpRuntime();
    for (int file = 0; file <= STDERR_FILENO; ++file)
        if (!is_open_on_null_device(file)) leave(false);
    leave(lowest_free_descriptor() == next);
}

TEST(StdioInit, ReopensClosedStandardStreams) {
    EXPECT_EXIT(close_streams_and_set_up(), testing::ExitedWithCode(passed), "");
}

// Only standard output counts: messages on standard error are no result.
void close_and_set_up(int closed) {
    close(closed);
    utl_SetUpRuntime();
    leave(utl_IsOutputClosed() == (closed == STDOUT_FILENO));
}

TEST(StdioInit, NotesClosedStandardOutput) {
    for (int file = 0; file <= STDERR_FILENO; ++file)
        EXPECT_EXIT(close_and_set_up(file), testing::ExitedWithCode(passed), "") << file;
}

void set_up_with_files(const char *input, const char *output) {
    if (!freopen(input, "r", stdin) || !freopen(output, "w", stdout)) leave(false);
    const int next = lowest_free_descriptor();
    utl_SetUpRuntime();
    if (lowest_free_descriptor() != next) leave(false);
    printf("%c", getchar());
    fflush(stdout);
    leave(bytes_of(output) == "i");
}

TEST(StdioInit, KeepsOpenStandardStreams) {
    const text_file input("input");
    const text_file output("");
    EXPECT_EXIT(set_up_with_files(input.path(), output.path()), testing::ExitedWithCode(passed),
                "");
}

void print_after_set_up(const char *output) {
    if (!freopen(output, "w", stdout)) leave(false);
    utl_SetUpRuntime();
    printf("line\nrest");
    leave(bytes_of(output) == "line\n");
}

TEST(StdioInit, ShowsEachLineAtOnce) {
    const text_file output("");
    EXPECT_EXIT(print_after_set_up(output.path()), testing::ExitedWithCode(passed), "");
}

} // namespace
