// unit/frame_file_test.cpp - reading frame files: directives, data blocks, ranges, errors.
#include "readers/frame_file.h"

#include "reader_support.h"

#include <cmath>

namespace {

class frame_file : public reader_test {
  protected:
    void SetUp() override {
        reader_test::SetUp();
        chart = crv_AllocCht(0);
    }
    int read(const std::string &bytes, int first_slot = 0) {
        return read_with([&](const char *name) { return crv_ReadVDR(name, first_slot); }, bytes);
    }
    crv_chart *chart = nullptr;
};

const std::string five = "%D\n1 10\n2,20\n3 , 33\n4 -40\n5.5 50   \n";

TEST_F(frame_file, PointBlockHasRoundedExtremes) {
    EXPECT_EQ(read("%N\n5\n" + five), 2);
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{1, 2, 3, 4, 5.5}));
    EXPECT_EQ(values_of(crv_columns[1]), (numbers{10, 20, 33, -40, 50}));
    EXPECT_EQ(crv_columns[0]->numpts, 5);
    EXPECT_EQ(crv_columns[1]->numpts, 5);
    EXPECT_EQ(crv_columns[0]->min, 1.0);
    EXPECT_EQ(crv_columns[0]->max, 6.0);
    EXPECT_EQ(crv_columns[1]->min, -40.0);
    EXPECT_EQ(crv_columns[1]->max, 50.0);
    EXPECT_EQ(crv_columns[0]->mean, 15.5 / 5);
    EXPECT_EQ(crv_columns[1]->mean, 73.0 / 5);
    EXPECT_EQ(crv_columns[0]->sum, 0.0) << "the sum is not kept";
    EXPECT_STREQ(crv_columns[0]->colname, "VDR col_0");
    EXPECT_STREQ(crv_columns[1]->colname, "VDR col_1");
    EXPECT_EQ(out, "%crv_85-i-dat, Vandor CRV_FRM_FILE data loaded, number of points = 5 \n");
    EXPECT_EQ(err, "");
}

TEST_F(frame_file, BothColumnsAreRounded) {
    read("%N\n3\n%D\n1.5 -12\n2 3\n2.5 47\n");
    EXPECT_EQ(crv_columns[0]->min, 1.0);
    EXPECT_EQ(crv_columns[0]->max, 3.0);
    EXPECT_EQ(crv_columns[1]->min, -20.0);
    EXPECT_EQ(crv_columns[1]->max, 50.0);
}

TEST_F(frame_file, RangeOfOneValueIsIgnored) {
    read("%N\n5\n%XR\n3\n3\n%YR\n3\n3\n" + five);
    EXPECT_THAT(out, testing::StartsWith("%crv_85-i-dat"));
    EXPECT_EQ(crv_columns[0]->max, 6.0);
    EXPECT_EQ(crv_columns[1]->max, 50.0);
}

TEST_F(frame_file, TheFirstValueSetsTheTotal) {
    read("%N\n3\n%D\n-0 -0\n-0 -0\n-0 -0\n");
    EXPECT_TRUE(std::signbit(crv_columns[0]->mean));
}

TEST_F(frame_file, TheStyleIsSixteenBitsWide) {
    read("%S\n65539\n");
    EXPECT_EQ(chart->style, 3);
    read("%S\n300\n");
    EXPECT_EQ(chart->style, 300);
}

