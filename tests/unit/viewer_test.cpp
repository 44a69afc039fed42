// unit/viewer_test.cpp - the command line of the viewers, and the views that they read.
#include "app/viewer_run.h"

#include "support.h"

#include <cmath>

namespace {

using strings = std::vector<std::string>;
using numbers = std::vector<double>;

constexpr crv_viewer printer = {.name = "crv-test",
                                .purpose = "",
                                .example = "",
                                .chart_summary = "",
                                .default_path = nullptr,
                                .output_needs_name = true,
                                .min_series = 2,
                                .draws_pairs = true,
                                .write = nullptr};
constexpr crv_viewer page = {.name = "crv-test",
                             .purpose = "",
                             .example = "",
                             .chart_summary = "",
                             .default_path = "crv.html",
                             .output_needs_name = false,
                             .min_series = 2,
                             .draws_pairs = true,
                             .write = nullptr};

// Three steps of two requests.
const std::string run1 = "any\nFirst run\n2\n38 1 0 0 0\n52 4 0 0 0\n"
                         "0.0\n1 2 3\n10 20 30\n"
                         "0.5\n4 5 6\n40 50 60\n"
                         "1.0\n7 8 9\n70 80 90\n";
// Two steps of request 38.
const std::string run2 = "any\nSecond run\n1\n38 1 0 0 0\n2.0\n11 12 13\n2.5\n14 15 16\n";

class viewer : public fresh_run {
  protected:
    bool parse(const strings &arguments, const crv_viewer &program = printer) {
        words = arguments;
        words.insert(words.begin(), "crv-test");
        std::vector<char *> argv;
        for (std::string &word : words) argv.push_back(word.data());
        bool good = false;
        err = stderr_of([&] {
            good = crv_ParseViewerArguments(static_cast<int>(argv.size()), argv.data(), program,
                                            &parsed);
        });
        return good;
    }

    bool read(const strings &arguments, const crv_viewer &program = printer) {
        EXPECT_TRUE(parse(arguments, program)) << err;
        view = {};
        bool good = false;
        err = stderr_of([&] { out = stdout_of([&] { good = crv_ReadView(parsed, &view); }); });
        return good;
    }

    static numbers values_of(const crv_column *column) {
        numbers values;
        for (const crv_value *node = column->val_list; node; node = node->next)
            values.push_back(node->val);
        return values;
    }

