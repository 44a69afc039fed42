// unit/request_file_test.cpp - reading request files: header, steps, items, screening, errors.
#include "readers/request_file.h"
#include "readers/request_item.h"

#include "reader_support.h"

#include <cmath>

namespace {

class request_file : public reader_test {
  protected:
    int read(const std::string &bytes, const char *selection, int first_slot = 0) {
        return read_with(
            [&](const char *name) {
                return crv_ReadReq(name, crv_ParseSel(selection, first_slot));
            },
            bytes);
    }
};

// Returns a file with request 10 of type 1, request 20 of type 4 with an extra header line, and a
// step per time.
std::string two_requests(const std::vector<double> &times) {
    std::string text = "anything\nThe title\n2 requests\n10 1 0 0 0\n20 4 0 0 4\nname\n";
    char line[200];
    for (const double t : times) {
        snprintf(line, sizeof line, "%g\n%g 2 3 4 5 6\n-%g,20 , 30 40 50 60\n", t, 10 + t, 10 + t);
        text += line;
    }
    return text;
}

TEST_F(request_file, EachPairMakesItsColumn) {
    EXPECT_EQ(read(two_requests({0, 1, 2}), "0,20:1,10:3"), 3);
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{0, 1, 2}));
    EXPECT_EQ(values_of(crv_columns[1]), (std::vector<double>{-10, -11, -12}));
    EXPECT_EQ(values_of(crv_columns[2]), (std::vector<double>{3, 3, 3}));
    EXPECT_EQ(crv_columns[3], nullptr);
    EXPECT_EQ(out, "%crv_83-i-wor, Reading \"" + path + "\" ...\n%crv_83-i-pts, file (" + path +
                       ") has 3 steps\n");
    EXPECT_EQ(err, "");
}

TEST_F(request_file, ColumnsBeginAtFirstFreeSlot) {
    EXPECT_EQ(read(two_requests({0, 1}), "10,20", 5), 2);
    EXPECT_EQ(crv_columns[4], nullptr);
    EXPECT_EQ(values_of(crv_columns[5]), (std::vector<double>{10, 11}));
    EXPECT_EQ(values_of(crv_columns[6]), (std::vector<double>{-10, -11}));
}

TEST_F(request_file, SelectionZeroGivesTheStepTimes) {
    EXPECT_EQ(read(two_requests({0.5, 1.5}), "0"), 1);
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{0.5, 1.5}));
    EXPECT_STREQ(crv_columns[0]->colname, "Time (sec) ");
}

TEST_F(request_file, LabelsNameTypeRequestAndComponent) {
    read(two_requests({0}), "10:0,10,10:4,10:7,10:8,10:9,20:2");
    EXPECT_STREQ(crv_columns[0]->colname, "Displ 10, T  ");
    EXPECT_STREQ(crv_columns[1]->colname, "Displ 10, X  ");
    EXPECT_STREQ(crv_columns[2]->colname, "Displ 10, A1 ");
    EXPECT_STREQ(crv_columns[3]->colname, "Displ 10, M  ");
    EXPECT_STREQ(crv_columns[4]->colname, "Displ 10, AM ");
    EXPECT_STREQ(crv_columns[5]->colname, "Displ 10, ?? ");
    EXPECT_STREQ(crv_columns[6]->colname, "Force 20, Y  ");
}

TEST_F(request_file, EveryTypeHasItsLabel) {
    const std::string labels[] = {"Time ", "Displ", "Veloc", "Accel",
                                  "Force", "User ", "?????", "?????"};
    const std::string types[] = {"0", "1", "2", "3", "4", "5", "6", "-1"};
    for (int k = 0; k < 8; ++k) {
        read("\nt\n1\n7 " + types[k] + " 0 0 0\n0\n1 2 3 4 5 6\n", "7");
        EXPECT_EQ(crv_columns[0]->colname, labels[k] + " 7, X  ");
    }
}

double item_of(const char *line, uint32_t item, bool *complete) {
    const padded_text text(line);
    utl_line_fields fields = utl_SplitLine(text.text());
    return crv_ReadItem(&fields, item, complete);
}

