// unit/madymo_file_test.cpp - reading Madymo files: header, steps, screening, labels, errors.
#include "readers/madymo_file.h"

#include "reader_support.h"

#include <cmath>

namespace {

class madymo_file : public reader_test {
  protected:
    int read(const std::string &bytes, const char *selection, int first_slot = 0) {
        return read_with(
            [&](const char *name) {
                return crv_ReadMad(name, crv_ParseSel(selection, first_slot));
            },
            bytes);
    }
};

const std::string head =
    "The title\nanything\n3 2\nHEAD ACCELERATION\nCHEST     X\nPELVIS\ntime\nvalue\n";

std::string steps(const numbers &times) {
    std::string text;
    char line[200];
    for (const double t : times) {
        snprintf(line, sizeof line, "%g\n%g 2 3\n%g,20, 30\n1 2 3 4 5 6 7 8 9 10 11 12 13 14\n", t,
                 10 + t, -10 - t);
        text += line;
    }
    return text;
}

TEST_F(madymo_file, PositionNamesRequestsAndItems) {
    EXPECT_EQ(read(head + steps({0, 0.5}), "0,2:3,1"), 3);
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{0, 0.5}));
    EXPECT_EQ(values_of(crv_columns[1]), (numbers{30, 30}));
    EXPECT_EQ(values_of(crv_columns[2]), (numbers{10, 10.5}));
    EXPECT_STREQ(crv_columns[0]->colname, "Time (sec) ");
    EXPECT_STREQ(crv_columns[1]->colname, "CHEST     , R 2, C 3 ");
    EXPECT_STREQ(crv_columns[2]->colname, "HEAD ACCEL, R 1, C 1 ");
    EXPECT_STREQ(crv_columns[0]->coltitle, "The title\n");
    EXPECT_EQ(out, "%crv_88-i-wor, Reading \"" + path + "\" ...\n%crv_88-i-pts, file (" + path +
                       ") has 2 steps\n");
    EXPECT_EQ(err, "");
}

TEST_F(madymo_file, ColumnsBeginAtFirstFreeSlot) {
    EXPECT_EQ(read(head + steps({0}), "0,2", 7), 2);
    EXPECT_EQ(crv_columns[6], nullptr);
    EXPECT_EQ(values_of(crv_columns[8]), (numbers{-10}));
}

TEST_F(madymo_file, ShortNameEndsWithLine) {
    read(head + steps({0}), "3:2");
    EXPECT_STREQ(crv_columns[0]->colname, "PELVIS, R 3, C 2 ");
}

TEST_F(madymo_file, ItemsFrom14HaveQuestionMarks) {
    read(head + steps({0}), "3:13,3:14");
    EXPECT_STREQ(crv_columns[0]->colname, "PELVIS, R 3, C 13");
    EXPECT_STREQ(crv_columns[1]->colname, "PELVIS, R 3, C ??");
    EXPECT_EQ(values_of(crv_columns[1]), (numbers{14}));
}

TEST_F(madymo_file, LabelsItemsByTheirNumbers) {
    for (int item = 1; item <= 13; ++item) {
        read(head + steps({0}), ("3:" + std::to_string(item)).c_str());
        char label[32];
        snprintf(label, sizeof label, "PELVIS, R 3, C %-2d", item);
        EXPECT_STREQ(crv_columns[0]->colname, label);
        SetUp();
    }
}

// The rest of the title line stands for line 2.
TEST_F(madymo_file, LongTitleEndsAtNulWithoutNewline) {
    read("ti" + std::string(1, '\0') + std::string(123, 'x') + "rest\n0 0\n1\n", "0");
    EXPECT_STREQ(crv_columns[0]->coltitle, "ti");
}

TEST_F(madymo_file, ItemZeroIsTheTime) {
    read(head + steps({0.25}), "3:0");
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{0.25}));
    EXPECT_STREQ(crv_columns[0]->colname, "PELVIS, R 3, C T ");
}

TEST_F(madymo_file, Item32EndsProgram) {
    std::string line;
    for (int k = 1; k <= 32; ++k) line += std::to_string(k) + " ";
    const std::string bytes = "t\n\n1 0\nname\n0\n" + line + "\n";
    EXPECT_EQ(read(bytes, "1:31"), 1);
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{31}));
    EXPECT_EXIT(crv_ReadMad(text_file(bytes).path(), crv_ParseSel("1:32", 0)),
                testing::ExitedWithCode(0),
                "^%crv_88-f-col, Exceeded Max number of col to reqest of 31\n$");
}

