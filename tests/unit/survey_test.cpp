// unit/survey_test.cpp - reading result files without storing a value and without messages.
#include "readers/column_file.h"
#include "readers/frame_file.h"
#include "readers/madymo_file.h"
#include "readers/request_file.h"

#include "support.h"

#include <functional>

namespace {

class survey : public fresh_run {
  protected:
    // Runs `pass` with the lines of a file that contains `bytes`. Nothing is printed.
    template <typename survey_call> static void read(const std::string &bytes, survey_call pass) {
        const text_file file(bytes);
        utl_line_reader *lines = utl_OpenReader(file.path());
        std::string out;
        const std::string err = stderr_of([&] { out = stdout_of([&] { pass(lines); }); });
        EXPECT_EQ(out, "");
        EXPECT_EQ(err, "");
        utl_CloseReader(lines);
    }

    static crv_request_survey requests(const std::string &bytes, uint64_t max_steps = UINT64_MAX) {
        crv_request_survey found;
        read(bytes, [&](utl_line_reader *lines) { crv_SurveyReq(lines, max_steps, &found); });
        return found;
    }
    static crv_madymo_survey madymo(const std::string &bytes, uint64_t max_steps = UINT64_MAX) {
        crv_madymo_survey found;
        read(bytes, [&](utl_line_reader *lines) { crv_SurveyMad(lines, max_steps, &found); });
        return found;
    }
};

const std::string one_request = "x\ny\n1\n7 1 0 0 0\n";

TEST_F(survey, CountsCompleteStepsWithTheirTimes) {
    const crv_request_survey found = requests(one_request + "0.5\n1\n1.5\n2\n-3\n3\n");
    EXPECT_EQ(found.steps.steps, 3U);
    EXPECT_EQ(found.steps.first_time, 0.5);
    EXPECT_EQ(found.steps.last_time, -3.0);
    EXPECT_EQ(found.steps.back_step, 3U);
    EXPECT_EQ(found.steps.lines_left, 0U);
    EXPECT_EQ(crv_columns[0], nullptr);
}

TEST_F(survey, LowestAndHighestTimeAreThoseOfAllFiniteTimes) {
    const crv_request_survey found =
        requests(one_request + "nan\n1\n5\n1\n20000\n2\n-300\n3\ninf\n1\n7\n1\n");
    EXPECT_EQ(found.steps.lowest_time, -300.0);
    EXPECT_EQ(found.steps.highest_time, 20000.0);
    const crv_madymo_survey madymo_steps = madymo("run\n\n1 0\nname\n3\n10\n-2\n20\n");
    EXPECT_EQ(madymo_steps.steps.lowest_time, -2.0);
    EXPECT_EQ(madymo_steps.steps.highest_time, 3.0);
}

TEST_F(survey, WithoutFiniteTimeLowestIsAboveHighest) {
    const crv_request_survey found = requests(one_request + "nan\n1\ninf\n1\n");
    EXPECT_EQ(found.steps.steps, 2U);
    EXPECT_GT(found.steps.lowest_time, found.steps.highest_time);
}

TEST_F(survey, IncompleteStepIsNotCounted) {
    const crv_request_survey found = requests(one_request + "0\n1\n5\n2");
    EXPECT_EQ(found.steps.steps, 1U);
    EXPECT_EQ(found.steps.last_time, 0.0);
    EXPECT_EQ(found.steps.lines_left, 1U);
    EXPECT_TRUE(found.steps.unterminated);
}

TEST_F(survey, StopsAtSecondResultSet) {
    const crv_request_survey found = requests(one_request + "0\n1\n<++>\n2\n1\n2\n");
    EXPECT_EQ(found.steps.steps, 1U);
    EXPECT_EQ(found.marked_line, 7U);
}

TEST_F(survey, CountsStepsOutsideTheDefaultWindow) {
    const crv_request_survey found = requests(one_request + "0\n1\n10001\n1\n-101\n1\n10000\n1\n");
    EXPECT_EQ(found.steps.steps, 4U);
    EXPECT_EQ(found.steps.dropped, 2U);
}

TEST_F(survey, MaxStepsEndThePass) {
    const std::string steps = "0\n1\n1\n1\n2\n1\n";
    EXPECT_EQ(requests(one_request + steps, 2).steps.steps, 2U);
    EXPECT_EQ(requests(one_request + steps, 0).steps.steps, 0U);
    EXPECT_EQ(madymo("x\ny\n1 0\nSLED\n" + steps, 2).steps.steps, 2U);
}

TEST_F(survey, NegativeCountIsRejected) {
    const text_file file("x\ny\n-1 0\n");
    for (const auto &pass : {std::function([](utl_line_reader *lines) {
                                 crv_request_survey found;
                                 return crv_SurveyReq(lines, 1, &found);
                             }),
                             std::function([](utl_line_reader *lines) {
                                 crv_madymo_survey found;
                                 return crv_SurveyMad(lines, 1, &found);
                             })}) {
        utl_line_reader *lines = utl_OpenReader(file.path());
        EXPECT_FALSE(pass(lines));
        utl_CloseReader(lines);
    }
}

TEST_F(survey, CountsNumbersOfTheFirstMadymoStep) {
    const crv_madymo_survey found =
        madymo("x\ny\n2 1\nSLED       1\nHEAD\nacc\n0\n1 2\n3\n1\n4\n5\n");
    EXPECT_THAT(found.names, testing::ElementsAre("SLED      ", "HEAD"));
    EXPECT_THAT(found.descriptions, testing::ElementsAre("acc"));
    EXPECT_THAT(found.numbers, testing::ElementsAre(2, 1));
    EXPECT_EQ(found.steps.steps, 2U);
}

TEST_F(survey, LongMadymoLineEndsThePass) {
    const crv_madymo_survey found =
        madymo("x\ny\n1 0\nSLED\n0\n1\n1\n" + std::string(510, '2') + "\n");
    EXPECT_EQ(found.steps.steps, 1U);
    EXPECT_EQ(found.long_line, 8U);
}

TEST_F(survey, FindsRowsWithAnotherNumberOfFields) {
    crv_column_survey found;
    read("a b\n1 2\n3\n4 5\n6 7 8\n9",
         [&](utl_line_reader *lines) { crv_SurveyPost(lines, 1, 2, &found); });
    EXPECT_EQ(found.rows.steps, 4U);
    EXPECT_EQ(found.uneven_rows, 2U);
    EXPECT_EQ(found.uneven_line, 3U);
    EXPECT_TRUE(found.rows.unterminated);
}

TEST_F(survey, FindsExtremesOfAllDataBlocks) {
    crv_frame_survey found;
    read("%N\n3\n%D\n5 -1\n1 2\n3 4\n%D\n9 0\n2\n",
         [&](utl_line_reader *lines) { crv_SurveyVDR(lines, &found); });
    EXPECT_EQ(found.num_blocks, 2U);
    EXPECT_EQ(found.num_found, 5U);
    EXPECT_TRUE(found.ends_early);
    EXPECT_EQ(found.missing_line, 9U);
    EXPECT_THAT(found.extremes[0], testing::ElementsAre(1, 9));
    EXPECT_THAT(found.extremes[1], testing::ElementsAre(-1, 4));
}

TEST_F(survey, FindsExtremesOfNumbersBesideNotANumber) {
    crv_frame_survey found;
    read("%N\n3\n%D\nnan nan\n1 nan\n3 nan\n",
         [&](utl_line_reader *lines) { crv_SurveyVDR(lines, &found); });
    EXPECT_EQ(found.num_found, 3U);
    EXPECT_THAT(found.extremes[0], testing::ElementsAre(1, 3));
    EXPECT_THAT(found.extremes[1], testing::Each(testing::IsNan()));
}

TEST_F(survey, TooFewPointsEndThePass) {
    crv_frame_survey found;
    read("%N\n2\n%D\n5 -1\n%T\nTitle\n",
         [&](utl_line_reader *lines) { crv_SurveyVDR(lines, &found); });
    EXPECT_TRUE(found.too_few);
    EXPECT_FALSE(found.header.title.given);
}

} // namespace