TEST_F(request_file, ItemsAreFirstToSixthNumber) {
    bool complete = true;
    for (uint32_t item = 1; item <= 6; ++item)
        EXPECT_EQ(item_of("11 12,13 14 15 16 17", item, &complete), 10 + item);
    EXPECT_EQ(item_of("11 12", 0, &complete), 11.0);
    EXPECT_TRUE(complete);
}

TEST_F(request_file, ItemsSevenAndEightAreMagnitudes) {
    bool complete = true;
    EXPECT_EQ(item_of("2 3 6 1 4 8", 7, &complete), 7.0);
    EXPECT_EQ(item_of("2 3 6 1 4 8", 8, &complete), 9.0);
    // The order of the sum: second square, first, third.
    const double a = 0.1, b = 0.7, c = 0.3;
    EXPECT_EQ(item_of("0.1 0.7 0.3", 7, &complete), std::sqrt((b * b + a * a) + c * c));
    EXPECT_EQ(item_of("0 0 0 0.1 0.7 0.3", 8, &complete), std::sqrt((b * b + a * a) + c * c));
    EXPECT_TRUE(complete);
}

TEST_F(request_file, ItemNineIsMinus999_999) {
    read(two_requests({0, 1}), "10:9");
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{-999.999, -999.999}));
    EXPECT_EQ(err, "");
}

TEST_F(request_file, StatisticsComeWithStepAndTime) {
    read("\nt\n1\n7 1 0 0 0\n"
         "0.0\n2\n0.1\n-5\n0.2\n4\n0.3\n-5\n0.4\n4\n0.5\n1\n",
         "7");
    const crv_column *c = crv_columns[0];
    EXPECT_EQ(c->numpts, 6);
    EXPECT_EQ(c->min, -5.0);
    EXPECT_EQ(c->min_step, 2U);
    EXPECT_EQ(c->min_time, 0.1);
    EXPECT_EQ(c->var1, 0.1);
    EXPECT_EQ(c->max, 4.0);
    EXPECT_EQ(c->max_step, 3U);
    EXPECT_EQ(c->max_time, 0.2);
    EXPECT_EQ(c->var2, 0.2);
    EXPECT_EQ(c->absmin, 1.0);
    EXPECT_EQ(c->absmin_step, 6U);
    EXPECT_EQ(c->absmin_time, 0.5);
    EXPECT_EQ(c->absmax, 5.0);
    EXPECT_EQ(c->absmax_step, 2U);
    EXPECT_EQ(c->absmax_time, 0.1);
    EXPECT_EQ(c->begin_val, 2.0);
    EXPECT_EQ(c->begin_step, 1U);
    EXPECT_EQ(c->begin_time, 0.0);
    EXPECT_EQ(c->end_val, 1.0);
    EXPECT_EQ(c->end_step, 6U);
    EXPECT_EQ(c->end_time, 0.5);
    EXPECT_EQ(c->sum, 1.0);
    EXPECT_EQ(c->mean, 1.0 / 6.0);
    EXPECT_EQ(c->stddev, 0.0);
    EXPECT_EQ(c->val_cur->val, 1.0);
    EXPECT_EQ(c->val_cur->next, nullptr);
}

TEST_F(request_file, PointsOutsideWindowAreNotCounted) {
    read(two_requests({-100.5, -100, 3, 10000, 10000.5}), "0,10");
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{-100, 3, 10000}));
    EXPECT_EQ(crv_columns[1]->numpts, 3);
    EXPECT_EQ(crv_columns[1]->begin_step, 2U);
    EXPECT_THAT(out, testing::HasSubstr("has 5 steps"));
}

TEST_F(request_file, EntryZeroIsFilteredByItself) {
    crv_settings.x_filter[0] = 11;
    crv_settings.x_filter[1] = 12;
    read(two_requests({0, 1, 2, 3}), "10,20");
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{11, 12}));
    EXPECT_EQ(values_of(crv_columns[1]), (std::vector<double>{-11, -12}));
}

TEST_F(request_file, EarlierLinesUsePreviousX) {
    crv_settings.x_filter[0] = -11;
    crv_settings.x_filter[1] = -9;
    read(two_requests({0, 1, 2, 3}), "20,10");
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{-10, -11}));
    EXPECT_EQ(values_of(crv_columns[1]), (std::vector<double>{11, 12}))
        << "the first step is screened against 0.0";
}