// After the end of a long file, the block of the reader still has earlier characters of the file.
TEST_F(frame_file, PercentAtFileEndIsIgnored) {
    const std::string header = "%N\n5\n" + five;
    for (const std::string last : {"%", "%X", "%Y"}) {
        EXPECT_EQ(read(header + std::string(300'000, last == "%" ? 'N' : 'R') + "\n" + last), 2);
        EXPECT_EQ(out, "%crv_85-i-dat, Vandor CRV_FRM_FILE data loaded, number of points = 5 \n");
        EXPECT_EQ(crv_columns[1]->max, 50.0);
    }
}

TEST_F(frame_file, LineOf126CharactersIsComplete) {
    read("%N\n3\n%D\n1 2" + std::string(120, ' ') + "999\n3 4\n5 6\n");
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{1, 3, 5}));
}

TEST_F(frame_file, GivenRangeReplacesRoundedRange) {
    read("%N\n5\n%XR\n0\n100\n" + five + "%YR\n-0.5\n7.25\n");
    EXPECT_EQ(crv_columns[0]->min, 0.0);
    EXPECT_EQ(crv_columns[0]->max, 100.0);
    EXPECT_EQ(crv_columns[1]->min, -0.5);
    EXPECT_EQ(crv_columns[1]->max, 7.25);
}

TEST_F(frame_file, ImproperRangeIsReportedAndIgnored) {
    read("%N\n5\n%XR\n5\n1\n%YR\n5\n1\n" + five);
    EXPECT_THAT(out, testing::StartsWith("%crv_85-e-ran, X axis range incorectly specified\n"
                                         "%crv_85-e-ran, Y axis range incorrectly specified\n"));
    EXPECT_EQ(crv_columns[0]->max, 6.0);
}

TEST_F(frame_file, SSetsStyleAndPointCount) {
    EXPECT_EQ(read("%N\n10\n%S\n3\n" + five), 2);
    EXPECT_EQ(chart->style, 3);
    EXPECT_EQ(crv_columns[0]->numpts, 3);
    EXPECT_THAT(out, testing::HasSubstr("number of points = 3 \n"));
}

TEST_F(frame_file, TextsGoToColumnsAndChart) {
    read("%T\nA title\n%XA\nTime\n%YA\nForce\n%YA3\nThird axis\n%YA6\nSixth\n");
    EXPECT_STREQ(crv_columns[0]->coltitle, "A title\n");
    EXPECT_STREQ(crv_columns[0]->colname, "Time\n");
    EXPECT_STREQ(chart->xaxis_t, "Time\n");
    EXPECT_STREQ(crv_columns[1]->colname, "Force\n");
    EXPECT_STREQ(chart->yaxis_ts[0], "Force\n");
    EXPECT_STREQ(chart->yaxis_ts[3], "Third axis\n");
    EXPECT_STREQ(chart->yaxis_ts[6], "Sixth\n");
    EXPECT_STREQ(chart->yaxis_ts[1], "");
}

TEST_F(frame_file, OtherYALabelsYColumn) {
    for (const char *directive : {"%YA", "%YAx", "%YA0", "%YA7", "%YA "}) {
        read(std::string(directive) + "\nForce " + directive + "\n");
        EXPECT_EQ(crv_columns[1]->colname, "Force " + std::string(directive) + "\n");
    }
}

TEST_F(frame_file, NumberedTextsAreOneCharacterLonger) {
    const std::string text(100, 't');
    read("%T\n" + text + "\n%XA\n" + text + "\n%YA\n" + text + "\n%YA1\n" + text + "\n");
    EXPECT_EQ(crv_columns[0]->coltitle, std::string(80, 't'));
    EXPECT_EQ(crv_columns[0]->colname, std::string(31, 't'));
    EXPECT_EQ(chart->xaxis_t, std::string(31, 't'));
    EXPECT_EQ(crv_columns[1]->colname, std::string(31, 't'));
    EXPECT_EQ(chart->yaxis_ts[0], std::string(31, 't'));
    EXPECT_EQ(chart->yaxis_ts[1], std::string(32, 't'));
}

TEST_F(frame_file, XYSaysThatReadingBegins) {
    read("%XY\n");
    EXPECT_THAT(out, testing::StartsWith("%crv_85-i-red, Begin reading file \"" + path + "\" \n"));
}

TEST_F(frame_file, OtherLinesAreSkipped) {
    EXPECT_EQ(read("# N\n %N\n%n\n%Z\n%A\n%\n%XZ\n%YZ\n%E\n\n%N\n5\n%Q\n" + five), 2);
    EXPECT_EQ(crv_columns[0]->numpts, 5);
}

TEST_F(frame_file, IgnoresDirectiveWithoutPercent) {
    EXPECT_EQ(read("%N\n5\nxN\n7\nxS\n4\nxT\nTitle\nxXA\nLabel\nxD\n" + five), 2);
    EXPECT_EQ(crv_columns[0]->numpts, 5);
    EXPECT_EQ(chart->style, 1);
    EXPECT_STREQ(crv_columns[0]->coltitle, "");
    EXPECT_STREQ(crv_columns[0]->colname, "VDR col_0");
}

TEST_F(frame_file, FewerThanThreePointsAreRefused) {
    for (const char *bytes : {"%N\n2\n%D\n1 2\n3 4\n", "%D\n1 2\n", "%N\n-5\n%D\n"}) {
        EXPECT_EQ(read(bytes), 0);
        EXPECT_EQ(out, "%crv_85-f-nopts, VDR NUMDATA incorrectly specified!\n");
    }
}

TEST_F(frame_file, MissingBlockLeavesColumnsEmpty) {
    EXPECT_EQ(read("%N\n-5\n"), 2);
    EXPECT_EQ(crv_columns[0]->min, 10.0);
    EXPECT_EQ(crv_columns[0]->max, -10.0);
    EXPECT_TRUE(std::isnan(crv_columns[0]->mean));
    EXPECT_EQ(out,
              "%crv_85-i-dat, Vandor CRV_FRM_FILE data loaded, number of points = 4294967291 \n");
}

TEST_F(frame_file, LaterBlocksExtendRoundedExtremes) {
    read("%N\n3\n%D\n1.5 1\n2.5 2\n2.5 3\n%D\n2.9 4\n1.2 5\n2 6\n");
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{1.5, 2.5, 2.5, 2.9, 1.2, 2}));
    EXPECT_EQ(crv_columns[0]->min, 1.0);
    EXPECT_EQ(crv_columns[0]->max, 3.0);
    EXPECT_EQ(crv_columns[0]->mean, (1.5 + 2.5 + 2.5 + 2.9 + 1.2 + 2) / 6);
}

