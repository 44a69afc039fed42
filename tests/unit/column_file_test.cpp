// unit/column_file_test.cpp - reading column files: rows, labels, screening, statistics, errors.
#include "readers/column_file.h"

#include "reader_support.h"

#include <cmath>

namespace {

class column_file : public reader_test {
  protected:
    int read(const std::string &bytes, const char *selection, int label_line = 1,
             int first_slot = 0) {
        return read_with(
            [&](const char *name) {
                return crv_ReadPost(name, crv_ParseSel(selection, first_slot), label_line,
                                    label_line + 1);
            },
            bytes);
    }
};

const std::string table = "time disp vel\n0.0 1 10\n0.1,2,20\n0.2 3 , 30\n0.3 4 40\n0.4 5 50\n";

TEST_F(column_file, ColumnZeroIsRowCount) {
    EXPECT_EQ(read(table, "0,3"), 2);
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{1, 2, 3, 4, 5}));
    EXPECT_EQ(values_of(crv_columns[1]), (numbers{10, 20, 30, 40, 50}));
    EXPECT_EQ(crv_columns[0]->var1, 0.0);
    EXPECT_EQ(crv_columns[0]->var2, 4.0);
    EXPECT_EQ(out, "%crv_94-i-wor, Reading \"" + path +
                       "\" ...\n"
                       "%crv_94-i-val, file " +
                       path +
                       " has  3 columns.\n"
                       "%crv_94-i-pts, file " +
                       path + " has 5 steps\n");
    EXPECT_EQ(err, "");
}

TEST_F(column_file, LabelsDoNotNameColumnZero) {
    read(table, "3,0,1,2");
    EXPECT_STREQ(crv_columns[0]->colname, "vel");
    EXPECT_STREQ(crv_columns[1]->colname, "Row Count");
    EXPECT_STREQ(crv_columns[2]->colname, "time");
    EXPECT_STREQ(crv_columns[3]->colname, "disp");
    EXPECT_STREQ(crv_columns[0]->coltitle, "");
}

TEST_F(column_file, UnlabelledDataBeginOnLineOne) {
    read("1 2\n3 4\n", "0,2", 0);
    EXPECT_EQ(values_of(crv_columns[1]), (numbers{2, 4}));
    EXPECT_STREQ(crv_columns[1]->colname, "Column    2");
    EXPECT_STREQ(crv_columns[0]->colname, "Row Count");
}

TEST_F(column_file, LinesBeforeLabelLineAreSkipped) {
    read("one\ntwo\na b\n1 2\n", "2", 3);
    EXPECT_STREQ(crv_columns[0]->colname, "b");
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{2}));
}

TEST_F(column_file, NegativeLabelLineFindsNoColumns) {
    EXPECT_EQ(read("1 2\n3 4\n", "1", -3), 0);
    EXPECT_THAT(out, testing::HasSubstr(
                         "has  0 columns.\n%crv_94-f-nocol, Column \"1\" does not exist!\n"));
    EXPECT_EQ(read("1 2\n3 4\n", "0", -3), 1) << "the row count needs no column";
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{1, 2}));
}

TEST_F(column_file, LabelLineMinusOneKeepsRows) {
    EXPECT_EQ(read("1 2\n3 4\n", "0", -1), 1);
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{1, 2}));
}

TEST_F(column_file, ColumnAfterLastDoesNotExist) {
    const std::string bytes = "a b c d\n1 2 3 4\n";
    EXPECT_EQ(read(bytes, "4"), 1);
    EXPECT_EQ(read(bytes, "4,5"), 0);
    EXPECT_EQ(out, "%crv_94-i-wor, Reading \"" + path +
                       "\" ...\n"
                       "%crv_94-i-val, file " +
                       path +
                       " has  4 columns.\n"
                       "%crv_94-f-nocol, Column \"5\" does not exist!\n");
    EXPECT_EQ(read(bytes, "-1"), 0);
    EXPECT_THAT(out, testing::HasSubstr("Column \"4294967295\" does not exist!\n"));
}