TEST_F(request_file, EqualXBoundsScreenNothing) {
    crv_settings.x_filter[0] = crv_settings.x_filter[1] = 11;
    read(two_requests({0, 1, 2}), "10");
    EXPECT_EQ(crv_columns[0]->numpts, 3);
}

TEST_F(request_file, DuplicateRequestUsesLaterLine) {
    read("\nt\n2\n7 1 0 0 0\n7 2 0 0 0\n0\n1\n2\n", "7");
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{2}));
    EXPECT_STREQ(crv_columns[0]->colname, "Veloc 7, X  ");
}

TEST_F(request_file, RequestZeroInHeaderKeepsTime) {
    read("\nt\n2\n7 1 0 0 0\n0 2 0 0 0\n0.5\n1\n2\n", "0");
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{0.5}));
    EXPECT_STREQ(crv_columns[0]->colname, "Time (sec) ");
}

TEST_F(request_file, HeaderWithoutFieldsMatchesNothing) {
    read("\nt\n2\n   \n7 1 0 0 0\n0.5\n1\n2\n", "0,7");
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{0.5}));
    EXPECT_EQ(values_of(crv_columns[1]), (std::vector<double>{2}));
}

TEST_F(request_file, MissingHeaderFieldsReadAsZero) {
    read("\nt\n1\n7\n0.5\n1\n", "7");
    EXPECT_STREQ(crv_columns[0]->colname, "Time  7, X  ");
}

TEST_F(request_file, MissingRequestStopsReading) {
    EXPECT_EQ(read(two_requests({0}), "10,30,40"), 0);
    EXPECT_EQ(out, "%crv_83-i-wor, Reading \"" + path +
                       "\" ...\n%crv_83-e-mis, Request \"30\" not found! \n");
    EXPECT_EQ(crv_columns[0], nullptr);
    EXPECT_EQ(read(two_requests({0}), "-5"), 0);
    EXPECT_THAT(out, testing::HasSubstr("Request \"4294967291\" not found! \n"));
}

TEST_F(request_file, EofEndsHighRequestCount) {
    EXPECT_EQ(read("\nt\n2147483647\n7 1 0 0 0\n", "8"), 0);
    EXPECT_EXIT(crv_ReadReq(text_file("\nt\n2147483647\n7 1 0 0 0\n").path(), crv_ParseSel("7", 0)),
                testing::ExitedWithCode(1), "");
}

TEST_F(request_file, NegativeRequestCountIsRejected) {
    EXPECT_EQ(read("\nt\n-1\n", "0"), -1);
    EXPECT_EQ(err,
              "%crv_83-e-num, Number of requests (-1) on line 3 of \"" + path + "\" is below 0\n");
}

TEST_F(request_file, EveryLineIsTimeWithoutRequests) {
    EXPECT_EQ(read("\nt\n0\n0.5\n1.5\n", "0"), 1);
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{0.5, 1.5}));
}

TEST_F(request_file, EmptySelectionReturnsZero) {
    EXPECT_EQ(read(two_requests({0, 1}), " , "), 0);
    EXPECT_THAT(out, testing::HasSubstr("has 2 steps"));
    EXPECT_EQ(crv_columns[0], nullptr);
}

TEST_F(request_file, IncompleteStepKeepsItsValues) {
    EXPECT_EQ(read(two_requests({0, 1}) + "2\n12 2 3 4 5 6\n", "0,10,20"), 3);
    EXPECT_EQ(crv_columns[0]->numpts, 3);
    EXPECT_EQ(crv_columns[1]->numpts, 3);
    EXPECT_EQ(crv_columns[2]->numpts, 2);
    EXPECT_THAT(out, testing::HasSubstr("has 2 steps"));
}

TEST_F(request_file, UnterminatedLastLineIsIgnored) {
    std::string text = two_requests({0, 1});
    text.pop_back();
    EXPECT_EQ(read(text, "10,20"), 2);
    EXPECT_EQ(crv_columns[0]->numpts, 2);
    EXPECT_EQ(crv_columns[1]->numpts, 1);
    EXPECT_THAT(out, testing::HasSubstr("has 1 steps"));
}

