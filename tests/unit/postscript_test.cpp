// unit/postscript_test.cpp - each section of the chart file, and the printer command.
#include "postscript/balance.h"
#include "postscript/chart_file.h"

#include "support.h"

#include <cmath>
#include <cstring>

namespace {

class sections : public fresh_run {
  protected:
    void SetUp() override {
        fresh_run::SetUp();
        chart = crv_AllocCht(0);
        chart->xminmax[0] = chart->yminmax[0] = 0;
        chart->xminmax[1] = 10;
        chart->yminmax[1] = 100;
    }

    // Returns the fourth section; the printed text is in `out`.
    std::string data_section() {
        std::string text;
        out = stdout_of([&] {
            text =
                written_by([&](FILE *stream) { crv_PlotData(stream, 135, 110, 600, 400, chart); });
        });
        return text;
    }

    // Adds columns 0 to n, named c0 to cn, with two points each.
    void add_curves(int n) {
        for (int k = 0; k <= n; ++k) add_column(k, {0, 10}, ("c" + std::to_string(k)).c_str());
        chart->num_curves = static_cast<uint16_t>(n);
    }

    crv_chart *chart = nullptr;
    std::string out;
};

int count_of(const std::string &text, const std::string &part) {
    int count = 0;
    for (size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
    return count;
}

const std::string begin_points = "%% --- Begin drawing chart points - (crv_ module [[44]]) ---\n";
const std::string end_data = "%% --- End Drawing chart Data  ---- (crv_ module [[44]]) ---\n";

// Returns the path of curve n in the fourth section.
std::string path_of(const std::string &section, int n) {
    size_t begin = 0;
    for (int k = 0; k < n; ++k) begin = section.find(begin_points, begin) + begin_points.size();
    return section.substr(begin, section.find("crv_line_0\n", begin) - begin);
}

// ----- balance

const std::string parens =
    "%crv_47-e-bal, Unbalanced parens found in string while writing \"crv.ps\"\n";
const std::string braces =
    "%crv_47-e-bal, Unbalanced braces found in string while writing \"crv.ps\"\n";

TEST(Balance, BalancedTextIsFine) {
    for (const char *text : {"", "abc", "(a)", "{}", "({[)}"})
        EXPECT_EQ(stderr_of([&] { crv_ChkBal(text); }), "") << text;
}

TEST(Balance, OnlyTheTotalsCount) {
    EXPECT_EQ(stderr_of([] { crv_ChkBal(")("); }), "");
}

TEST(Balance, ABackslashDoesNotExempt) {
    EXPECT_EQ(stderr_of([] { crv_ChkBal("\\("); }), parens + "    _47-e-bal,  \"\\(\"\n");
}

TEST(Balance, UnmatchedBraceGivesBraceMessagesOnly) {
    EXPECT_EQ(stderr_of([] { crv_ChkBal("a}"); }), braces + "    _47-e-bal,  \"a}\"\n");
}

TEST(Balance, BothGiveBothParensFirst) {
    EXPECT_EQ(stderr_of([] { crv_ChkBal("({"); }),
              parens + "    _47-e-bal,  \"({\"\n" + braces + "    _47-e-bal,  \"({\"\n");
}

// ----- preamble

TEST_F(sections, PreambleHasStoriesUnchanged) {
    strcpy(chart->story_ts[1], "a(b");
    strcpy(chart->story_ts[2], "50%s");
    const std::string path =
        testing::TempDir() + "crv_unit_head_" + std::to_string(getpid()) + ".ps";
    const std::string complaint = stderr_of([&] { fclose(crv_PlotHead(path.c_str(), chart)); });
    const std::string text = bytes_of(path);
    remove(path.c_str());
    EXPECT_EQ(complaint, parens + "    _47-e-bal,  \"a(b\"\n");
    EXPECT_THAT(text,
                testing::HasSubstr(
                    "/crv_story_1 (a(b) def \n/crv_story_2 (50%s) def \n/crv_story_3 () def \n"));
    EXPECT_THAT(text, testing::StartsWith("%!                                   \n"
                                          "%% --- Filename     : crv.ps        \n"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 126);
}

TEST_F(sections, EveryStoryIsCheckedForBalance) {
    for (const int number : {1, 2, 3}) {
        for (auto &story : chart->story_ts) strcpy(story, "");
        strcpy(chart->story_ts[number], "({");
        const std::string path =
            testing::TempDir() + "crv_unit_story_" + std::to_string(getpid()) + ".ps";
        EXPECT_EQ(stderr_of([&] { fclose(crv_PlotHead(path.c_str(), chart)); }),
                  parens + "    _47-e-bal,  \"({\"\n" + braces + "    _47-e-bal,  \"({\"\n");
        remove(path.c_str());
    }
}

TEST_F(sections, UnwritableChartEndsProgram) {
    EXPECT_EXIT(crv_PlotHead("/nowhere/at/all/crv.ps", chart), testing::ExitedWithCode(0),
                "^    _41-e-fopen: No such file or directory\n$");
}

// ----- line styles

TEST_F(sections, LegendProcedureHasRowPerCurve) {
    add_curves(6);
    const std::string text =
        written_by([&](FILE *stream) { crv_PlotTxt(stream, 1, 2, 3, 4, 10, chart); });
    EXPECT_EQ(text,
              "%% --- Begin setting Legend information - (crv_ module [[47]]) ---\n"
              "/Helvetica findfont 10 scalefont setfont \n"
              "/crv_line_0 {[] 0 setdash 1 setlinewidth 0 setgray 0 0 0 setrgbcolor } def \n"
              "/crv_line_1 {[] 0 setdash 1 setlinewidth 0 setgray 0 0 0 setrgbcolor } def \n"
              "/crv_line_2 {[2 2] 0 setdash 1 setlinewidth 0 setgray 0 0 0 setrgbcolor } def \n"
              "/crv_line_3 {[5 5] 0 setdash 1 setlinewidth 0 setgray 0 0 0 setrgbcolor } def \n"
              "/crv_line_4 {[8 2 2 2] 0 setdash 1 setlinewidth 0 setgray 0 0 0 setrgbcolor } def \n"
              "/crv_line_5 {[] 0 setdash 1 setlinewidth 0 setgray 0 1 1 setrgbcolor } def \n"
              " \n"
              "/crv_Legend {  \n"
              "  /y_loc exch def /x_loc exch def \n"
              "  /charsize (M) stringwidth pop def \n"
              "  /spacesize 0.4 charsize mul def \n"
              "  /lm x_loc def \n"
              "  /y_cur y_loc charsize sub def\n"
              "  crv_line_1 lm y_cur moveto 36 0 rlineto stroke\n"
              "  crv_line_0 lm 46 add y_cur moveto (c1) show\n"
              "  /y_cur y_cur charsize sub spacesize sub def \n"
              "  crv_line_2 lm y_cur moveto 36 0 rlineto stroke\n"
              "  crv_line_0 lm 46 add y_cur moveto (c2) show\n"
              "  /y_cur y_cur charsize sub spacesize sub def \n"
              "  crv_line_3 lm y_cur moveto 36 0 rlineto stroke\n"
              "  crv_line_0 lm 46 add y_cur moveto (c3) show\n"
              "  /y_cur y_cur charsize sub spacesize sub def \n"
              "  crv_line_4 lm y_cur moveto 36 0 rlineto stroke\n"
              "  crv_line_0 lm 46 add y_cur moveto (c4) show\n"
              "  /y_cur y_cur charsize sub spacesize sub def \n"
              "  crv_line_5 lm y_cur moveto 36 0 rlineto stroke\n"
              "  crv_line_0 lm 46 add y_cur moveto (c5) show\n"
              "  /y_cur y_cur charsize sub spacesize sub def \n"
              "  crv_line_5 lm y_cur moveto 36 0 rlineto stroke\n"
              "  crv_line_0 lm 46 add y_cur moveto (c6) show\n"
              "  /y_cur y_cur charsize sub spacesize sub def \n"
              "  0 0 0 setrgbcolor \n"
              "} def \n"
              "%% 680 500 crv_Legend \n"
              "%% --- End Drawing chart Text  ---- (crv_ module [[47]]) ---\n"
              "\n");
}

TEST_F(sections, LegendProcedureWithoutCurvesIsEmpty) {
    const std::string text =
        written_by([&](FILE *stream) { crv_PlotTxt(stream, 1, 2, 3, 4, 12, chart); });
    EXPECT_THAT(text, testing::HasSubstr("/Helvetica findfont 12 scalefont setfont \n"));
    EXPECT_THAT(text, testing::HasSubstr(
                          "  /y_cur y_loc charsize sub def\n  0 0 0 setrgbcolor \n} def \n"));
}

TEST_F(sections, UnbalancedNameIsReportedAndWritten) {
    add_column(0, {1});
    add_column(1, {1}, "a(b");
    chart->num_curves = 1;
    std::string text;
    EXPECT_EQ(stderr_of([&] {
                  text = written_by([&](FILE *s) { crv_PlotTxt(s, 1, 2, 3, 4, 10, chart); });
              }),
              parens + "    _47-e-bal,  \"a(b\"\n");
    EXPECT_THAT(text, testing::HasSubstr("moveto (a(b) show\n"));
}

// ----- curves

TEST_F(sections, RangeOf0_0005IsZero) {
    add_curves(1);
    chart->xminmax[1] = 0.0005;
    EXPECT_EQ(data_section(), "");
    EXPECT_EQ(out, "%crv_44-e-zero, X range is zero \n");
    chart->xminmax[1] = -0.0005;
    EXPECT_EQ(data_section(), "");
    chart->xminmax[1] = -0.00051;
    EXPECT_NE(data_section(), "") << "low above high is no range of zero";
    chart->xminmax[1] = 0.00051;
    chart->yminmax[1] = 0.0005;
    EXPECT_EQ(data_section(), "");
    EXPECT_EQ(out, "%crv_44-e-zero, Y range is zero \n");
    chart->yminmax[1] = 0.00051;
    EXPECT_NE(data_section(), "");
}

TEST_F(sections, MissingCurvesLeaveOnlyHead) {
    add_curves(0);
    EXPECT_EQ(data_section(), "%% --- Begin drawing chart data  -- (crv_ module [[44]]) ---\n"
                              "/Helvetica findfont 10 scalefont setfont \n");
}

TEST_F(sections, OneCurveWritesTheWholeSection) {
    add_column(0, {0, 5, 10}, "Time");
    add_column(1, {0, 100, 25}, "Force");
    chart->num_curves = 1;
    strcpy(chart->major_t[0], "Title");
    strcpy(chart->minor_t[0], "Run");
    EXPECT_EQ(data_section(), "%% --- Begin drawing chart data  -- (crv_ module [[44]]) ---\n"
                              "/Helvetica findfont 10 scalefont setfont \n"
                              "635 80 moveto (Force) show \n"
                              "crv_line_1\n"
                              "[] 0 setdash 1 setlinewidth 0 setgray\n"
                              "1 0 0 setrgbcolor \n"
                              "545 80 moveto 625 80 lineto stroke \n"
                              " [] 0 setdash 1 setlinewidth 0 setgray\n"
                              "/Times-Italic findfont 20 scalefont setfont \n"
                              "435 550 (Title) CenterHorText \n"
                              "/Courier findfont 15 scalefont setfont \n"
                              "435 530 (Run) CenterHorText \n"
                              "/Helvetica findfont 20 scalefont setfont \n"
                              "175 70 moveto (Time) show \n"
                              "/Helvetica findfont 10 scalefont setfont \n"
                              "127 95 moveto (   0.00) show \n"
                              "727 95 moveto (  10.00) show \n"
                              "427 95 moveto (   5.00) show \n"
                              "277 95 moveto (   2.50) show \n"
                              "577 95 moveto (   7.50) show \n"
                              "75 106 moveto (   0.00) show \n"
                              "75 506 moveto ( 100.00) show \n"
                              "75 306 moveto (  50.00) show \n"
                              "75 206 moveto (  25.00) show \n"
                              "75 406 moveto (  75.00) show \n"
                              "crv_line_1 \n" +
                                  begin_points +
                                  "135 110 moveto \n"
                                  "435 510 lineto 735 210 lineto stroke \n"
                                  "crv_line_0\n" +
                                  end_data);
    EXPECT_EQ(out, "");
}

TEST_F(sections, FiveDecimalsUpTo0_05) {
    add_curves(1);
    chart->xminmax[0] = -1;
    chart->xminmax[1] = 0.05;
    EXPECT_THAT(data_section(), testing::HasSubstr("727 95 moveto (0.05000) show \n"));
    chart->xminmax[1] = 0.06;
    EXPECT_THAT(data_section(), testing::HasSubstr("727 95 moveto (   0.06) show \n"));
    chart->yminmax[0] = -1;
    chart->yminmax[1] = 0.05;
    EXPECT_THAT(
        data_section(),
        testing::HasSubstr("75 106 moveto (-1.00000) show \n75 506 moveto (0.05000) show \n"));
}

TEST_F(sections, SymmetricRangesScaleNumbersAndPoints) {
    add_column(0, {-10, 0, 5, 10}, "x");
    add_column(1, {-100, 0, 50, 100}, "y");
    chart->num_curves = 1;
    chart->xminmax[0] = -10;
    chart->yminmax[0] = -100;
    const std::string text = data_section();
    EXPECT_EQ(out, "");
    EXPECT_THAT(text, testing::HasSubstr("127 95 moveto ( -10.00) show \n"
                                         "727 95 moveto (  10.00) show \n"
                                         "427 95 moveto (   0.00) show \n"
                                         "277 95 moveto (  -5.00) show \n"
                                         "577 95 moveto (   5.00) show \n"
                                         "75 106 moveto (-100.00) show \n"
                                         "75 506 moveto ( 100.00) show \n"
                                         "75 306 moveto (   0.00) show \n"
                                         "75 206 moveto ( -50.00) show \n"
                                         "75 406 moveto (  50.00) show \n"));
    EXPECT_EQ(path_of(text, 1), "135 110 moveto \n"
                                "435 310 lineto 585 410 lineto 735 510 lineto stroke \n");
}

TEST_F(sections, NanUpperBoundHasTwoDecimals) {
    add_curves(1);
    chart->xminmax[1] = NAN;
    EXPECT_THAT(data_section(), testing::HasSubstr("127 95 moveto (   0.00) show \n"));
}

TEST_F(sections, PointOnRangeBoundIsDrawn) {
    add_column(0, {0, 10, 10.001, -0.001, 5, 5, NAN, 5});
    add_column(1, {100, 0, 50, 50, 100.001, -0.001, 50, NAN});
    chart->num_curves = 1;
    EXPECT_EQ(path_of(data_section(), 1), "135 510 moveto \n735 110 lineto stroke \n");
}

// Longer positions than any on a page: the path exceeds its buffer within a stroke.
TEST_F(sections, LongPathIsWrittenWhole) {
    add_column(0, std::vector<double>(900, 10));
    add_column(1, std::vector<double>(900, 100));
    chart->num_curves = 1;
    const std::string text = written_by(
        [&](FILE *stream) { crv_PlotData(stream, 2000000000, 1000000000, 600, 400, chart); });
    std::string wanted = "2000000600 1000000400 moveto \n";
    for (int k = 2; k <= 900; ++k)
        wanted += k % 5 == 1 ? "2000000600 1000000400 lineto \n" : "2000000600 1000000400 lineto ";
    EXPECT_EQ(path_of(text, 1), wanted + "stroke \n");
}

TEST_F(sections, ShorterListLimitsPairs) {
    add_column(0, {0, 5, 10});
    add_column(1, {0, 0});
    add_column(2, {0, 0, 0, 0});
    chart->num_curves = 2;
    const std::string text = data_section();
    EXPECT_EQ(path_of(text, 1), "135 110 moveto \n435 110 lineto stroke \n");
    EXPECT_EQ(path_of(text, 2), "135 110 moveto \n435 110 lineto 735 110 lineto stroke \n");
}

TEST_F(sections, PositionsAreTruncated) {
    add_column(0, {0, 3.3333});
    add_column(1, {0, 33.339});
    chart->num_curves = 1;
    EXPECT_EQ(path_of(data_section(), 1), "135 110 moveto \n334 243 lineto stroke \n");
}

TEST_F(sections, AppendedFileReplacesLegend) {
    add_curves(2);
    strcpy(chart->story_ts[0], "user.ps");
    strcpy(chart->minor_t[0], "Run");
    const std::string text = data_section();
    for (const char *name : {"(c0)", "(c1)", "(c2)"}) EXPECT_EQ(count_of(text, name), 0);
    EXPECT_EQ(count_of(text, "545 80"), 0);
    EXPECT_EQ(count_of(text, "/Courier"), 0);
    EXPECT_THAT(text, testing::HasSubstr("1 0 0 setrgbcolor \n[] 0 setdash"));
    strcpy(chart->major_t[1], "Second");
    EXPECT_THAT(data_section(), testing::HasSubstr("435 530 (Second) CenterHorText \n"));
}

TEST_F(sections, SecondMajorTitleReplacesSubtitle) {
    add_curves(1);
    strcpy(chart->minor_t[0], "Run");
    strcpy(chart->major_t[1], "Second");
    const std::string text = data_section();
    EXPECT_EQ(count_of(text, "(Run)"), 0);
    EXPECT_EQ(count_of(text, "435 530 (Second) CenterHorText \n"), 1);
}

TEST_F(sections, BothSubtitlesAreCheckedForBalance) {
    add_curves(1);
    strcpy(chart->minor_t[0], "a)");
    EXPECT_EQ(stderr_of([&] { data_section(); }), parens + "    _47-e-bal,  \"a)\"\n");
    strcpy(chart->major_t[1], "b}");
    EXPECT_EQ(stderr_of([&] { data_section(); }), braces + "    _47-e-bal,  \"b}\"\n");
}

TEST_F(sections, OnlyTitleIgnoresFrame) {
    add_curves(1);
    strcpy(chart->major_t[1], "Second");
    const std::string text =
        written_by([&](FILE *stream) { crv_PlotData(stream, 100, 50, 333, 222, chart); });
    for (const char *line : {"600 20 moveto (c1) show \n", "510 20 moveto 590 20 lineto stroke \n",
                             "435 550 () CenterHorText \n", "266 292 (Second) CenterHorText \n",
                             "140 10 moveto (c0) show \n",
                             "92 35 moveto (   0.00) show \n425 35 moveto (  10.00) show \n"
                             "258 35 moveto (   5.00) show \n"
                             "175 35 moveto (   2.50) show \n341 35 moveto (   7.50) show \n",
                             "40 46 moveto (   0.00) show \n40 268 moveto ( 100.00) show \n"
                             "40 157 moveto (  50.00) show \n"
                             "40 101 moveto (  25.00) show \n40 212 moveto (  75.00) show \n",
                             "100 50 moveto \n433 72 lineto stroke \n"})
        EXPECT_THAT(text, testing::HasSubstr(line));
}

TEST_F(sections, CursorsStayWhereTheWalkEnded) {
    crv_column *x = add_column(0, {0, 5, 10});
    crv_column *y = add_column(1, {0, 0});
    chart->num_curves = 1;
    data_section();
    EXPECT_EQ(x->val_cur, x->val_list->next->next);
    EXPECT_EQ(y->val_cur, nullptr);
}

TEST_F(sections, Level441LeavesTheSubtitleOut) {
    add_curves(1);
    strcpy(chart->major_t[1], "Second");
    crv_DBG = 441;
    EXPECT_EQ(count_of(data_section(), "/Courier"), 0);
}

TEST_F(sections, Level44TracesTitleAndRanges) {
    add_curves(1);
    strcpy(chart->major_t[0], "T");
    crv_DBG = 44;
    data_section();
    EXPECT_EQ(out, "    _41-i-val, chart2->major_t[0] = \"T\" \n"
                   "    _44-i-val, xmin = 0.000000, xmax = 10.000000 \n"
                   "    _44-i-val, ymin = 0.000000, ymax = 100.000000 \n");
}

TEST_F(sections, CurvesFromFifthShareStyle) {
    add_curves(6);
    const std::string text = data_section();
    EXPECT_THAT(text, testing::HasSubstr(
                          "(c2) show \ncrv_line_2\n[3] 0 setdash 0.5 setlinewidth .1 setgray\n"
                          "0 1 0 setrgbcolor \n545 65 moveto 625 65 lineto stroke \n %% ---"));
    EXPECT_THAT(text, testing::HasSubstr(
                          "(c3) show \ncrv_line_3\n[3 5] 6 setdash 1 setlinewidth .2 setgray\n"
                          "0 0 1 setrgbcolor \n545 50 moveto 625 50 lineto stroke \n %% ---"));
    EXPECT_THAT(text, testing::HasSubstr(
                          "(c4) show \ncrv_line_4\n[2 3] 11 setdash 1.5 setlinewidth .3 setgray\n"
                          "1 1 0 setrgbcolor \n545 35 moveto 625 35 lineto stroke \n %% ---"));
    EXPECT_THAT(text,
                testing::HasSubstr(
                    "635 20 moveto (c5) show \ncrv_line_5\n[] 0 setdash 1 setlinewidth 0 setgray\n"
                    "0 1 1 setrgbcolor \n545 20 moveto 625 20 lineto stroke \n %% ---"));
    EXPECT_THAT(text,
                testing::HasSubstr(
                    "635 5 moveto (c6) show \ncrv_line_5\n[] 0 setdash 1 setlinewidth 0 setgray\n"
                    "0 1 1 setrgbcolor \n545 5 moveto 625 5 lineto stroke \n %% ---"));
}

std::string against_itself(int curve) {
    return "%crv_44-w-slf, Curve " + std::to_string(curve) +
           " shows column 0 against itself, not the series of its legend: a chart has 5 curves\n";
}

TEST_F(sections, LastCurvesRepeatColumnZero) {
    add_column(0, {0, 5, 10}, "Time");
    for (int k = 1; k <= 7; ++k) add_column(k, {50, 50, 50}, ("c" + std::to_string(k)).c_str());
    chart->num_curves = 7;
    std::string text;
    EXPECT_EQ(stderr_of([&] { text = data_section(); }), against_itself(6) + against_itself(7))
        << "seven curves fit";
    EXPECT_EQ(path_of(text, 5), "135 310 moveto \n435 310 lineto 735 310 lineto stroke \n");
    for (const int n : {6, 7})
        EXPECT_EQ(path_of(text, n), "135 110 moveto \n435 130 lineto 735 150 lineto stroke \n");
    EXPECT_EQ(count_of(text, "(c6) show"), 1);
    EXPECT_EQ(count_of(text, "(c7) show"), 1);
}

TEST_F(sections, WarnsOfPointsLeftOut) {
    add_column(0, {0, 5, 20, 10, 30}, "Time");
    add_column(1, {1, 2, 3, 500, 5, 6, 7}, "c1");
    chart->num_curves = 1;
    EXPECT_EQ(stderr_of([&] { data_section(); }),
              "%crv_44-w-pts, Curve 1: 3 of 5 points are outside the ranges of the chart and left"
              " out\n"
              "%crv_44-w-len, Curve 1: the last 2 values of the longer column are left out\n");
}

TEST_F(sections, CurvesAfterSeventhAreOmitted) {
    add_curves(9);
    std::string text;
    EXPECT_EQ(stderr_of([&] { text = data_section(); }),
              against_itself(6) + against_itself(7) +
                  "%crv_44-w-cur, Only the first 7 of 9 curves are drawn\n");
    EXPECT_EQ(count_of(text, begin_points), 7);
    EXPECT_EQ(chart->num_curves, 9);
}

TEST_F(sections, CurveOutsideRangesKeepsFrame) {
    add_column(0, {20, 30}, "x");
    add_column(1, {20, 30}, "y");
    chart->num_curves = 1;
    EXPECT_EQ(path_of(data_section(), 1), "stroke \n");
    EXPECT_EQ(out, "%crv_44-w-out, Curve \"1\" is out of Plot range \n");
}

TEST_F(sections, SinglePointIsMovetoAndStroke) {
    add_column(0, {5});
    add_column(1, {50});
    chart->num_curves = 1;
    EXPECT_EQ(path_of(data_section(), 1), "435 310 moveto \nstroke \n");
}

TEST_F(sections, FiveLinetosFillALine) {
    add_column(0, std::vector<double>(8, 0.0));
    add_column(1, std::vector<double>(8, 0.0));
    chart->num_curves = 1;
    EXPECT_EQ(path_of(data_section(), 1),
              "135 110 moveto \n"
              "135 110 lineto 135 110 lineto 135 110 lineto 135 110 lineto 135 110 lineto \n"
              "135 110 lineto 135 110 lineto stroke \n");
}

TEST_F(sections, CurveBreaksAfter901Points) {
    add_column(0, std::vector<double>(902, 0.0));
    add_column(1, std::vector<double>(902, 0.0));
    chart->num_curves = 1;
    const std::string path = path_of(data_section(), 1);
    EXPECT_EQ(count_of(path, "lineto"), 901);
    const std::string tail = "135 110 lineto \nstroke \n135 110 moveto \n135 110 lineto stroke \n";
    ASSERT_GT(path.size(), tail.size());
    EXPECT_EQ(path.substr(path.size() - tail.size()), tail);
    EXPECT_EQ(count_of(path, "stroke"), 2);
}

TEST_F(sections, LaterPartsHave900Points) {
    add_column(0, std::vector<double>(2705, 0.0));
    add_column(1, std::vector<double>(2705, 0.0));
    chart->num_curves = 1;
    const std::string path = path_of(data_section(), 1);
    std::vector<int> linetos;
    size_t begin = 0;
    for (size_t end; (end = path.find("stroke \n", begin)) != path.npos; begin = end + 1)
        linetos.push_back(count_of(path.substr(begin, end - begin), "lineto"));
    EXPECT_EQ(linetos, (std::vector<int>{900, 900, 900, 4}));
    EXPECT_EQ(count_of(path, "stroke \n135 110 moveto \n"), 3);
}

TEST_F(sections, UnrepresentablePointsBecomeSmallestInteger) {
    chart->xminmax[0] = -INFINITY;
    add_column(0, {5});
    add_column(1, {50});
    chart->num_curves = 1;
    EXPECT_EQ(path_of(data_section(), 1), "2147483648 310 moveto \nstroke \n");
}

// ----- grid

TEST_F(sections, GridHasFourByFourCells) {
    EXPECT_EQ(written_by([](FILE *stream) { crv_PlotGrid(stream, 135, 110, 600, 400); }),
              "%%  --- Begin drawing Major ticks  \n"
              "[] 0 setdash 0 setlinewidth .3 setgray\n"
              "285 150 585 { \n"
              "  /x_pos exch def \n"
              "  x_pos 110 moveto x_pos 510 lineto stroke  %% --- X major ticks\n"
              "} for\n"
              "210 100 410 { \n"
              "  /y_pos exch def \n"
              "  135 y_pos moveto 735 y_pos lineto stroke  %% --- Y major ticks\n"
              "} for\n"
              "%%  --- Minor ticks for Drawing Grid (crv_ module [[42]])\n"
              "[] 0 setdash 0 setlinewidth\n"
              "135 30 735 { \n"
              "  /x_pos exch def \n"
              "  x_pos 110 moveto x_pos 116 lineto stroke  %% --- X minor ticks (bottom)\n"
              "  x_pos 504 moveto x_pos 510 lineto stroke  %% --- X minor ticks (top)\n"
              "} for\n"
              " 110 20 510 { \n"
              "  /y_pos exch def \n"
              "  135 y_pos moveto 139 y_pos lineto stroke  %% --- Y minor ticks (left)\n"
              "  731 y_pos moveto 735 y_pos lineto stroke  %% --- Y minor ticks (left)\n"
              "} for\n"
              "%%  --- Begin drawing  chart axis  (crv_ module [[42]]) \n"
              "0 0 0 setrgbcolor \n"
              "newpath 135 110 moveto 600 0 rlineto 0 400 rlineto \n"
              "-600 0 rlineto closepath 2 setlinewidth 0 setgray stroke\n"
              "[] 0 setdash 0 setlinewidth 0 setgray \n"
              "%%  --- End Drawing Grid  (crv_ module [[42]]) \n");
}

TEST_F(sections, BlankPrecedesYMinorLoop) {
    EXPECT_THAT(written_by([](FILE *stream) { crv_PlotGrid(stream, 135, 110, 600, 400); }),
                testing::HasSubstr("} for\n 110 20 510 { \n"));
}

TEST_F(sections, RightTicksAreCommentedAsLeft) {
    EXPECT_THAT(written_by([](FILE *stream) { crv_PlotGrid(stream, 135, 110, 600, 400); }),
                testing::HasSubstr(
                    "  731 y_pos moveto 735 y_pos lineto stroke  %% --- Y minor ticks (left)\n"));
}

TEST_F(sections, TinyFrameHasZeroMajorStep) {
    EXPECT_THAT(written_by([](FILE *stream) { crv_PlotGrid(stream, 7, 0, 3, 400); }),
                testing::HasSubstr(".3 setgray\n7 0 10 { \n"));
}

TEST_F(sections, SmallFrameHasZeroMinorStep) {
    EXPECT_THAT(written_by([](FILE *stream) { crv_PlotGrid(stream, 7, 0, 19, 19); }),
                testing::AllOf(testing::HasSubstr("0 setlinewidth\n7 0 26 { \n"),
                               testing::HasSubstr("\n 0 0 19 { \n")));
}

TEST_F(sections, StepsAndTickLengthsAreTruncated) {
    const std::string grid = written_by([](FILE *stream) { crv_PlotGrid(stream, 0, 0, 199, 399); });
    EXPECT_THAT(grid, testing::HasSubstr(".3 setgray\n49 49 150 { \n"));
    EXPECT_THAT(grid, testing::HasSubstr("0 setlinewidth\n0 9 199 { \n"));
    EXPECT_THAT(grid, testing::HasSubstr(
                          "x_pos 0 moveto x_pos 1 lineto stroke  %% --- X minor ticks (bottom)"));
    EXPECT_THAT(grid, testing::HasSubstr(
                          "  0 y_pos moveto 3 y_pos lineto stroke  %% --- Y minor ticks (left)"));
}

// ----- appended file

std::string appended(const std::string &bytes) {
    const text_file file(bytes, ".ps");
    std::string text = written_by(
        [&](FILE *stream) { EXPECT_EQ(crv_PlotAppen(stream, file.path(), "crv.ps"), 1); });
    const std::string head = "%% --- Begin of user supplied ps -- (crv_ module [[46]]) --- \n"
                             "%% --- file: \"" +
                             std::string(file.path()) + "\" \n";
    const std::string tail = "%% --- End of user supplied ps ---- (crv_ module [[46]]) --- \n \n";
    EXPECT_THAT(text, testing::StartsWith(head));
    EXPECT_THAT(text, testing::EndsWith(tail));
    return text.substr(head.size(), text.size() - head.size() - tail.size());
}

TEST_F(sections, UserFileIsPastedByLines) { EXPECT_EQ(appended("a %d\n\nb\r\n"), "a %d\n\nb\n"); }

TEST_F(sections, UnterminatedLastLineIsNotPasted) {
    EXPECT_EQ(appended("a\nlast"), "a\n");
    EXPECT_EQ(appended("last"), "");
}

TEST_F(sections, AnEmptyUserFileAddsNothing) { EXPECT_EQ(appended(""), ""); }

TEST_F(sections, UserLineIsCutTo81) {
    EXPECT_EQ(appended(std::string(100, 'u') + "\n"), std::string(81, 'u') + "\n");
    EXPECT_EQ(appended(std::string(81, 'u') + "\n"), std::string(81, 'u') + "\n");
    EXPECT_EQ(appended(std::string(80, 'u') + "\n"), std::string(80, 'u') + "\n");
}

TEST_F(sections, LongUserLineIsSplit) {
    EXPECT_EQ(appended(std::string(1023, 'a') + std::string(90, 'b') + "\n"),
              std::string(81, 'a') + "\n" + std::string(81, 'b') + "\n");
    EXPECT_EQ(appended(std::string(1023, 'a') + "\n"), std::string(81, 'a') + "\n\n");
}

TEST_F(sections, Level46TracesThePaste) {
    crv_DBG = 46;
    const text_file file("", ".ps");
    EXPECT_EQ(stdout_of([&] {
                  written_by([&](FILE *stream) { crv_PlotAppen(stream, file.path(), "out.ps"); });
              }),
              "    _46-i-val, Paste \"" + std::string(file.path()) + "\" to \"out.ps\" \n");
}

TEST_F(sections, MissingUserFileEndsProgram) {
    EXPECT_EXIT(crv_PlotAppen(stdout, "/nowhere/user.ps", "crv.ps"), testing::ExitedWithCode(0),
                "^    _46-f-fopen read, : No such file or directory\n$");
}

// ----- trailer

class trailer : public sections {
  protected:
    // Writes the trailer with `answer` on standard input. Returns the printed text.
    std::string finish(const std::string &answer) {
        const text_file typed(answer, ".txt");
        if (!freopen(typed.path(), "r", stdin)) return "no standard input";
        FILE *stream = fopen(path.c_str(), "w");
        const std::string printed = stdout_of([&] { crv_PlotEnd(path.c_str(), stream); });
        text = bytes_of(path);
        remove(path.c_str());
        return printed;
    }
    void TearDown() override {
        unsetenv("CRV_PRINTCHAIN");
        sections::TearDown();
    }
    const std::string path =
        testing::TempDir() + "crv_unit_trailer_" + std::to_string(getpid()) + ".ps";
    std::string text;
};

const std::string question = "Should this really be sent to the laserWriter? (Yes, [No]):";

TEST_F(trailer, TheTrailerEndsThePage) {
    setenv("CRV_PRINTCHAIN", ":", 1);
    crv_settings.print_flag = 1;
    EXPECT_EQ(finish(""), "%crv_45-i-prt, Printer command = \": " + path + "\"\n");
    EXPECT_EQ(text, "%%  --- Begin writing  Trailer (crv module [[45]])\n"
                    "1 setlinewidth \n"
                    "grestore \n"
                    "showpage \n");
}

TEST_F(trailer, CommandRunsAfterFileIsClosed) {
    setenv("CRV_PRINTCHAIN", "wc -c <", 1);
    crv_settings.print_flag = 1;
    EXPECT_THAT(finish(""), testing::EndsWith("87\n"));
}

TEST_F(trailer, OnlyYesPrints) {
    setenv("CRV_PRINTCHAIN", "echo printed", 1);
    for (const char *answer : {"yes\n", "Y\n", "y"})
        EXPECT_EQ(finish(answer), question + "%crv_45-i-prt, Printer command = \"echo printed " +
                                      path + "\"\n" + "printed " + path + "\n");
    for (const char *answer : {"No\n", "n\n", "\n", "", " yes\n"})
        EXPECT_EQ(finish(answer), question) << answer;
}

TEST_F(trailer, LongPrinterCommandIsNotCut) {
    const std::string chain = "true " + std::string(500, 'x');
    setenv("CRV_PRINTCHAIN", chain.c_str(), 1);
    crv_settings.print_flag = 1;
    EXPECT_EQ(finish(""), "%crv_45-i-prt, Printer command = \"" + chain + " " + path + "\"\n");
}

} // namespace