TEST_F(frame_file, EofEndsIncompleteBlock) {
    EXPECT_EQ(read("%N\n9\n" + five), 2);
    EXPECT_EQ(crv_columns[0]->numpts, 5);
    EXPECT_EQ(err, "%crv_85-w-cut, \"" + path + "\" ends after 5 of 9 data points\n");
    EXPECT_EQ(crv_columns[0]->max, 6.0);
}

TEST_F(frame_file, UnterminatedLastLineIsUsed) {
    EXPECT_EQ(read("%N\n3\n%D\n1 2\n3 4\n5 6"), 2);
    EXPECT_EQ(values_of(crv_columns[1]), (numbers{2, 4, 6}));
    EXPECT_EQ(err, "");
}

TEST_F(frame_file, MissingNumbersAreZeroWithWarning) {
    read("%N\n3\n%D\n1 2\n3\n\n");
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{1, 3, 0}));
    EXPECT_EQ(values_of(crv_columns[1]), (numbers{2, 0, 0}));
    EXPECT_EQ(err,
              "%crv_85-w-num, Missing numbers in \"" + path + "\" read as 0.0, first on line 5\n");
}

TEST_F(frame_file, LineOver126CharactersIsSplit) {
    read("%N\n3\n%D\n1 2" + std::string(124, ' ') + "8 9\n3 4\n");
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{1, 8, 3}));
}

TEST_F(frame_file, ColumnsBeginAtFirstFreeSlot) {
    crv_settings.time_window[1] = -100;
    read("%N\n5\n" + five, 4);
    EXPECT_EQ(crv_columns[0], nullptr);
    EXPECT_EQ(crv_columns[4]->numpts, 5);
    EXPECT_STREQ(crv_columns[5]->colname, "VDR col_5");
}

TEST_F(frame_file, ACaretStandsForNoName) {
    EXPECT_EQ(stdout_of([] { EXPECT_EQ(crv_ReadVDR("^none", 0), 0); }),
              "%crv_85-f-nofile, A VDR file spec must be provided! \n");
    EXPECT_EQ(crv_columns[0], nullptr);
}

TEST_F(frame_file, FailuresEndTheProgramWithZero) {
    EXPECT_EXIT(crv_ReadVDR("/nowhere/a.vdr", 0), testing::ExitedWithCode(0),
                "^    _85-f-fopen: No such file or directory\n$");
    const text_file file("%N\n9000\n%D\n");
    EXPECT_EXIT(
        {
            const failing_memory memory(reader_allocations + 1);
            crv_ReadVDR(file.path(), 0);
        },
        testing::ExitedWithCode(0), "^    _85-e-calloc, data: Cannot allocate memory\n$");
    const text_file long_file("%N\n3\n%D\n1 2\n");
    EXPECT_EXIT(
        {
            use_up_values();
            const failing_memory memory(reader_allocations + 2);
            crv_ReadVDR(long_file.path(), 0);
        },
        testing::ExitedWithCode(0), "^    _85-e-calloc: Cannot allocate memory\n$");
}

TEST_F(frame_file, Level85TracesRecordsAndColumns) {
    crv_DBG = 85;
    read("%N\n3\n%D\n1 2 \n3 4\n5 6  ");
    EXPECT_EQ(out, "    _85-i-val, vdr_record = \"1 2 \n\"\n"
                   "    _85-i-val, vdr_record = \"1 2 \n\"\n"
                   "    _85-i-val, vdr_record = \"3 4\n\"\n"
                   "    _85-i-val, vdr_record = \"3 4\n\"\n"
                   "    _85-i-val, vdr_record = \"5 6  \"\n"
                   "    _85-i-val, vdr_record = \"5 6\"\n"
                   "    _85-i-val, ---------------------------- \n"
                   "    _85-i-val, name = VDR col_0, min = 1.000000, max = 5.000000 \n"
                   "    _85-i-val,   1: value =      1.000 \n"
                   "    _85-i-val,   2: value =      3.000 \n"
                   "    _85-i-val,   3: value =      5.000 \n"
                   "    _85-i-val, ---------------------------- \n"
                   "    _85-i-val, name = VDR col_1, min = 2.000000, max = 6.000000 \n"
                   "    _85-i-val,   1: value =      2.000 \n"
                   "    _85-i-val,   2: value =      4.000 \n"
                   "    _85-i-val,   3: value =      6.000 \n"
                   "%crv_85-i-dat, Vandor CRV_FRM_FILE data loaded, number of points = 3 \n");
}

} // namespace
