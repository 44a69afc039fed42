// unit/dat_file_test.cpp - .dat tables: paths, layouts, statistics, errors.
#include "stats/dat_file.h"

#include "support.h"

#include <cmath>
#include <csignal>
#include <cstring>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class dat_file : public fresh_run {
  protected:
    void SetUp() override {
        fresh_run::SetUp();
        folder = testing::TempDir() + "crv_unit_dat_" + std::to_string(getpid());
        mkdir(folder.c_str(), 0700);
    }
    void TearDown() override {
        for (const char *name : {"/run.req", "/run.dat"}) remove((folder + name).c_str());
        rmdir(folder.c_str());
        fresh_run::TearDown();
    }

    // Returns the table of columns 0 to count - 1; the printed text is in `out`.
    std::string table(int16_t count, uint16_t layout) {
        out = stdout_of([&] { crv_WriteCols((folder + "/run.req").c_str(), 0, count, layout); });
        return bytes_of(folder + "/run.dat");
    }

    std::string folder, out;
};

crv_column *with_statistics(int slot, const char *name) {
    crv_column *c = add_column(slot, {1, 2}, name);
    c->min = -1.5;
    c->min_step = 2;
    c->min_time = 99;
    c->var1 = 0.25;
    c->max = 3e10;
    c->max_step = 4;
    c->var2 = 1e-5;
    c->absmin = 0.5;
    c->absmin_step = 5;
    c->absmin_time = 0.5;
    c->absmax = 7;
    c->absmax_step = 6;
    c->absmax_time = 0.75;
    c->begin_val = 8;
    c->begin_step = 1;
    c->begin_time = 0;
    c->end_val = 9;
    c->end_step = 123456789;
    c->end_time = 2;
    c->mean = 1.0 / 3;
    strcpy(c->coltitle, "A title");
    return c;
}

const std::string title = "\nA title" + std::string(71, ' ') + "\n\n\n";
const std::string always_first = "----------- \n"
                                 "Name        \n"
                                 "-1.5000e+00 \n"
                                 "t= 2.50e-01 \n"
                                 "Minimum ^^^ \n"
                                 " 3.0000e+10 \n"
                                 "t= 1.00e-05 \n"
                                 "Maximum ^^^ \n";
const std::string absolute = "----------- \n"
                             " 5.0000e-01 \n"
                             "s=        5 \n"
                             "t= 5.00e-01 \n"
                             "ABSMIN  ^^^ \n"
                             " 7.0000e+00 \n"
                             "s=        6 \n"
                             "t= 7.50e-01 \n"
                             "ABSMAX  ^^^ \n";
const std::string always_last = "----------- \n"
                                " 3.0000e+10 \n"
                                "Range   ^^^ \n"
                                " 3.3333e-01 \n"
                                "Mean    ^^^ \n"
                                "=========== \n";

TEST_F(dat_file, DefaultBlockHasFourteenRows) {
    with_statistics(0, "Name");
    EXPECT_EQ(table(1, 2), title + always_first + always_last);
    EXPECT_EQ(out, "%crv_84-i-wri, Writing \"" + folder + "/run.dat\" ...\n\n");
}

TEST_F(dat_file, AbsAloneKeepsItsStepRows) {
    with_statistics(0, "Name");
    crv_settings.columnize_flags = AbsoluteDat;
    EXPECT_EQ(table(1, 2), title + always_first + absolute + always_last);
}

TEST_F(dat_file, AllWritesAll34Rows) {
    with_statistics(0, "Name");
    for (const uint32_t flags : {StatisticsAll, StatisticsAll | AbsoluteDat}) {
        crv_settings.columnize_flags = flags;
        EXPECT_EQ(table(1, 2), title +
                                   "----------- \n"
                                   "Name        \n"
                                   "-1.5000e+00 \n"
                                   "s=        2 \n"
                                   "t= 2.50e-01 \n"
                                   "Minimum ^^^ \n"
                                   " 3.0000e+10 \n"
                                   "s=        4 \n"
                                   "t= 1.00e-05 \n"
                                   "Maximum ^^^ \n" +
                                   absolute +
                                   "----------- \n"
                                   " 8.0000e+00 \n"
                                   "s=        1 \n"
                                   "t= 0.00e+00 \n"
                                   "BEGINVal^^^ \n"
                                   " 9.0000e+00 \n"
                                   "s=123456789 \n"
                                   "t= 2.00e+00 \n"
                                   "ENDVal  ^^^ \n" +
                                   always_last);
    }
}