TEST_F(madymo_file, StatisticsComeWithoutStepsAndTimes) {
    read("t\n\n1 0\nname\n0.1\n2\n0.2\n-5\n0.3\n4\n0.4\n1\n", "1");
    const crv_column *c = crv_columns[0];
    EXPECT_EQ(c->numpts, 4);
    EXPECT_EQ(c->min, -5.0);
    EXPECT_EQ(c->var1, 0.2);
    EXPECT_EQ(c->max, 4.0);
    EXPECT_EQ(c->var2, 0.3);
    EXPECT_EQ(c->absmin, 1.0);
    EXPECT_EQ(c->absmax, 5.0);
    EXPECT_EQ(c->begin_val, 2.0);
    EXPECT_EQ(c->end_val, 1.0);
    EXPECT_EQ(c->sum, 2.0);
    EXPECT_EQ(c->mean, 0.5);
    for (const uint32_t step :
         {c->min_step, c->max_step, c->absmin_step, c->absmax_step, c->begin_step, c->end_step})
        EXPECT_EQ(step, 0U);
    for (const double time :
         {c->min_time, c->max_time, c->absmin_time, c->absmax_time, c->begin_time, c->end_time})
        EXPECT_EQ(time, 0.0);
}

TEST_F(madymo_file, OnlyStoredValuesCount) {
    crv_settings.time_window[0] = 0.5;
    crv_settings.x_filter[0] = 0;
    crv_settings.x_filter[1] = 1;
    read(head + steps({0, 0.5, 1}), "0,1");
    EXPECT_EQ(values_of(crv_columns[1]), (numbers{10.5, 11}));
    EXPECT_EQ(crv_columns[1]->numpts, 2);
    EXPECT_THAT(out, testing::HasSubstr("has 3 steps"));
}

TEST_F(madymo_file, MeanWithoutValuesDividesByZero) {
    EXPECT_EQ(read(head, "1"), 1);
    EXPECT_TRUE(std::isnan(crv_columns[0]->mean));
}

TEST_F(madymo_file, MissingRequestReturnsZero) {
    EXPECT_EQ(read(head + steps({0}), "0,4"), 0);
    EXPECT_EQ(out, "%crv_88-i-wor, Reading \"" + path +
                       "\" ...\n%crv_88-e-mis, Request \"4\" not found! \n");
    EXPECT_EQ(crv_columns[0], nullptr);
}

TEST_F(madymo_file, WrongCountsDoNotStopReading) {
    EXPECT_EQ(read("t\n\n1\nname\n0\n5\n", "1"), 1);
    EXPECT_EQ(out, "%crv_88-i-wor, Reading \"" + path +
                       "\" ...\n"
                       "%crv_xx-e-num, Request count or column count incorrect\n"
                       "%crv_88-i-pts, file (" +
                       path + ") has 1 steps\n");
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{5}));
    EXPECT_EQ(read("t\n\nno numbers\n0\n1\n", "0"), 1);
    EXPECT_THAT(out, testing::HasSubstr("%crv_xx-e-num"));
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{0, 1}))
        << "without requests each step is its time line";
    read("t\n\n1,2\nname\n0\n5\n", "1");
    EXPECT_THAT(out, testing::HasSubstr("%crv_xx-e-num")) << "a comma does not separate these two";
}

TEST_F(madymo_file, NegativeRequestCountEndsProgram) {
    EXPECT_EXIT(crv_ReadMad(text_file("t\n\n-1 0\n").path(), crv_ParseSel("0", 0)),
                testing::ExitedWithCode(0),
                "^%crv_88-f-num, Number of requests \\(-1\\) on line 3 of \".*\" is below 0\n$");
}

TEST_F(madymo_file, NegativeDescriptionCountSkipsNothing) {
    EXPECT_EQ(read("t\n\n1 -3\nname\n0\n5\n", "1"), 1);
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{5}));
}

TEST_F(madymo_file, HugeCountsAreNotWaitedFor) {
    EXPECT_EQ(read("t\n\n2147483647 2147483647\nname\n", "2147483647"), 1);
    EXPECT_EQ(crv_columns[0]->numpts, 0);
    EXPECT_STREQ(crv_columns[0]->colname, ", R 2147483647, C 1 ");
}

TEST_F(madymo_file, UnterminatedLastLineIsTooLong) {
    std::string bytes = head + steps({0});
    bytes.pop_back();
    EXPECT_EXIT(crv_ReadMad(text_file(bytes).path(), crv_ParseSel("1", 0)),
                testing::ExitedWithCode(0),
                "^\n%crv_88-f-lon, Current records are too long in \".*\"\n$");
}

