// unit/conditional_test.cpp - the line of the conditional value report.
#include "stats/conditional.h"

#include "support.h"

namespace {

class conditional : public fresh_run {
  protected:
    // Returns the report on columns with the values `a` and `b`.
    std::string report(const std::vector<double> &a, const std::vector<double> &b,
                       const char *condition) {
        crv_ClearColumns();
        add_column(0, a, "a");
        crv_column *second = add_column(1, b, "b");
        second->max_step = 3;
        second->max_time = 0.3;
        second->min_step = 1;
        second->min_time = 0.1;
        second->absmax_step = 2;
        second->absmax_time = 0.2;
        second->absmin_step = 4;
        second->absmin_time = 0.4;
        second->var1 = second->var2 = 77;
        return stdout_of([&] { crv_ReportValue(condition, 0); });
    }
};

using numbers = std::vector<double>;
const numbers up = {0, 2, 4};
const numbers tens = {10, 20, 30};

TEST_F(conditional, ARisingCrossingIsInterpolated) {
    EXPECT_EQ(report(up, tens, "3"), "25.000000 [a] when [b] = 3.000000, (s = 3, 0.500000) \n");
}

TEST_F(conditional, AFallingCrossingIsInterpolated) {
    EXPECT_EQ(report({4, 2, 0}, tens, "0.5"),
              "27.500000 [a] when [b] = 0.500000, (s = 3, 0.750000) \n");
}

TEST_F(conditional, ExactHitPrintsPreviousPoint) {
    EXPECT_EQ(report(up, tens, "2"), "10.000000 [a] when [b] = 2.000000, (s = 2, 0.000000) \n");
}

TEST_F(conditional, HitAtFirstPointPrintsIt) {
    EXPECT_EQ(report(up, tens, "0"), "10.000000 [a] when [b] = 0.000000, (s = 1, 0.000000) \n");
}

TEST_F(conditional, TheFirstCrossingCounts) {
    EXPECT_EQ(report({0, 4, 0, 4}, {1, 2, 3, 4}, "1"),
              "1.250000 [a] when [b] = 1.000000, (s = 2, 0.250000) \n");
}

TEST_F(conditional, UnreachedValuePrintsNot) {
    EXPECT_EQ(report(up, tens, "9"), "NOT! [a] when [b] = 9.000000, (s = -1, -1.000000) \n");
    EXPECT_EQ(report({}, tens, "9"), "NOT! [a] when [b] = 9.000000, (s = -1, -1.000000) \n");
}

TEST_F(conditional, CrossingAfterSecondColumnPrintsNot) {
    EXPECT_EQ(report(up, {10}, "3"), "NOT! [a] when [b] = 3.000000, (s = -1, -1.000000) \n");
}

TEST_F(conditional, NonNumericTextIsZero) {
    EXPECT_EQ(report(up, tens, "zero"), "10.000000 [a] when [b] = 0.000000, (s = 1, 0.000000) \n");
}

TEST_F(conditional, ExtremesPrintValueOfFirstColumn) {
    const numbers first = {5, 6, 7, 8};
    EXPECT_EQ(report(first, tens, "max"), "7.000000 [a] when [b] = max, (s = 3, t = 0.300000)\n");
    EXPECT_EQ(report(first, tens, "maximum"),
              "7.000000 [a] when [b] = max, (s = 3, t = 0.300000)\n");
    EXPECT_EQ(report(first, tens, "min"), "5.000000 [a] when [b] = min, (s = 1, t = 0.100000)\n");
    EXPECT_EQ(report(first, tens, "amax"), "6.000000 [a] when [b] = amax, (s = 2, t = 0.200000)\n");
    EXPECT_EQ(report(first, tens, "abax"), "6.000000 [a] when [b] = amax, (s = 2, t = 0.200000)\n");
    EXPECT_EQ(report(first, tens, "a-i"), "8.000000 [a] when [b] = amin, (s = 4, t = 0.400000)\n");
    EXPECT_EQ(report(first, tens, "amin"), "8.000000 [a] when [b] = amin, (s = 4, t = 0.400000)\n");
}

TEST_F(conditional, UnknownWordPrintsEmptyLine) {
    for (const char *word : {"mean", "m", "a", "abs", "am", "mx"})
        EXPECT_EQ(report(up, tens, word), "\n") << word;
}

TEST_F(conditional, ExtremeWithoutPointPrintsNot) {
    EXPECT_EQ(report({5, 6}, tens, "max"), "NOT! [a] when [b] = 0.000000, (s = -1, -1.000000) \n");
    crv_ClearColumns();
    add_column(0, {1, 2}, "a");
    add_column(1, {1, 2}, "b");
    EXPECT_EQ(stdout_of([] { crv_ReportValue("min", 0); }),
              "NOT! [a] when [b] = 0.000000, (s = -1, -1.000000) \n");
}

} // namespace