TEST_F(dat_file, EveryRowHasCellPerColumn) {
    with_statistics(0, "Time (sec) ");
    with_statistics(1, "Displ 1052, X  ");
    const std::string text = table(2, 3);
    EXPECT_THAT(text, testing::StartsWith(title + "----------- ----------- \n"
                                                  "Time (sec)  Displ 1052, \n"
                                                  "-1.5000e+00 -1.5000e+00 \n"));
    EXPECT_THAT(text, testing::EndsWith("=========== =========== \n"
                                        " 1.0000e+00  1.0000e+00 \n"
                                        " 2.0000e+00  2.0000e+00 \n"));
}

TEST_F(dat_file, RowsEndWithTheShortestColumn) {
    const crv_column *longer = add_column(0, {1, 2, 3, 4, 5});
    const crv_column *shorter = add_column(1, {-10, 0.5, 1e100});
    EXPECT_EQ(table(2, 4), " 1.0000e+00 -1.0000e+01 \n"
                           " 2.0000e+00  5.0000e-01 \n"
                           " 3.0000e+00 1.0000e+100 \n");
    EXPECT_EQ(longer->val_cur->val, 3.0) << "cursors stay on the last row";
    EXPECT_EQ(shorter->val_cur->val, 1e100);
}

TEST_F(dat_file, ColumnsLayoutHasNoStatistics) {
    with_statistics(0, "Name");
    EXPECT_EQ(table(1, 1), title + " 1.0000e+00 \n 2.0000e+00 \n");
}

TEST_F(dat_file, EmptyColumnWritesNoRows) {
    add_column(0, {1, 2});
    add_column(1, {});
    EXPECT_EQ(table(2, 4), "");
}

TEST_F(dat_file, OnlySelectedColumnsAreWritten) {
    for (int k = 0; k < 4; ++k) add_column(k, {1.0 * k});
    stdout_of([&] { crv_WriteCols((folder + "/run.req").c_str(), 1, 3, 4); });
    EXPECT_EQ(bytes_of(folder + "/run.dat"), " 1.0000e+00  2.0000e+00 \n");
}

TEST_F(dat_file, TitlesEndAt78OrNewline) {
    crv_column *column = add_column(0, {});
    memset(column->coltitle, 't', 100);
    EXPECT_EQ(table(1, 1), "\n" + std::string(78, 't') + "\n\n\n");
    strcpy(column->coltitle, "one\ntwo");
    EXPECT_EQ(table(1, 1), "\none" + std::string(75, ' ') + "\n\n\n");
    strcpy(column->coltitle, "%s%n");
    EXPECT_THAT(table(1, 1), testing::StartsWith("\n%s%n "));
}

TEST_F(dat_file, UnknownLayoutMakesEmptyFile) {
    add_column(0, {1});
    EXPECT_EQ(table(1, 5), "");
    EXPECT_EQ(out, "%crv_84-i-wri, Writing \"" + folder + "/run.dat\" ...\n\n");
    EXPECT_EQ(access((folder + "/run.dat").c_str(), F_OK), 0);
    EXPECT_EQ(table(1, 0), "");
}

TEST_F(dat_file, InvalidColumnRangeMakesNoFile) {
    EXPECT_EQ(table(0, 4), "");
    EXPECT_EQ(out, "%crv_84-e-wri, Incorrect startcolum and end column specified!\n");
    EXPECT_NE(access((folder + "/run.dat").c_str(), F_OK), 0);
    EXPECT_EQ(table(-1, 4), "");
    EXPECT_EQ(out, "%crv_84-e-wri, Incorrect startcolum and end column specified!\n");
}

TEST_F(dat_file, AnOldTableIsReplaced) {
    std::ofstream(folder + "/run.dat") << std::string(1000, 'x');
    add_column(0, {1});
    EXPECT_EQ(table(1, 4), " 1.0000e+00 \n");
}

