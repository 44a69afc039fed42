// unit/records_test.cpp - column and chart records, and their dumps.
#include "records/dump.h"

#include "support.h"

#include <cstring>

namespace {

using records = fresh_run;

TEST_F(records, ANewColumnIsZeroFilled) {
    const crv_column *column = crv_AllocColumn(30);
    ASSERT_NE(column, nullptr);
    EXPECT_EQ(crv_columns[30], column);
    const crv_column zero = {};
    EXPECT_EQ(memcmp(column, &zero, sizeof zero), 0);
}

TEST_F(records, FailedColumnKeepsOldColumn) {
    const crv_column *before = crv_AllocColumn(3);
    const failing_memory memory(0);
    EXPECT_EQ(crv_AllocColumn(3), nullptr);
    EXPECT_EQ(errno, ENOMEM);
    EXPECT_EQ(crv_columns[3], before);
}

TEST_F(records, ValuesAreZeroFilledAndApart) {
    const crv_value *last = nullptr;
    for (int k = 0; k < 10000; ++k) {
        crv_value *value = crv_AllocValue();
        ASSERT_NE(value, nullptr);
        ASSERT_NE(value, last);
        ASSERT_EQ(value->val, 0.0);
        ASSERT_EQ(value->next, nullptr);
        value->val = 1.0;
        value->next = value;
        last = value;
    }
}

TEST_F(records, ValuesRunOutWithTheMemory) {
    use_up_values();
    const failing_memory memory(1);
    int given = 0;
    while (crv_AllocValue()) ++given;
    EXPECT_GE(given, 4096);
    EXPECT_EQ(crv_AllocValue(), nullptr);
    EXPECT_EQ(errno, ENOMEM);
}

TEST_F(records, ANewChartHasItsDefaults) {
    const crv_chart *chart = crv_AllocCht(0);
    ASSERT_EQ(chart, crv_charts[0]);
    EXPECT_EQ(chart->style, 1);
    EXPECT_EQ(chart->num_curves, 0);
    for (int k = 0; k < 7; ++k) {
        EXPECT_EQ(chart->curves[k]->xcol, 0);
        EXPECT_EQ(chart->curves[k]->ycol, k < 5 ? k + 1 : 0);
    }
    EXPECT_THAT(chart->xminmax, testing::ElementsAre(10.0, -10.0));
    EXPECT_THAT(chart->yminmax, testing::ElementsAre(20.0, -20.0));
    EXPECT_THAT(chart->zoomxminmax, testing::ElementsAre(11.0, -11.0));
    EXPECT_THAT(chart->zoomyminmax, testing::ElementsAre(22.0, -22.0));
}

TEST_F(records, SecondAllocChtKeepsSomeTexts) {
    crv_chart *chart = crv_AllocCht(0);
    for (auto &title : chart->major_t) strcpy(title, "t");
    for (auto &title : chart->minor_t) strcpy(title, "t");
    for (auto &story : chart->story_ts) strcpy(story, "s");
    strcpy(chart->xaxis_t, "x");
    strcpy(chart->yaxis_ts[7], "y");
    strcpy(chart->ylegends[7], "l");
    strcpy(chart->fig, "f");
    chart->style = 9;
    chart->num_curves = 4;
    chart->curves[6]->ycol = 6;
    chart->xminmax[0] = chart->yminmax[1] = chart->zoomxminmax[0] = chart->zoomyminmax[1] = 5.0;

    EXPECT_EQ(stdout_of([&] { EXPECT_EQ(crv_AllocCht(0), chart); }),
              "%crv_50-w-ini, Chart struct already allocated, Reinitalizing\n");
    for (const auto &title : chart->major_t) EXPECT_STREQ(title, "");
    for (const auto &title : chart->minor_t) EXPECT_STREQ(title, "");
    for (const auto &story : chart->story_ts) EXPECT_STREQ(story, "");
    EXPECT_STREQ(chart->xaxis_t, "x");
    EXPECT_STREQ(chart->yaxis_ts[7], "y");
    EXPECT_STREQ(chart->ylegends[7], "l");
    EXPECT_STREQ(chart->fig, "f");
    EXPECT_EQ(chart->style, 1);
    EXPECT_EQ(chart->num_curves, 0);
    EXPECT_EQ(chart->curves[6]->ycol, 0);
    EXPECT_THAT(chart->xminmax, testing::ElementsAre(10.0, -10.0));
    EXPECT_THAT(chart->yminmax, testing::ElementsAre(20.0, -20.0));
    EXPECT_THAT(chart->zoomxminmax, testing::ElementsAre(11.0, -11.0));
    EXPECT_THAT(chart->zoomyminmax, testing::ElementsAre(22.0, -22.0));
}

TEST_F(records, AChartWithoutMemoryIsReported) {
    const failing_memory memory(0);
    EXPECT_EQ(stderr_of([] { EXPECT_EQ(crv_AllocCht(0), nullptr); }),
              "    _50-e-calloc, data: Cannot allocate memory\n");
}

TEST_F(records, ACurveWithoutMemoryIsReported) {
    for (int good = 1; good <= 7; ++good) {
        crv_charts[0] = nullptr;
        const failing_memory memory(good);
        EXPECT_EQ(stderr_of([] { EXPECT_EQ(crv_AllocCht(0), nullptr); }),
                  "    _50-e-calloc, curve: Cannot allocate memory\n");
    }
}

TEST_F(records, ChartDumpShowsLinesInOrder) {
    crv_chart *chart = crv_AllocCht(0);
    strcpy(chart->major_t[0], "first");
    strcpy(chart->minor_t[1], "fourth");
    strcpy(chart->fig, "F1");
    strcpy(chart->yaxis_ts[2], "third");
    strcpy(chart->yaxis_ts[3], "not shown");
    chart->num_curves = 3;
    const auto address = std::to_string(static_cast<unsigned>(reinterpret_cast<uintptr_t>(chart)));
    EXPECT_EQ(stdout_of([] { crv_DumpChts(0); }),
              "%crv_82-i-val, Dumping chart structure.  \n"
              " \n"
              "    _82-i-val, ********************************* \n"
              "    _82-i-val, charts[0]  = " +
                  address +
                  " \n"
                  "    _82-i-val, major_t[0]  = first\n"
                  "    _82-i-val, major_t[1]  = \n"
                  "    _82-i-val, minor_t[0]  = \n"
                  "    _82-i-val, minor_t[1]  = fourth\n"
                  "    _82-i-val, xaxis_t     = \n"
                  "    _82-i-val, yaxis_ts[0] = \n"
                  "    _82-i-val, yaxis_ts[1] = \n"
                  "    _82-i-val, yaxis_ts[2] = third\n"
                  "    _82-i-val, ylegends[0] = \n"
                  "    _82-i-val, fig         = F1\n"
                  "    _82-i-val, xminmax     = 10.000000   ::: -10.000000 \n"
                  "    _82-i-val, yminmax     = 20.000000   ::: -20.000000 \n"
                  "    _82-i-val, zoomxminmax = 11.000000   ::: -11.000000 \n"
                  "    _82-i-val, zoomyminmax = 22.000000   ::: -22.000000 \n"
                  "    _82-i-val, style       = 1   \n"
                  "    _82-i-val, num_curves  = 3   \n");
}

TEST_F(records, EmptyTableDumpsHeadingOnly) {
    EXPECT_EQ(stdout_of([] { crv_DumpCols(0, 0, 3); }),
              "%crv_86-i-dmp, Dumping column data ...\n\n");
}

TEST_F(records, DumpedLinesHaveEightValues) {
    crv_column *column = add_column(0, std::vector<double>(17, 1.5));
    const std::string eight = " 1.5000e+00  1.5000e+00  1.5000e+00  1.5000e+00 "
                              " 1.5000e+00  1.5000e+00  1.5000e+00  1.5000e+00 \n";
    EXPECT_EQ(stdout_of([] { crv_DumpCols(0, 0, 2); }),
              "%crv_86-i-dmp, Dumping column data ...\n\n" + eight + eight + " 1.5000e+00  \n");
    EXPECT_EQ(column->val_cur, nullptr);
}

TEST_F(records, DumpedHeadersShowSignedCount) {
    crv_column *column = add_column(0, {});
    strcpy(column->coltitle, "run");
    strcpy(column->colname, "Time");
    column->numpts = -32768;
    column->min = 1;
    column->max = 2;
    column->mean = 1.5;
    add_column(1, {});
    const std::string heading = "%crv_86-i-dmp, Dumping column data ...\n\n";
    const std::string first = "    _86-i-val, ------------------------------------ \n"
                              "    _86-i-val, coltitle = \"run\" \n"
                              "    _86-i-val, colname  = \"Time\" \n"
                              "    _86-i-val, numpts   = \"4294934528\" \n"
                              "    _86-i-val, min      = \"1.000000\" \n"
                              "    _86-i-val, max      = \"2.000000\" \n"
                              "    _86-i-val, mean     = \"1.500000\" \n"
                              "    _86-i-val, stddev   = \"0.000000\" \n"
                              " \n";
    const std::string shown = stdout_of([] { crv_DumpCols(0, 0, 1); });
    EXPECT_EQ(shown.substr(0, heading.size() + first.size()), heading + first);
    EXPECT_THAT(shown.substr(heading.size() + first.size()),
                testing::HasSubstr("numpts   = \"0\""));
}

TEST_F(records, DumpModesEndWithBlankLine) {
    add_column(0, {});
    EXPECT_EQ(stdout_of([] { crv_DumpCols(0, 0, 0); }),
              "%crv_86-i-dmp, Dumping column data ...\n\n \n");
}

TEST_F(records, FullTableIsDumpedCompletely) {
    for (int slot = 0; slot < CRV_MAXCOLS; ++slot) add_column(slot, {1.0});
    const std::string shown = stdout_of([] { crv_DumpCols(0, 0, 2); });
    EXPECT_EQ(std::count(shown.begin(), shown.end(), '\n'), 2 + 31);
}

} // namespace
