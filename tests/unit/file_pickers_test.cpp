// unit/file_pickers_test.cpp - file lists in states that tests/cases/pick does not reach.
#include "util/file_pickers.h"
#include "util/listing_system.h"

#include "support.h"

#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class file_pickers : public fresh_run {
  protected:
    void SetUp() override {
        fresh_run::SetUp();
        folder = testing::TempDir() + "crv_unit_pick_" + std::to_string(getpid());
        mkdir(folder.c_str(), 0700);
        ASSERT_EQ(chdir(folder.c_str()), 0);
    }
    void TearDown() override {
        for (const std::string &name : made) remove(name.c_str());
        ASSERT_EQ(chdir("/"), 0);
        rmdir(folder.c_str());
        fresh_run::TearDown();
    }
    void make(const std::string &name) {
        std::ofstream(name) << "x";
        made.push_back(name);
    }
    void type(const std::string &text) {
        const text_file typed(text, ".txt");
        ASSERT_TRUE(freopen(typed.path(), "r", stdin));
    }
    std::string folder;
    std::vector<std::string> made;
};

TEST_F(file_pickers, NamedFileIsListOfOne) {
    crv_file *file = crv_AllocFile("run1.req");
    EXPECT_STREQ(file->name, "run1.req");
    EXPECT_EQ(file->next, nullptr);
    EXPECT_EQ(crv_FreeFile(file), nullptr);
}

TEST_F(file_pickers, ALongNameIsNotCut) {
    const std::string name(1000, 'n');
    crv_file *file = crv_AllocFile(name.c_str());
    EXPECT_EQ(file->name, name);
    crv_FreeFile(file);
}

// rm asks before it removes a file without write permission.
TEST_F(file_pickers, RemovableFileIsWritableByOwner) {
    make("list.tmp");
    for (const mode_t mode : {0400U, 0000U, 0644U}) {
        ASSERT_EQ(chmod("list.tmp", mode), 0);
        utl_AllowRemoval("list.tmp");
        struct stat status = {};
        ASSERT_EQ(stat("list.tmp", &status), 0);
        EXPECT_EQ(status.st_mode & 07777, mode_t{0600});
    }
}

TEST_F(file_pickers, EmptyAnswerPromptsForName) {
    make("a.req");
    type("\ntyped name.req\n");
    std::string name;
    const std::string out = stdout_of([&] { EXPECT_EQ(utl_lstfile("*.req", &name, 1, 0), 1); });
    EXPECT_EQ(name, "typed name.req");
    EXPECT_EQ(
        out,
        " \n  1 --> a.req\n\nSelect file to be processed? 1, 2, 3, ...:  Enter desired file: ");
}

TEST_F(file_pickers, ReadsNamesOf4095Characters) {
    make("a.req");
    std::string name;
    for (const size_t length : {4094U, 4095U, 4096U}) {
        type("\n" + std::string(length, 'n') + "\n");
        stdout_of([&] { utl_lstfile("*.req", &name, 1, 0); });
        EXPECT_EQ(name.size(), length < 4095 ? length : 4095);
    }
}

// Messages of the list of several files for each kind of answer, with five files.
TEST_F(file_pickers, EveryWayOfAnswering) {
    for (const char *name : {"a.req", "b.req", "c.req", "d.req", "e.req"}) make(name);
    const std::string leaving = "%crv_34-i-fin, Routine exiting. \n";
    const std::string numeric = "%crv_34-f-fil, Improper file selection, choose a numeric \n";
    const std::string range = "%crv_34-f-fil, Improper specified range \n";
    struct {
        const char *answer;
        std::string said;
        int first, last;
        size_t taken;
    } const cases[] = {{"a", "%crv_34-i-files, All Files, 1 through 5 \n", 1, 5, 5},
                       {"A", "%crv_34-i-files, All Files, 1 through 5 \n", 1, 5, 5},
                       {"2:2", "", 2, 2, 1},
                       {"e", leaving + numeric, -10, -1, 0},
                       {"E", leaving + numeric, -10, -1, 0},
                       {"q", leaving + numeric, -10, -1, 0},
                       {"Q", leaving + numeric, -10, -1, 0},
                       {" 1", numeric, -10, -1, 0},
                       {"5", "", 5, 5, 1},
                       {"2:4", "", 2, 4, 3},
                       {"2:-5", range, -10, -5, 0},
                       {"2:2147483648", range, -10, 0, 0},
                       {"2147483648:3", range, -10, 3, 0},
                       {"3:", range, -10, 0, 0},
                       {"1              :5", "", 1, 1, 1},
                       {"1            :5", "", 1, 5, 5}};
    for (const auto &c : cases) {
        type(std::string(c.answer) + "\n");
        crv_file *list = nullptr;
        const std::string out = stdout_of([&] { list = crv_ListFiles("*.req"); });
        const std::string wanted = c.said +
                                   "%crv_34-i-val, Selection = " + std::to_string(c.first) +
                                   " through " + std::to_string(c.last) + " \n";
        EXPECT_EQ(out.substr(out.find("...: ") + 5), wanted) << c.answer;
        size_t taken = 0;
        for (; list; list = crv_FreeFile(list)) ++taken;
        EXPECT_EQ(taken, c.taken) << c.answer;
    }
}