TEST_F(madymo_file, LineOver509CharactersEndsProgram) {
    const std::string start = "t\n\n1 0\nname\n0\n";
    EXPECT_EQ(read(start + "5" + std::string(508, ' ') + "\n", "1"), 1);
    EXPECT_EXIT(crv_ReadMad(text_file(start + "5" + std::string(509, ' ') + "\n").path(),
                            crv_ParseSel("1", 0)),
                testing::ExitedWithCode(0), "Current records are too long");
}

TEST_F(madymo_file, IncompleteStepKeepsItsValues) {
    EXPECT_EQ(read(head + steps({0}) + "1\n11 2 3\n", "1,2"), 2);
    EXPECT_EQ(crv_columns[0]->numpts, 2);
    EXPECT_EQ(crv_columns[1]->numpts, 1);
    EXPECT_THAT(out, testing::HasSubstr("has 1 steps"));
}

TEST_F(madymo_file, MissingNumbersAreZeroWithWarning) {
    read("t\n\n1 0\nname\n0\n5\n1\n6\n", "1:2");
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{0, 0}));
    EXPECT_EQ(err,
              "%crv_88-w-num, Missing numbers in \"" + path + "\" read as 0.0, first on line 6\n");
}

TEST_F(madymo_file, SeveralResultSetsAreAccepted) {
    EXPECT_EQ(read("t\n\n1 0\nname\n0\n5 <++>\n", "1"), 1);
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{5}));
}

TEST_F(madymo_file, TitleIsCutAt79) {
    read(std::string(100, 't') + "\n\n0 0\n0\n", "0");
    EXPECT_EQ(crv_columns[0]->coltitle, std::string(79, 't'));
    read("Padded" + std::string(90, ' ') + "\n\n0 0\n0\n", "0");
    EXPECT_STREQ(crv_columns[0]->coltitle, "Padded");
    read(std::string(125, 't') + "\n\n0 0\n7\n", "0");
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{7})) << "125 characters are one line";
    read(std::string(126, 't') + "\n0 0\n7\n", "0");
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{7}))
        << "of 126 the line end stands for the second line";
    // The rest of a title line of more than 125 characters is read as the second line.
    read(std::string(130, 't') + "\n0 0\n0\n", "0");
    EXPECT_EQ(crv_columns[0]->coltitle, std::string(79, 't'));
    EXPECT_EQ(crv_columns[0]->numpts, 1);
}

TEST_F(madymo_file, FailuresEndTheProgramWithZero) {
    EXPECT_EXIT(crv_ReadMad("/nowhere/a.mad", crv_ParseSel("0", 0)), testing::ExitedWithCode(0),
                "^    _88-f-fopen: No such file or directory\n$");
    const text_file file(head + steps({0}));
    EXPECT_EXIT(
        {
            const failing_memory memory(reader_allocations);
            crv_ReadMad(file.path(), crv_ParseSel("0", 0));
        },
        testing::ExitedWithCode(0), "^    _88-e-calloc, data: Cannot allocate memory\n$");
    const text_file long_file("t\n\n0 0\n1\n");
    EXPECT_EXIT(
        {
            use_up_values();
            const failing_memory memory(reader_allocations + 1);
            crv_ReadMad(long_file.path(), crv_ParseSel("0", 0));
        },
        testing::ExitedWithCode(0), "^    _88-f-calloc: Cannot allocate memory\n$");
}

TEST_F(madymo_file, ProvisionalLabelReadsSlotEntry) {
    crv_DBG = 88;
    read(head + steps({0}), "1:2,0", 1);
    EXPECT_THAT(out, testing::HasSubstr("name = Time, max = 2.000000, min = 2.000000 \n"));
    EXPECT_THAT(out, testing::HasSubstr("name = R:   0, i:0, max"));
}

TEST_F(madymo_file, Level88TracesTheWholeRead) {
    crv_DBG = 88;
    read("t\n\n1 0\nname\n0.5\n7 8\n", "1:2");
    EXPECT_EQ(out, "    _88-i-val, mad_filename = \"" + path +
                       "\" \n"
                       "    _88-i-val, Access results for req =    1, item = 2 \n"
                       "%crv_88-i-wor, Reading \"" +
                       path +
                       "\" ...\n"
                       "    _88-i-val, *************************************\n"
                       "    _88-i-val, rec = 7 8\n \n"
                       "    _88-i-val, item = 2, val1 = 8.000000 \n"
                       "    _88-i-val, current_time = 0.500000 \n"
                       "%crv_88-i-pts, file (" +
                       path +
                       ") has 1 steps\n"
                       "    _88-i-val, ---------------------------- \n"
                       "    _88-i-val, name = R:   1, i:2, max = 8.000000, min = 8.000000 \n"
                       "    _88-i-val, var1 = 0.500000, var2 = 0.500000 \n"
                       "    _88-i-val,   1: value =      8.000 \n");
}

} // namespace