// A read that stops at the limit does not see the end of the file.
TEST_F(request_file, UnterminatedLineAtLimitIsUsed) {
    const std::string steps = "\nt\n1\n7 1 0 0 0\n0\n1\n1\n";
    read(steps + std::string(124, ' ') + "2", "7");
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{1})) << "125 characters";
    read(steps + std::string(125, ' ') + "2", "7");
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{1, 2})) << "126 characters";
}

TEST_F(request_file, SeveralResultSetsAreRejected) {
    EXPECT_EQ(read(two_requests({0}) + "1\n<++> a\n", "0"), -1);
    EXPECT_EQ(out,
              "%crv_83-i-wor, Reading \"" + path +
                  "\" ...\n"
                  "%crv_xx-e-mul, Multiple results in (" +
                  path +
                  ")\n"
                  "    _xx-e-not, Kelp plot does not support multiple results in one .req file.\n");
    EXPECT_EQ(read(two_requests({0}) + "x<++>", "0"), -1) << "also on a last line without its end";
    EXPECT_EQ(read("<++>\n<++>\n0\n1\n", "0"), 1) << "but not on the lines before the data";
}

TEST_F(request_file, AMissingFileIsReported) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(stdout_of([] { EXPECT_EQ(crv_ReadReq("/nowhere/a.req", crv_ParseSel("0", 0)), -1); }),
              "%crv_83-i-wor, Reading \"/nowhere/a.req\" ...\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "    _83-f-fopen: No such file or directory\n");
}

TEST_F(request_file, DirectoryIsReportedLikeFailedOpen) {
    EXPECT_EQ(stderr_of([] { EXPECT_EQ(crv_ReadReq("/tmp", crv_ParseSel("0", 0)), -1); }),
              "    _83-f-fopen: Is a directory\n");
}

TEST_F(request_file, WarnsOfStepsOutsideDefaultWindow) {
    read(two_requests({-101, 0, 1, 10001}), "0,10");
    EXPECT_EQ(err, "%crv_83-w-win, 2 of 4 points of \"" + path +
                       "\" are outside the default time window -100:10000 and left out, see -tm\n");
    crv_settings.time_window_given = true;
    read(two_requests({-101, 0, 1, 10001}), "0,10");
    EXPECT_EQ(err, "");
}

std::string many_steps(int count) {
    std::string text = "\nt\n0\n";
    for (int k = 0; k < count; ++k) text += "1\n";
    return text;
}

TEST_F(request_file, WarnsOfWrappedCount) {
    read(many_steps(65536 + 3), "0");
    EXPECT_EQ(err, "%crv_83-w-cnt, \"Time (sec)\" of \"" + path +
                       "\" has 65539 values, counted as 3: its mean is the sum divided by 3\n");
}

TEST_F(request_file, ColumnWithoutPointsEndsProgram) {
    crv_settings.time_window[1] = -200;
    crv_settings.time_window_given = true;
    EXPECT_EXIT(crv_ReadReq(text_file(two_requests({0})).path(), crv_ParseSel("0,10", 4)),
                testing::ExitedWithCode(1),
                "^%crv_83-e-pts, No data points found for item \\(4\\)\n$");
}

// The line of request 10 comes before that of entry 0 and is screened by the X value before it.
TEST_F(request_file, EntryWithoutPointsIsNumbered) {
    crv_settings.x_filter[0] = -11;
    crv_settings.x_filter[1] = -9;
    EXPECT_EXIT(crv_ReadReq(text_file(two_requests({0})).path(), crv_ParseSel("20,10", 4)),
                testing::ExitedWithCode(1),
                "^%crv_83-e-pts, No data points found for item \\(5\\)\n$");
}

TEST_F(request_file, AcceptsMaximumPointCount) {
    EXPECT_EQ(read(many_steps(32767), "0"), 1);
    EXPECT_EQ(crv_columns[0]->mean, 1.0);
}

