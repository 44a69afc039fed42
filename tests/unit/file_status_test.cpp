// unit/file_status_test.cpp - file type and identity queries.
#include "system/file_status.h"

#include "support.h"

#include "system/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

TEST(InputFile, CommandsDoNotInheritIt) {
    const text_file file("one");
    const int input = utl_OpenInput(file.path());
    ASSERT_GE(input, 0);
    EXPECT_NE(fcntl(input, F_GETFD) & FD_CLOEXEC, 0);
    close(input);
}

TEST(same_file, AllNamesAreTheSameFile) {
    const text_file file("one");
    const std::string path = file.path();
    const std::string hard_link = path + ".hard";
    const std::string soft_link = path + ".soft";
    ASSERT_EQ(link(path.c_str(), hard_link.c_str()), 0);
    ASSERT_EQ(symlink(path.c_str(), soft_link.c_str()), 0);
    EXPECT_TRUE(utl_IsSameFile(path.c_str(), path.c_str()));
    EXPECT_TRUE(utl_IsSameFile(path.c_str(), hard_link.c_str()));
    EXPECT_TRUE(utl_IsSameFile(path.c_str(), soft_link.c_str()));
    remove(hard_link.c_str());
    remove(soft_link.c_str());
}

TEST(same_file, EqualBytesAreDifferentFiles) {
    const text_file one("same");
    const text_file other("same");
    EXPECT_FALSE(utl_IsSameFile(one.path(), other.path()));
}

TEST(same_file, MissingFileDiffersFromItself) {
    const text_file file("one");
    EXPECT_FALSE(utl_IsSameFile(file.path(), "no-such-file"));
    EXPECT_FALSE(utl_IsSameFile("no-such-file", file.path()));
    EXPECT_FALSE(utl_IsSameFile("no-such-file", "no-such-file"));
}

// The roots of the file systems /proc and /sys have the same inode number on different devices.
TEST(same_file, SameInodeOnTwoDevicesDiffers) {
    struct stat processes = {};
    struct stat system = {};
    const bool comparable = stat("/proc", &processes) == 0 && stat("/sys", &system) == 0 &&
                            processes.st_ino == system.st_ino && processes.st_dev != system.st_dev;
    if (!comparable)
        GTEST_SKIP() << "no two file systems here have the same number for their roots";
    EXPECT_FALSE(utl_IsSameFile("/proc", "/sys"));
}