TEST_F(dat_file, Level84TracesTheName) {
    crv_DBG = 84;
    table(0, 4);
    EXPECT_THAT(out,
                testing::StartsWith("    _84-i-val, req_filename = \"" + folder + "/run.req\" \n"));
}

TEST_F(dat_file, TheExtensionIsReplaced) {
    EXPECT_EQ(crv_DatPath("run1.req"), "run1.dat");
    EXPECT_EQ(crv_DatPath("a/run.b.req"), "a/run.b.dat");
    EXPECT_EQ(crv_DatPath("run1"), "run1.dat");
    EXPECT_EQ(crv_DatPath("../res/run1"), "../res/run1.dat");
    EXPECT_EQ(crv_DatPath("res.1/run"), "res.1/run.dat");
    EXPECT_EQ(crv_DatPath(".req"), ".dat");
    EXPECT_EQ(crv_DatPath("a/.req"), "a/.dat");
    EXPECT_EQ(crv_DatPath(std::string(300, 'a') + ".req"), std::string(300, 'a') + ".dat");
}

TEST_F(dat_file, BackslashDoesNotSeparateDirectories) {
    EXPECT_EQ(crv_DatPath("res.1\\run"), "res.dat");
}

TEST_F(dat_file, MissingDirectoryEndsProgram) {
    add_column(0, {1});
    EXPECT_EXIT(crv_WriteCols("/nowhere/run.req", 0, 1, 4), testing::ExitedWithCode(0),
                "^ crv_84-f-fopen, in crv_writecols\\(\\) : No such file or directory\n$");
}

TEST_F(dat_file, InputFileIsNotOverwritten) {
    add_column(0, {1});
    const std::string input = folder + "/run.req";
    std::ofstream(input) << "precious";
    ASSERT_EQ(link(input.c_str(), (folder + "/run.dat").c_str()), 0);
    EXPECT_EXIT(
        crv_WriteCols(input.c_str(), 0, 1, 4), testing::ExitedWithCode(0),
        "^%crv_84-f-wri, \".*/run.dat\" is the file that is read, it is not written over\n$");
    EXPECT_EQ(bytes_of(input), "precious");
    remove((folder + "/run.dat").c_str());
    ASSERT_EQ(symlink(input.c_str(), (folder + "/run.dat").c_str()), 0);
    EXPECT_EXIT(crv_WriteCols(input.c_str(), 0, 1, 4), testing::ExitedWithCode(0), "%crv_84-f-wri");
    EXPECT_EQ(bytes_of(input), "precious");
}

TEST_F(dat_file, FullDiskReportKeepsDevice) {
    add_column(0, std::vector<double>(5000, 1.0));
    ASSERT_EQ(symlink("/dev/full", (folder + "/run.dat").c_str()), 0);
    EXPECT_EXIT(crv_WriteCols((folder + "/run.req").c_str(), 0, 1, 4), testing::ExitedWithCode(0),
                "^ crv_84-f-fwrite, in crv_writecols\\(\\) : No space left on device\n$");
    struct stat status = {};
    EXPECT_EQ(lstat((folder + "/run.dat").c_str(), &status), 0);
}

void set_file_size_limit(rlim_t bytes) {
    rlimit limit = {};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = bytes < limit.rlim_max ? bytes : limit.rlim_max;
    setrlimit(RLIMIT_FSIZE, &limit);
}

// One write fails, and all later ones succeed.
void write_with_one_failure(const char *path) {
    signal(SIGXFSZ, [](int) { set_file_size_limit(RLIM_INFINITY); });
    set_file_size_limit(8192);
    crv_WriteCols(path, 0, 1, 4);
    _exit(77);
}

TEST_F(dat_file, LostMiddleOfTableIsReported) {
    add_column(0, std::vector<double>(2000, 1.0));
    EXPECT_EXIT(write_with_one_failure((folder + "/run.req").c_str()), testing::ExitedWithCode(0),
                "^ crv_84-f-fwrite, in crv_writecols\\(\\) : File too large\n$");
    EXPECT_NE(access((folder + "/run.dat").c_str(), F_OK), 0);
}

} // namespace