TEST_F(column_file, RowsOutsideTimeWindowAreCounted) {
    crv_settings.time_window[0] = 2;
    crv_settings.time_window[1] = 4;
    read(table, "0,2");
    EXPECT_EQ(values_of(crv_columns[1]), (numbers{2, 3, 4}));
    EXPECT_EQ(crv_columns[1]->numpts, 5);
    EXPECT_EQ(crv_columns[1]->sum, 9.0);
    EXPECT_EQ(crv_columns[1]->mean, 9.0 / 5);
    EXPECT_EQ(crv_columns[1]->var1, 1.0) << "row indices count from 0";
    EXPECT_EQ(crv_columns[1]->var2, 3.0);
    const auto mean = [&] {
        return "%crv_94-w-mea, Means of \"" + path +
               "\" are sums over the values in 3 rows divided by the number of values in all 5"
               " rows\n";
    };
    EXPECT_EQ(err, "%crv_94-w-win, 2 of 5 points of \"" + path +
                       "\" are outside the default time window -100:10000 and left out, see -tm\n" +
                       mean());
    crv_settings.time_window_given = true;
    read(table, "0,2");
    EXPECT_EQ(err, mean());
}

TEST_F(column_file, MagnitudesFollowSignedComparison) {
    read("a\n-5\n-7\n-6\n-9\n-1\n", "1");
    EXPECT_EQ(crv_columns[0]->absmax, 5.0) << "the magnitude of the first value";
    EXPECT_EQ(crv_columns[0]->absmin, 1.0)
        << "of the last value below the smallest magnitude so far";
    EXPECT_EQ(crv_columns[0]->min, -9.0);
    EXPECT_EQ(crv_columns[0]->max, -1.0);
}

TEST_F(column_file, OtherStatisticsStayZero) {
    read(table, "2");
    const crv_column *c = crv_columns[0];
    for (const uint32_t step :
         {c->min_step, c->max_step, c->absmin_step, c->absmax_step, c->begin_step, c->end_step})
        EXPECT_EQ(step, 0U);
    for (const double time : {c->min_time, c->max_time, c->absmin_time, c->absmax_time,
                              c->begin_time, c->end_time, c->begin_val, c->end_val, c->stddev})
        EXPECT_EQ(time, 0.0);
    EXPECT_EQ(c->max, 5.0);
    EXPECT_EQ(c->absmax, 5.0);
    EXPECT_EQ(c->absmin, 1.0);
}

TEST_F(column_file, ShortRowAddsNoValue) {
    read("a b\n1 2\n3\n\n5 6\n", "0,1,2");
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{1, 2, 3, 4}));
    EXPECT_EQ(values_of(crv_columns[1]), (numbers{1, 3, 5}));
    EXPECT_EQ(values_of(crv_columns[2]), (numbers{2, 6}));
    EXPECT_EQ(crv_columns[2]->numpts, 2);
    EXPECT_EQ(crv_columns[2]->var2, 3.0);
}

TEST_F(column_file, UnterminatedLastRowIsIgnored) {
    read("a\n1\n2", "1");
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{1}));
    EXPECT_THAT(out, testing::HasSubstr("has 1 steps"));
    EXPECT_EQ(read("a\n1", "1"), 1) << "but it counts the columns";
    EXPECT_EQ(crv_columns[0]->numpts, 0);
    EXPECT_TRUE(std::isnan(crv_columns[0]->mean));
}

// A read that stops at the limit does not see the end of the file.
TEST_F(column_file, UnterminatedRowAtLimitIsUsed) {
    read("a\n1\n" + std::string(1021, ' ') + "2", "1");
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{1})) << "1,022 characters";
    read("a\n1\n" + std::string(1022, ' ') + "2", "1");
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{1, 2})) << "1,023 characters";
}

TEST_F(column_file, AColumnMayBeNamedTwice) {
    read(table, "2,2,1");
    EXPECT_EQ(values_of(crv_columns[0]), values_of(crv_columns[1]));
    EXPECT_STREQ(crv_columns[1]->colname, "disp");
    EXPECT_EQ(values_of(crv_columns[2]), (numbers{0, 0.1, 0.2, 0.3, 0.4}));
}