TEST_F(request_file, PointOverMaximumEndsProgram) {
    EXPECT_EXIT(crv_ReadReq(text_file(many_steps(32768)).path(), crv_ParseSel("0", 0)),
                testing::ExitedWithCode(1), "No data points found for item \\(0\\)");
}

TEST_F(request_file, TheSixteenBitCountWrapsAround) {
    EXPECT_EQ(read(many_steps(65536 + 4), "0"), 1);
    EXPECT_EQ(crv_columns[0]->numpts, 4);
    EXPECT_EQ(crv_columns[0]->mean, 65540.0 / 4);
}

TEST_F(request_file, FailedColumnIsReported) {
    const text_file file(two_requests({0}));
    const failing_memory memory(reader_allocations + 1);
    EXPECT_EQ(stderr_of([&] { EXPECT_EQ(crv_ReadReq(file.path(), crv_ParseSel("0,10", 0)), -1); }),
              "    _83-e-calloc, data: Cannot allocate memory\n");
    EXPECT_NE(crv_columns[0], nullptr) << "columns made so far stay";
    EXPECT_EQ(crv_columns[1], nullptr);
}

TEST_F(request_file, AValueWithoutMemoryIsReported) {
    const text_file file(many_steps(10));
    use_up_values();
    const failing_memory memory(reader_allocations + 1);
    EXPECT_EQ(stderr_of([&] { EXPECT_EQ(crv_ReadReq(file.path(), crv_ParseSel("0", 0)), -1); }),
              "    _83-f-calloc: Cannot allocate memory\n");
}

TEST_F(request_file, MissingNumbersAreZeroWithWarning) {
    EXPECT_EQ(read("\nt\n1\n7 1 0 0 0\n0.5\n1 2\n1.5\n3\n", "7:3,7:2,7:7"), 3);
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{0, 0}));
    EXPECT_EQ(values_of(crv_columns[1]), (std::vector<double>{2, 0}));
    EXPECT_EQ(err,
              "%crv_83-w-num, Missing numbers in \"" + path + "\" read as 0.0, first on line 6\n");
}

// The time decides whether a step is in the time window, even if it is not selected.
TEST_F(request_file, MissingTimeIsZeroWithWarning) {
    EXPECT_EQ(read("\nt\n1\n7 1 0 0 0\n0.5\n1 2\n  \n3 4\n", "7:2"), 1);
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{2, 4}));
    EXPECT_EQ(crv_columns[0]->min_time, 0.5);
    EXPECT_EQ(crv_columns[0]->max_time, 0.0);
    EXPECT_EQ(err,
              "%crv_83-w-num, Missing numbers in \"" + path + "\" read as 0.0, first on line 7\n");
}

TEST_F(request_file, UnselectedNumbersMayBeMissing) {
    read("\nt\n1\n7 1 0 0 0\n0.5\n1 2\n", "0,7:2");
    EXPECT_EQ(err, "");
}

TEST_F(request_file, CrLfReadsLikeLf) {
    std::string text = two_requests({0, 1});
    for (size_t at = 0; (at = text.find('\n', at)) != text.npos; at += 2) text.insert(at, "\r");
    EXPECT_EQ(read(text, "0,20:1"), 2);
    EXPECT_EQ(values_of(crv_columns[1]), (std::vector<double>{-10, -11}));
    EXPECT_STREQ(crv_columns[0]->coltitle, "The title\n");
}

TEST_F(request_file, LongLineIsReadAsTwo) {
    const std::string long_line = "5" + std::string(130, ' ') + "6\n";
    EXPECT_EQ(read("\nt\n1\n7 1 0 0 0\n0.5\n" + long_line + "1.5\n", "0,7"), 2);
    EXPECT_EQ(values_of(crv_columns[0]), (std::vector<double>{0.5, 6}));
    EXPECT_EQ(values_of(crv_columns[1]), (std::vector<double>{5, 1.5}));
}

std::string with_title(const std::string &title) { return "\n" + title + "\n0\n1\n"; }

TEST_F(request_file, ShortTitleKeepsNewline) {
    read(with_title("twenty characters :)"), "0");
    EXPECT_STREQ(crv_columns[0]->coltitle, "twenty characters :)\n");
    read(with_title("blanks   "), "0");
    EXPECT_STREQ(crv_columns[0]->coltitle, "blanks   \n") << "and the blanks before it";
}

