// unit/output_file_test.cpp - outputs that appear whole or not at all.
#include "system/output_file.h"

#include "support.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>

namespace {

namespace fs = std::filesystem;

class output_file : public testing::Test {
  protected:
    void SetUp() override {
        std::string name = testing::TempDir() + "crv_output_XXXXXX";
        directory = mkdtemp(name.data());
    }
    void TearDown() override { fs::remove_all(directory); }

    std::string in_directory(const char *name) const { return (directory / name).string(); }
    size_t entries() const {
        return static_cast<size_t>(std::distance(fs::directory_iterator(directory), {}));
    }

    fs::path directory;
    utl_output_file file;
};

TEST_F(output_file, AppearsWhenItIsClosed) {
    const std::string path = in_directory("a.csv");
    ASSERT_TRUE(utl_OpenOutput(path.c_str(), &file));
    fputs("whole\n", file.stream);
    fflush(file.stream);
    EXPECT_FALSE(fs::exists(path));
    EXPECT_TRUE(utl_CloseOutput(&file));
    EXPECT_EQ(bytes_of(path), "whole\n");
    EXPECT_EQ(entries(), 1U);
    struct stat status = {};
    stat(path.c_str(), &status);
    const mode_t mask = umask(0);
    umask(mask);
    EXPECT_EQ(status.st_mode & 0777U, 0666U & ~mask);
}

TEST_F(output_file, DiscardedOutputLeavesTheOldFile) {
    const std::string path = in_directory("a.csv");
    std::ofstream(path) << "old";
    ASSERT_TRUE(utl_OpenOutput(path.c_str(), &file));
    fputs("new", file.stream);
    utl_DiscardOutput(&file);
    EXPECT_EQ(bytes_of(path), "old");
    EXPECT_EQ(entries(), 1U);
}

TEST_F(output_file, KeepsPermissionsOfTheOldFile) {
    const std::string path = in_directory("a.csv");
    std::ofstream(path) << "old";
    chmod(path.c_str(), 0640);
    ASSERT_TRUE(utl_OpenOutput(path.c_str(), &file));
    EXPECT_TRUE(utl_CloseOutput(&file));
    struct stat status = {};
    stat(path.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    EXPECT_EQ(bytes_of(path), "");
}

TEST_F(output_file, WritesThroughALink) {
    std::ofstream(in_directory("target")) << "old";
    fs::create_symlink("target", in_directory("link"));
    ASSERT_TRUE(utl_OpenOutput(in_directory("link").c_str(), &file));
    fputs("new", file.stream);
    EXPECT_TRUE(utl_CloseOutput(&file));
    EXPECT_TRUE(fs::is_symlink(in_directory("link")));
    EXPECT_EQ(bytes_of(in_directory("target")), "new");
}

TEST_F(output_file, WritesAPipeDirectly) {
    const std::string path = in_directory("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::string got;
    std::thread reader([&] { got = bytes_of(path); });
    ASSERT_TRUE(utl_OpenOutput(path.c_str(), &file));
    fputs("through", file.stream);
    EXPECT_TRUE(utl_CloseOutput(&file));
    reader.join();
    EXPECT_EQ(got, "through");
    EXPECT_TRUE(fs::is_fifo(path));
}

TEST_F(output_file, FailedWriteIsFound) {
    ASSERT_TRUE(utl_OpenOutput("/dev/full", &file));
    fputs("lost", file.stream);
    EXPECT_FALSE(utl_CloseOutput(&file));
    EXPECT_EQ(errno, ENOSPC);
}

TEST_F(output_file, MissingDirectoryIsAnError) {
    EXPECT_FALSE(utl_OpenOutput(in_directory("nix/a.csv").c_str(), &file));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(utl_OpenOutput(directory.c_str(), &file));
    EXPECT_EQ(errno, EISDIR);
}

// Runs `act` in a process of its own with an open output, and returns the status of waitpid.
template <typename action> int status_of_writer(const std::string &path, action act) {
    const pid_t writer = fork();
    if (writer == 0) {
        utl_output_file output;
        if (!utl_OpenOutput(path.c_str(), &output)) _exit(99);
        fputs("half", output.stream);
        fflush(output.stream);
        act(&output);
        _exit(98);
    }
    int status = 0;
    waitpid(writer, &status, 0);
    return status;
}

TEST_F(output_file, SignalLeavesTheOldFile) {
    const std::string path = in_directory("a.csv");
    std::ofstream(path) << "old";
    for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
        const auto inherited = signal(number, SIG_DFL); // ignored by a run in the background
        const int status = status_of_writer(path, [=](utl_output_file *) { raise(number); });
        signal(number, inherited);
        EXPECT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(WTERMSIG(status), number);
        EXPECT_EQ(bytes_of(path), "old");
        EXPECT_EQ(entries(), 1U);
    }
}

TEST_F(output_file, IgnoredSignalStaysIgnored) {
    const std::string path = in_directory("a.csv");
    signal(SIGHUP, SIG_IGN);
    const int status = status_of_writer(path, [](utl_output_file *output) {
        raise(SIGHUP);
        _exit(utl_CloseOutput(output) ? 0 : 1);
    });
    signal(SIGHUP, SIG_DFL);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(bytes_of(path), "half");
}

TEST_F(output_file, ExitLeavesTheOldFile) {
    const std::string path = in_directory("a.csv");
    std::ofstream(path) << "old";
    const int status = status_of_writer(path, [](utl_output_file *) { exit(3); });
    EXPECT_EQ(WEXITSTATUS(status), 3);
    EXPECT_EQ(bytes_of(path), "old");
    EXPECT_EQ(entries(), 1U);
}

TEST_F(output_file, LimitOfFileSizeIsAnError) {
    const std::string path = in_directory("a.csv");
    const int status = status_of_writer(path, [](utl_output_file *output) {
        const rlimit limit = {8, 8};
        setrlimit(RLIMIT_FSIZE, &limit);
        fputs("too much for the limit", output->stream);
        const bool closed = utl_CloseOutput(output);
        _exit(!closed && errno == EFBIG ? 0 : 1);
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(entries(), 0U);
}

} // namespace