    strings words;
    crv_viewer_arguments parsed;
    crv_view view;
    std::string out, err;
    text_file first{run1};
    text_file second{run2};
};

TEST_F(viewer, FirstSeriesIsX) {
    ASSERT_TRUE(read({"-r", "0,38:2,52:3", "-f", first.path()}));
    ASSERT_EQ(view.files.size(), 1U);
    ASSERT_EQ(view.curves.size(), 2U);
    EXPECT_TRUE(view.files[0].has_own_x);
    EXPECT_EQ(values_of(view.files[0].x), (numbers{0.0, 0.5, 1.0}));
    EXPECT_EQ(view.curves[0].x, view.files[0].x);
    EXPECT_EQ(values_of(view.curves[0].y), (numbers{2, 5, 8}));
    EXPECT_EQ(values_of(view.curves[1].y), (numbers{30, 60, 90}));
    EXPECT_EQ(view.files[0].path, first.path());
    EXPECT_EQ(err, "");
    EXPECT_THAT(out, testing::EndsWith(" has 3 steps\n"));
}

TEST_F(viewer, LaterFileHasItsOwnTime) {
    ASSERT_TRUE(read({"-r", "0,38:2", "-f", first.path(), "-f", second.path()}));
    ASSERT_EQ(view.curves.size(), 2U);
    EXPECT_TRUE(view.files[1].has_own_x);
    EXPECT_EQ(values_of(view.curves[1].x), (numbers{2.0, 2.5}));
    EXPECT_EQ(values_of(view.curves[1].y), (numbers{12, 15}));
    EXPECT_EQ(view.curves[1].file, 1);
    EXPECT_EQ(view.files[1].columns, (std::vector<const crv_column *>{view.curves[1].y}));
}

TEST_F(viewer, LaterFileWithoutTimeUsesTheFirstX) {
    ASSERT_TRUE(read({"-r", "0,38:2", "-f", first.path(), "-r", "38:1,38:3", "-f", second.path()}));
    ASSERT_EQ(view.curves.size(), 3U);
    EXPECT_FALSE(view.files[1].has_own_x);
    EXPECT_EQ(view.curves[1].x, view.files[0].x);
    EXPECT_EQ(values_of(view.curves[1].y), (numbers{11, 14}));
    EXPECT_EQ(values_of(view.curves[2].y), (numbers{13, 16}));
}

TEST_F(viewer, PointsWithoutXAreReported) {
    const auto report = [&] { return stderr_of([&] { crv_ReportPointsWithoutX(view); }); };
    ASSERT_TRUE(read({"-r", "0,38:2", "-f", second.path(), "-r", "38:1,38:3", "-f", first.path()}));
    EXPECT_EQ(report(), std::string("%crv_06-w-len, \"") + first.path() +
                            "\" has 3 points, but the X of \"" + second.path() +
                            "\" only 2: those after it are not drawn\n");
    ASSERT_TRUE(read({"-r", "0,38:2", "-f", first.path(), "-r", "38:1", "-f", second.path()}));
    EXPECT_EQ(report(), "");
    ASSERT_TRUE(read({"-r", "0,38:2", "-f", second.path(), "-f", first.path()}));
    EXPECT_EQ(report(), "");
}

TEST_F(viewer, OwnTimeTakesNoLabelNumber) {
    ASSERT_TRUE(read({"-r", "0,38:2", "-f", first.path(), "-f", second.path(), "-xl", "  s ", "-yl",
                      "one", "-yl2", "two"}));
    EXPECT_STREQ(view.files[0].x->colname, "s");
    EXPECT_STREQ(view.curves[0].y->colname, "one");
    EXPECT_STREQ(view.curves[1].y->colname, "two");
    EXPECT_STREQ(view.curves[1].x->colname, "Time (sec)");
}

TEST_F(viewer, LabelWithoutItsSeriesIsReported) {
    ASSERT_TRUE(read({"-yl2", "early", "-r", "0,38:2", "-f", first.path()}));
    EXPECT_EQ(err, "%crv_06-e-lbl, No file before option -yl2 has its series\n");
}

TEST_F(viewer, FrameFileFollowsTheSelectionForItsX) {
    const text_file frame("%N\n3\n%XA\nmm\n%D\n0 1\n2 3\n4 5\n", ".vdr");
    ASSERT_TRUE(read({"-r", "0,38:2", "-f", first.path(), "-fg", frame.path()}));
    ASSERT_EQ(view.curves.size(), 2U);
    EXPECT_EQ(values_of(view.curves[1].x), (numbers{0, 2, 4}));
    EXPECT_STREQ(view.curves[1].x->colname, "mm");
    ASSERT_TRUE(read({"-r", "0,38:2", "-f", first.path(), "-r", "1", "-fg", frame.path()}));
    ASSERT_EQ(view.curves.size(), 3U);
    EXPECT_EQ(view.curves[1].x, view.files[0].x);
    EXPECT_EQ(values_of(view.curves[2].y), (numbers{1, 3, 5}));
}

TEST_F(viewer, ColumnZeroIsTheRowCount) {
    const text_file table("a b\n5 6\n7 8\n", ".pos");
    ASSERT_TRUE(read({"-r", "0,38:2", "-f", first.path(), "-r", "0,2", "-fp", table.path()}));
    EXPECT_EQ(values_of(view.curves[1].x), (numbers{1, 2}));
    EXPECT_EQ(values_of(view.curves[1].y), (numbers{6, 8}));
}

TEST_F(viewer, NothingFollowsTheLastLineNumber) {
    const text_file rows("a b\n1 2\n", ".pos");
    EXPECT_FALSE(read({"-r", "0,0", "-fp2147483647", rows.path()}));
    EXPECT_EQ(err,
              "%crv_06-e-pts, No points of \"" + std::string(rows.path()) + "\" are selected\n");
}

TEST_F(viewer, SelectionAppliesToTheFilesAfterIt) {
    ASSERT_TRUE(read({"-r", "0,38:2", "-f", first.path(), "-r", "0,52:1", "-f", first.path()}));
    EXPECT_EQ(values_of(view.curves[1].y), (numbers{10, 40, 70}));
}

TEST_F(viewer, XRangeDropsNoPoints) {
    ASSERT_TRUE(read({"-x", "0.4:0.6", "-y", "1:2", "-r", "0,38:2", "-f", first.path()}));
    EXPECT_EQ(values_of(view.files[0].x).size(), 3U);
    EXPECT_EQ(view.x_range[0], 0.4);
    EXPECT_EQ(view.x_range[1], 0.6);
    EXPECT_EQ(view.y_range[0], 1.0);
    EXPECT_EQ(view.y_range[1], 2.0);
}

TEST_F(viewer, RangesThatNoAxisCanHaveAreReported) {
    for (const char *option : {"-x", "-y"}) {
        for (const char *range : {"1:nan", "nan:1", "-inf:0", "2:2"}) {
            ASSERT_TRUE(read({option, range, "-r", "0,38:2", "-f", first.path()}));
            EXPECT_EQ(err, std::string("%crv_06-w-ran, No axis can have the range \"") + range +
                               "\" of option " + option + ": all is shown\n");
        }
        ASSERT_TRUE(read({option, "2:1", option, "auto", "-r", "0,38:2", "-f", first.path()}));
        EXPECT_EQ(err, "");
    }
}

TEST_F(viewer, ItemsThatNoRequestHasAreReported) {
    ASSERT_TRUE(read({"-r", "0,38:7,38:9", "-f", first.path()}));
    EXPECT_EQ(err, "%crv_06-w-itm, Request 38 of \"" + std::string(first.path()) +
                       "\" has no item 9, its values are -999.999\n");
    EXPECT_EQ(values_of(view.curves[1].y), (numbers{-999.999, -999.999, -999.999}));
}

TEST_F(viewer, ItemsOfMadymoFilesArePlacesOfNumbers) {
    const text_file sled("Sled\n\n1 0\nSLED\n0\n1 2 3 4 5 6 7 8 9 10 11 12 13\n", ".mad");
    ASSERT_TRUE(read({"-r", "0,1:9,1:13", "-fm", sled.path()}));
    EXPECT_EQ(err, "");
    EXPECT_EQ(values_of(view.curves[0].y), numbers{9});
    EXPECT_EQ(values_of(view.curves[1].y), numbers{13});
}

TEST_F(viewer, TimeWindowDropsPoints) {
    ASSERT_TRUE(read({"-tm", "0.4:0.6", "-r", "0,38:2", "-f", first.path()}));
    EXPECT_EQ(values_of(view.files[0].x), (numbers{0.5}));
}

TEST_F(viewer, ImproperTimeWindowIsNone) {
    ASSERT_TRUE(read({"-tm", "5:1", "-r", "0,38:2", "-f", first.path()}));
    EXPECT_EQ(values_of(view.files[0].x).size(), 3U);
    EXPECT_THAT(out, testing::HasSubstr("%crv_05-w-tra, Default t range will be used"));
}

TEST_F(viewer, TimeWindowThatIsNoNumberIsNone) {
    for (const char *window : {"1:nan", "nan:1", "nan:nan"}) {
        ASSERT_TRUE(read({"-tm", window, "-r", "0,38:2", "-f", first.path()}));
        EXPECT_EQ(values_of(view.files[0].x).size(), 3U);
        EXPECT_THAT(out, testing::HasSubstr("%crv_05-e-tra, Improper t range specified \n"
                                            "%crv_05-w-tra, Default t range will be used \n"));
    }
}

TEST_F(viewer, EmptyWindowIsReported) {
    const text_file table("a b\n5 6\n7 8\n", ".pos");
    EXPECT_FALSE(read({"-tm", "100:200", "-r", "0,2", "-fp", table.path()}));
    EXPECT_EQ(err,
              std::string("%crv_06-e-pts, No points of \"") + table.path() + "\" are selected\n");
}

TEST_F(viewer, TimesOutsideTheWindowOfCrvAreKept) {
    const text_file late("any\nLate\n1\n38 1 0 0 0\n-200\n1 2 3\n20000\n4 5 6\nnan\n7 8 9\n");
    ASSERT_TRUE(read({"-r", "0,38:2", "-f", late.path()}));
    const numbers times = values_of(view.files[0].x);
    ASSERT_EQ(times.size(), 3U);
    EXPECT_EQ(times[0], -200.0);
    EXPECT_EQ(times[1], 20000.0);
    EXPECT_TRUE(std::isnan(times[2]));
    EXPECT_EQ(err, "");
}

TEST_F(viewer, RowsBeyondTheCountOfCrvAreKept) {
    std::string rows = "a b\n";
    for (int row = 0; row < 40000; ++row) rows += "1 2\n";
    const text_file table(rows, ".pos");
    ASSERT_TRUE(read({"-r", "0,2", "-fp", table.path()}));
    EXPECT_EQ(view.curves[0].y->num_values, 40000U);
    EXPECT_EQ(view.curves[0].y->mean, 2.0);
    EXPECT_EQ(err, "");
}

TEST_F(viewer, StepsBeyondTheCountOfCrvAreKept) {
    std::string steps = "any\nLong\n1\n38 1 0 0 0\n";
    for (int step = 0; step < 40000; ++step) steps += "1.0\n3 2 1\n";
    const text_file run(steps);
    ASSERT_TRUE(read({"-r", "0,38:1", "-f", run.path()}));
    EXPECT_EQ(view.curves[0].y->num_values, 40000U);
    EXPECT_EQ(view.curves[0].y->mean, 3.0);
    EXPECT_EQ(err, "");
}

TEST_F(viewer, ShortRowHasValuesThatAreNoNumbers) {
    const text_file table("a b\n5 6\n7\n8 9\n", ".pos");
    ASSERT_TRUE(read({"-r", "0,1,2", "-fp", table.path()}));
    const numbers second_column = values_of(view.curves[1].y);
    ASSERT_EQ(second_column.size(), 3U);
    EXPECT_TRUE(std::isnan(second_column[1]));
    EXPECT_EQ(second_column[2], 9.0);
    EXPECT_EQ(err, std::string("%crv_94-w-num, Missing numbers in \"") + table.path() +
                       "\" read as nan, first on line 3\n");
}

TEST_F(viewer, IncompleteEndIsReported) {
    const text_file run(run2 + "3.0\n1 2 3");
    ASSERT_TRUE(read({"-r", "0,38:1", "-f", run.path()}));
    EXPECT_EQ(err, std::string("%crv_83-w-end, \"") + run.path() +
                       "\" ends within step 3, the rest is missing\n");
    const text_file table("a b\n5 6\n7 8", ".pos");
    ASSERT_TRUE(read({"-r", "0,2", "-fp", table.path()}));
    EXPECT_EQ(err, std::string("%crv_94-w-end, The last line of \"") + table.path() +
                       "\" has no line end and is left out\n");
    const text_file madymo("any\n\n1 0\nSLED\n0.0\n1 2\n0.1\n", ".mad");
    ASSERT_TRUE(read({"-r", "0,1:1", "-fm", madymo.path()}));
    EXPECT_EQ(err, std::string("%crv_88-w-end, \"") + madymo.path() +
                       "\" ends within step 2, the rest is missing\n");
}

TEST_F(viewer, FileThatEndsAfterATimeIsReported) {
    const text_file cut("any\nRun\n1\n38 1 0 0 0\n0.0\n1 2 3\n0.5\n");
    ASSERT_TRUE(read({"-r", "0,38:2", "-f", cut.path()}));
    EXPECT_THAT(err, testing::HasSubstr("ends within step 2"));
}

TEST_F(viewer, LongLineIsReported) {
    const std::string blanks(126, ' ');
    const text_file run(run2 + "3.0" + blanks + "\n1 2 3\n4.0\n1 2 3\n");
    ASSERT_TRUE(read({"-r", "0,38:1", "-f", run.path()}));
    EXPECT_THAT(err, testing::StartsWith(std::string("%crv_83-w-lon, Line 9 of \"") + run.path() +
                                         "\" is too long and read in parts\n"));
    const text_file table("a b\n5 6\n7 8" + std::string(1022, ' ') + "9\n", ".pos");
    ASSERT_TRUE(read({"-r", "0,1", "-fp", table.path()}));
    EXPECT_EQ(err, std::string("%crv_94-w-lon, Line 3 of \"") + table.path() +
                       "\" is too long and read in parts\n");
}

TEST_F(viewer, LinesAfterTheFramePointsAreReported) {
    const text_file frame("%N\n3\n%D\n0 1\n2 3\n4 5\n6 7\n\n8 9\n%XA\nmm\ntext\n", ".vdr");
    ASSERT_TRUE(read({"-r", "0", "-fg", frame.path()}));
    EXPECT_EQ(err, std::string("%crv_85-w-mor, \"") + frame.path() +
                       "\" has 2 lines after its 3 data points, which are left out\n");
}

TEST_F(viewer, TitleIsThatOfTheFirstFile) {
    ASSERT_TRUE(read({"-r", "0,38:2", "-f", first.path(), "-f", second.path()}));
    EXPECT_EQ(view.title, "First run");
    EXPECT_EQ(view.subtitle, "");
    ASSERT_TRUE(read({"-t", "Mine", "-r", "0,38:2", "-f", first.path()}));
    EXPECT_EQ(view.title, "Mine");
    EXPECT_EQ(view.subtitle, "First run");
    ASSERT_TRUE(read({"-t1", "Mine", "-t2", "below", "-r", "0,38:2", "-f", first.path()}));
    EXPECT_EQ(view.title, "Mine");
    EXPECT_EQ(view.subtitle, "below");
}

TEST_F(viewer, TitleIsThatOfTheFirstFileInEachFormat) {
    const text_file table("a b\n5 6\n7 8\n", ".pos");
    const text_file other("a b\n5 6\n7 8\n", ".pos");
    const std::string title = std::string("filename = ") + table.path();
    ASSERT_TRUE(read({"-r", "0,38:2", "-f", first.path(), "-r", "0,2", "-fp", table.path()}));
    EXPECT_EQ(view.title, "First run");
    ASSERT_TRUE(read({"-r", "0,2", "-fp", table.path(), "-r", "0,38:2", "-f", first.path()}));
    EXPECT_EQ(view.title, title);
    ASSERT_TRUE(read({"-t", "Mine", "-r", "0,2", "-fp", table.path(), "-fp", other.path()}));
    EXPECT_EQ(view.subtitle, title);
}

TEST_F(viewer, TitleOfAColumnFileIsItsName) {
    const text_file table("a b\n5 6\n7 8\n", ".pos");
    ASSERT_TRUE(read({"-r", "0,2", "-fp", table.path()}));
    EXPECT_EQ(view.title, std::string("filename = ") + table.path());
}

TEST_F(viewer, OptionsWithoutEffectKeepTheirValues) {
    ASSERT_TRUE(read({"-i", "a.ini", "-n", "3", "-abs", "-all", "-d", "83", "-v", "5", "-m", "-r",
                      "0,38:2", "-f", first.path()}));
    EXPECT_EQ(view.curves.size(), 1U);
    EXPECT_EQ(crv_DBG, 0);
}

TEST_F(viewer, OutputIsTheDefaultOrThatOfP) {
    ASSERT_TRUE(parse({"-r", "0,1", "-f", "a.req"}));
    EXPECT_EQ(parsed.output_path, nullptr);
    ASSERT_TRUE(parse({"-r", "0,1", "-f", "a.req"}, page));
    EXPECT_STREQ(parsed.output_path, "crv.html");
    for (const char *option : {"-p", "-p1", "-p2"}) {
        ASSERT_TRUE(parse({"-r", "0,1", "-f", "a.req", option}, page));
        EXPECT_STREQ(parsed.output_path, "crv.html");
        ASSERT_TRUE(parse({option, "b.html", "-r", "0,1", "-f", "a.req"}, page));
        EXPECT_STREQ(parsed.output_path, "b.html");
        EXPECT_FALSE(parse({"-r", "0,1", "-f", "a.req", option}));
        EXPECT_EQ(err, std::string("%crv_06-f-val, Option ") + option + " needs a file name\n");
    }
}

TEST_F(viewer, HelpAndVersionAreTexts) {
    EXPECT_TRUE(parse({"--help"}));
    EXPECT_EQ(parsed.text, crv_viewer_text::help);
    EXPECT_TRUE(parse({"-t", "T", "-h", "stray"}));
    EXPECT_EQ(parsed.text, crv_viewer_text::help);
    EXPECT_TRUE(parse({"--version"}));
    EXPECT_EQ(parsed.text, crv_viewer_text::version);
}

struct mistake {
    strings arguments;
    std::string message; // without the tag
};

// crv ignores what follows most spellings.
TEST_F(viewer, OptionsWithOtherEndsAreUnknown) {
    for (const char *option :
         {"-rx",   "-ylx",  "-ylab", "-yl12",   "-fpx",   "-fp2x",       "-fp-1",
          "-fgx",  "-frx",  "-fmx",  "-xlabel", "-pdf",   "-p3",         "-p11",
          "-tmx",  "-t11",  "-t22",  "-x1",     "-y1",    "-monochrome", "-header",
          "-abs1", "-all1", "-d8",   "-v8",     "-ifile", "-n3",         "-sx"}) {
        EXPECT_FALSE(parse({option, "0,1"}, page)) << option;
        EXPECT_EQ(err, std::string("%crv_06-f-opt, Unknown option \"") + option +
                           "\", see crv-test --help\n");
    }
    ASSERT_TRUE(parse({"-r", "1,2", "-fp3", "a", "-fp12", "b", "-fp0", "c", "-yl2", "L", "-yla",
                       "M", "-t1", "T", "-t2", "S", "-p1", "p"},
                      page))
        << err;
}

TEST_F(viewer, MistakesAreNamed) {
    const std::string too_many = "0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,"
                                 "25,26,27,28,29,30,31";
    const mistake mistakes[] = {
        {{}, "No file is given, see crv-test --help"},
        {{"-r", "0,1"}, "No file is given, see crv-test --help"},
        {{"-q"}, "Unknown option \"-q\", see crv-test --help"},
        {{"-fx", "a"}, "Unknown option \"-fx\", see crv-test --help"},
        {{"--"}, "Unknown option \"--\", see crv-test --help"},
        {{"-yl12", "a"}, "Unknown option \"-yl12\", see crv-test --help"},
        {{"\x1B[31m"},
         "\"\xEF\xBF\xBD[31m\" is neither an option nor the value of one, see"
         " crv-test --help"},
        {{""}, "\"\" is neither an option nor the value of one, see crv-test --help"},
        {{"-m", "9"}, "\"9\" is neither an option nor the value of one, see crv-test --help"},
        {{"-r", "0,1=max"}, "The condition in \"0,1=max\" is one of crv, not of crv-test"},
        {{"-r", ""}, "The selection \"\" is empty"},
        {{"-r", " , "}, "The selection \" , \" is empty"},
        {{"-r", "foo"}, "\"foo\" in the selection \"foo\" is not a series, such as 38:3"},
        {{"-r", "0,38:z"}, "\"38:z\" in the selection \"0,38:z\" is not a series, such as 38:3"},
        {{"-r", "0,38:"}, "\"38:\" in the selection \"0,38:\" is not a series, such as 38:3"},
        {{"-r", ":3"}, "\":3\" in the selection \":3\" is not a series, such as 38:3"},
        {{"-r", "0 38:3:1"},
         "\"38:3:1\" in the selection \"0 38:3:1\" is not a series, such as 38:3"},
        {{"-r", "0,38.3"}, "\"38.3\" in the selection \"0,38.3\" is not a series, such as 38:3"},
        {{"-r", "0,+38"}, "\"+38\" in the selection \"0,+38\" is not a series, such as 38:3"},
        {{"-r", "0,4294967334:3"},
         "\"4294967334:3\" in the selection \"0,4294967334:3\" is not a series, such as 38:3"},
        {{"-r"}, "Option -r needs a selection"},
        {{"-r", "-f", "a"}, "Option -r needs a selection"},
        {{"-f", "a"}, "No selection (-r) before the file \"a\""},
        {{"-r", "0,1", "-f"}, "Option -f needs a file name"},
        {{"-r", "0,1", "-fp", "-t"}, "Option -fp needs a file name"},
        {{"-r", "0,1", "-f", ""}, "Option -f needs a file name"},
        {{"-t"}, "Option -t needs a title"},
        {{"-d"}, "Option -d needs a value"},
        {{"-r", "0", "-f", "a"}, "The selection is empty but for X"},
        {{"-r", "0,1", "-f", "a", "-r", "0,", "-f", "b"},
         "The selection for \"b\" is empty but for time"},
        {{"-r", too_many, "-f", "a"}, "\"a\" would need 32 series, 31 of 31 are free"},
        {{"-r", too_many.substr(0, too_many.size() - 3), "-f", "a", "-r", "0,1", "-f", "b"},
         "\"b\" would need 1 series, 0 of 31 are free"},
    };
    for (const mistake &m : mistakes) {
        EXPECT_FALSE(parse(m.arguments)) << m.message;
        EXPECT_EQ(err.substr(err.find(' ') + 1), m.message + "\n");
    }
    for (const char *option :
         {"-fc", "-fma", "-s", "-s0", "-s1", "-u", "-w", "-e", "-H", "-?", "-B", "-b"}) {
        EXPECT_FALSE(parse({option, "a"}));
        EXPECT_EQ(err, std::string("%crv_06-f-opt, Option ") + option +
                           " is one of crv, not of"
                           " crv-test\n");
    }
}

} // namespace