TEST_F(file_pickers, LetterESelectsNoFile) {
    make("a.req");
    std::string name;
    for (const char *answer : {"e\n", "E\n", "exit\n"}) {
        type(answer);
        stdout_of([&] { EXPECT_EQ(utl_lstfile("*.req", &name, 0, 0), 0); });
        EXPECT_EQ(name, "");
    }
    type("q\n");
    EXPECT_EXIT(utl_lstfile("*.req", &name, 0, 0), testing::ExitedWithCode(1),
                "Improper file selection");
    type("000000000000001"
         "9\n");
    stdout_of([&] { EXPECT_EQ(utl_lstfile("*.req", &name, 0, 0), 1); });
    EXPECT_EQ(name, "a.req") << "fifteen characters count";
    remove("utl_temp.tmp");
}

TEST_F(file_pickers, EmptyListAcceptsExitAndTypedName) {
    std::string name;
    type("e\n");
    stdout_of([&] { EXPECT_EQ(utl_lstfile("*.req", &name, 0, 0), 0); });
    EXPECT_EQ(name, "");
    type("\ntyped.req\n");
    stdout_of([&] { EXPECT_EQ(utl_lstfile("*.req", &name, 1, 0), 1); });
    EXPECT_EQ(name, "typed.req");
}

TEST_F(file_pickers, ListingReplacesLinksAndPipes) {
    make("a.req");
    make("precious");
    std::string name;
    for (const char *place : {"crv_temp.tmp", "utl_temp.tmp"}) {
        ASSERT_EQ(link("precious", place), 0);
        type("e\n");
        stdout_of([&] {
            place[0] == 'c' ? static_cast<void>(crv_ListFiles("*.req"))
                            : static_cast<void>(utl_lstfile("*.req", &name, 0, 0));
        });
        EXPECT_EQ(bytes_of("precious"), "x") << place;
        ASSERT_EQ(mkfifo(place, 0600), 0);
        type("e\n");
        stdout_of([&] {
            place[0] == 'c' ? static_cast<void>(crv_ListFiles("*.req"))
                            : static_cast<void>(utl_lstfile("*.req", &name, 0, 0));
        });
        EXPECT_NE(access(place, F_OK), 0) << place;
    }
}

TEST_F(file_pickers, NumberWrappingBelowZeroIsZero) {
    make("a.req");
    type("2147483648\n2147483648\n");
    const std::string out = stdout_of([] { EXPECT_EQ(crv_ListFiles("*.req"), nullptr); });
    EXPECT_THAT(out,
                testing::HasSubstr("num too low \n%crv_34-i-val, Selection = -10 through 0 \n"));
    std::string name;
    EXPECT_EXIT(utl_lstfile("*.req", &name, 0, 0), testing::ExitedWithCode(1),
                "Improper file selection");
    remove("utl_temp.tmp");
}

TEST_F(file_pickers, NameOver78CharactersIsSplit) {
    make(std::string(100, 'n') + ".req");
    type("a\n");
    crv_file *list = nullptr;
    stdout_of([&] { list = crv_ListFiles("*.req"); });
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->name, std::string(78, 'n'))
        << "the last character of a piece goes, as a line end would";
    ASSERT_NE(list->next, nullptr);
    EXPECT_EQ(list->next->name, std::string(21, 'n') + ".req");
    while (list) list = crv_FreeFile(list);
}

TEST_F(file_pickers, DirectoriesAreListedHiddenNamesNot) {
    make("b.req");
    make(".hidden.req");
    mkdir("a.req", 0700);
    type("1\n");
    std::string name;
    EXPECT_THAT(stdout_of([&] { utl_lstfile("*.req", &name, 0, 0); }),
                testing::StartsWith(" \n  1 --> a.req\n  2 --> b.req\n\n"));
    rmdir("a.req");
}

TEST_F(file_pickers, MemoryThatRunsOutIsReported) {
    make("a.req");
    make("b.req");
    const char *const reports[] = {"first, malloc", "calloc", "malloc", "calloc"};
    for (int good = 0; good < 4; ++good) {
        const std::string text = std::string(reports[good]) + ": Cannot allocate memory\n$";
        EXPECT_EXIT(
            {
                const failing_memory memory(reader_allocations + good);
                crv_ListFiles("*.req");
            },
            testing::ExitedWithCode(0), "^    _34-e-" + text);
        std::string name;
        EXPECT_EXIT(
            {
                const failing_memory memory(reader_allocations + good);
                utl_lstfile("*.req", &name, 0, 0);
            },
            testing::ExitedWithCode(1), "^    _33-e-" + text);
    }
    for (const char *name : {"crv_temp.tmp", "utl_temp.tmp"}) remove(name);
    EXPECT_EXIT(
        {
            const failing_memory memory(0);
            crv_AllocFile("a");
        },
        testing::ExitedWithCode(0), "^    _35-e-malloc: Cannot allocate memory\n$");
    EXPECT_EXIT(
        {
            const failing_memory memory(1);
            crv_AllocFile("a");
        },
        testing::ExitedWithCode(0), "^    _35-e-calloc: Cannot allocate memory\n$");
}

} // namespace