TEST_F(column_file, LabelsAreCutAndPercentsUnescaped) {
    read("%% 50%% a%b %s%n " + std::string(40, 'l') + "\n1 2 3 4 5\n", "1,2,3,4,5");
    EXPECT_STREQ(crv_columns[0]->colname, "%");
    EXPECT_STREQ(crv_columns[1]->colname, "50%");
    EXPECT_STREQ(crv_columns[2]->colname, "a%b");
    EXPECT_STREQ(crv_columns[3]->colname, "%s%n");
    EXPECT_EQ(crv_columns[4]->colname, std::string(31, 'l'));
}

TEST_F(column_file, RowOver1022CharactersIsTwo) {
    read("a\n1" + std::string(1021, ' ') + "\n2" + std::string(1100, ' ') + "3\n", "0,1");
    EXPECT_EQ(values_of(crv_columns[1]), (numbers{1, 2, 3}));
    EXPECT_EQ(values_of(crv_columns[0]), (numbers{1, 2, 3}));
}

TEST_F(column_file, FileWithoutRowsHasNoColumns) {
    EXPECT_EQ(read("a b c\n", "1"), 0);
    EXPECT_THAT(out, testing::HasSubstr("has  0 columns.\n"));
}

TEST_F(column_file, FailuresEndTheProgramWithZero) {
    EXPECT_EXIT(crv_ReadPost("/nowhere/a.pos", crv_ParseSel("0", 0), 1, 2),
                testing::ExitedWithCode(0), "^    _94-f-fopen: No such file or directory\n$");
    const text_file file(table);
    EXPECT_EXIT(
        {
            const failing_memory memory(reader_allocations);
            crv_ReadPost(file.path(), crv_ParseSel("0", 0), 1, 2);
        },
        testing::ExitedWithCode(0), "^    _94-e-calloc, data: Cannot allocate memory\n$");
    const text_file long_file("a\n1\n");
    EXPECT_EXIT(
        {
            use_up_values();
            const failing_memory memory(reader_allocations + 1);
            crv_ReadPost(long_file.path(), crv_ParseSel("1", 0), 1, 2);
        },
        testing::ExitedWithCode(0), "^    _94-f-calloc: Cannot allocate memory\n$");
}

TEST_F(column_file, RowCountLabelReadsSlotEntry) {
    read("1 2\n", "2,0", 0, 1);
    EXPECT_STREQ(crv_columns[1]->colname, "Row Count") << "slot 1 asks entry 1";
    EXPECT_STREQ(crv_columns[2]->colname, "Column    0")
        << "slot 2 asks an entry that is not there";
}

TEST_F(column_file, Level94TracesTheWholeRead) {
    crv_DBG = 94;
    crv_settings.time_window[1] = 1;
    read("a bb\n1 2\n3 4\n", "2");
    EXPECT_EQ(out, "    _94-i-val, pos_filename = \"" + path +
                       "\" \n"
                       "    _94-i-val, Access column =  2, \n"
                       "%crv_94-i-wor, Reading \"" +
                       path +
                       "\" ...\n"
                       "%crv_94-i-val, file " +
                       path +
                       " has  2 columns.\n"
                       "    _94-i-val, rec = a bb\n \n"
                       "    _94-i-val, item = 2, label = bb \n"
                       "    _94-i-val, rec = 1 2\n \n"
                       "    _94-i-val, item = 2, val1 = 2.000000 \n"
                       "    _94-i-val, rec = 3 4\n \n"
                       "    _94-i-val, item = 2, val1 = 4.000000 \n"
                       "%crv_94-i-pts, file " +
                       path +
                       " has 2 steps\n"
                       "    _94-i-val, ---------------------------- \n"
                       "    _94-i-val, name = bb, max = 2.000000, min = 2.000000 \n"
                       "    _94-i-val, var1 = 0.000000, var2 = 0.000000, mean = 1.000000 \n"
                       "    _94-i-val,   1: value =      2.000 \n");
    EXPECT_EQ(crv_columns[0]->val_cur, nullptr);
}

} // namespace