TEST_F(request_file, LongTitleIsCutTo79) {
    read(with_title(std::string(100, 't')), "0");
    EXPECT_EQ(crv_columns[0]->coltitle, std::string(79, 't'));
    read(with_title(std::string(78, 't')), "0");
    EXPECT_EQ(crv_columns[0]->coltitle, std::string(78, 't') + "\n");
    read(with_title(std::string(79, 't')), "0");
    EXPECT_EQ(crv_columns[0]->coltitle, std::string(79, 't'));
}

TEST_F(request_file, TitleWithNulKeepsNewline) {
    read(std::string("\nti\0tle\n0\n1\n", 12), "0");
    EXPECT_STREQ(crv_columns[0]->coltitle, "ti\n");
}

// The rest of the title line stands for line 3.
TEST_F(request_file, LongTitleEndsAtNulWithoutNewline) {
    read("\nti" + std::string(1, '\0') + std::string(122, 'x') + "0\n1\n", "0");
    EXPECT_STREQ(crv_columns[0]->coltitle, "ti");
}

TEST_F(request_file, PaddedTitleLosesBlanks) {
    read(with_title("Padded" + std::string(74, ' ')), "0");
    EXPECT_STREQ(crv_columns[0]->coltitle, "Padded");
}

TEST_F(request_file, TitleOverLimitEndsWithNewline) {
    read("\n" + std::string(126, 't') + "\n", ""); // the rest of the title is line 3
    const text_file file("\n" + std::string(126, 't') + "0\n1\n");
    stdout_of([&] { EXPECT_EQ(crv_ReadReq(file.path(), crv_ParseSel("0", 0)), 1); });
    EXPECT_EQ(crv_columns[0]->coltitle, std::string(78, 't') + "\n");
}

TEST_F(request_file, ProvisionalLabelReadsSlotEntry) {
    crv_DBG = 83;
    // The first column, in slot 1, is labelled by entry 1, which is time; entry 2 does not exist.
    read(two_requests({0}), "10:1,0", 1);
    EXPECT_THAT(out, testing::HasSubstr("name = Time, max = 10.000000, min = 10.000000 \n"));
    EXPECT_THAT(out, testing::HasSubstr("name = R:   0, i:0, max = 0.000000, min = 0.000000 \n"));
}

TEST_F(request_file, Level83TracesTheWholeRead) {
    crv_DBG = 83;
    crv_settings.time_window[1] = 0.5;
    read(two_requests({0, 1}), "10:2");
    EXPECT_EQ(out, "    _83-i-val, req_filename = \"" + path +
                       "\" \n"
                       "    _83-i-val, Access results for req =   10, item = 2 \n"
                       "%crv_83-i-wor, Reading \"" +
                       path +
                       "\" ...\n"
                       "    _83-i-val, rec = 10 2 3 4 5 6\n \n"
                       "    _83-i-val, item = 2, val1 = 2.000000 \n"
                       "    _83-i-val, current_time = 0.000000 \n"
                       "    _83-i-val, current_xval = 0.000000 \n"
                       "    _83-i-val, Time screening TRUE\n"
                       "    _83-i-val, rec = 11 2 3 4 5 6\n \n"
                       "    _83-i-val, item = 2, val1 = 2.000000 \n"
                       "    _83-i-val, current_time = 1.000000 \n"
                       "    _83-i-val, current_xval = 0.000000 \n"
                       "    _83-i-val, Time screening FALSE\n"
                       "%crv_83-i-pts, file (" +
                       path +
                       ") has 2 steps\n"
                       "    _83-i-val, ---------------------------- \n"
                       "    _83-i-val, name = R:  10, i:2, max = 2.000000, min = 2.000000 \n"
                       "    _83-i-val, var1 = 0.000000, var2 = 0.000000 \n"
                       "    _83-i-val,   1: value =      2.000 \n");
    EXPECT_EQ(crv_columns[0]->val_cur, nullptr);
    EXPECT_STREQ(crv_columns[0]->colname, "Displ 10, Y  ");
}

} // namespace
