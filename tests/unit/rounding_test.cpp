// unit/rounding_test.cpp - rounding of ranges to chart limits.
#include "stats/rounding.h"

#include "support.h"

#include <cmath>
#include <random>

namespace {

using rounding = fresh_run;

std::vector<double> rounded(double low, double high) {
    double pair[2] = {low, high};
    crv_RMinMax(pair);
    return {pair[0], pair[1]};
}

using bounds = std::vector<double>;

TEST_F(rounding, BoundsGoOutwardToOneDigit) {
    EXPECT_EQ(rounded(1.234, 1.234), (bounds{1, 2}));
    EXPECT_EQ(rounded(-1.234, -1.234), (bounds{-2, -1}));
    EXPECT_EQ(rounded(123, 123), (bounds{100, 200}));
    EXPECT_EQ(rounded(950, 950), (bounds{900, 1000}));
    EXPECT_EQ(rounded(200, 200), (bounds{200, 200}));
    EXPECT_EQ(rounded(0, 0), (bounds{0, 0}));
    EXPECT_EQ(rounded(0.0123, 0.0123), (bounds{0.01, 0.02}));
}

TEST_F(rounding, PowersOfTenAreNearestNumbers) {
    for (int exponent = -37; exponent <= 37; ++exponent) {
        const std::string power = "e" + std::to_string(exponent);
        const double value = strtod(("1.5" + power).c_str(), nullptr);
        const double low = strtod(("1" + power).c_str(), nullptr);
        EXPECT_EQ(rounded(value, value), (bounds{low, 2 * low})) << power;
    }
}

TEST_F(rounding, DigitIsFoundAfterThreeDecimals) {
    EXPECT_EQ(rounded(9.9996, 9.9996), (bounds{10, 20}));
    EXPECT_EQ(rounded(9.9994, 9.9994), (bounds{9, 10}));
}

TEST_F(rounding, ReversedBoundsAreRounded) { EXPECT_EQ(rounded(123, 45), (bounds{100, 50})); }

TEST_F(rounding, BoundsOfOppositeSignAreIndependent) {
    const bounds pair = rounded(-0.37, 4.2);
    EXPECT_FLOAT_EQ(static_cast<float>(pair[0]), -0.4F);
    EXPECT_EQ(pair[1], 5.0);
}

TEST_F(rounding, RoundingTwiceGivesTheSamePair) {
    std::mt19937_64 random(49);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    for (int round = 0; round < 5000; ++round) {
        const double scale = std::pow(10.0, static_cast<double>(random() % 61) - 30.0);
        const bounds once = rounded(mantissa(random) * scale, mantissa(random) * scale);
        EXPECT_EQ(rounded(once[0], once[1]), once);
    }
}

TEST_F(rounding, InexactBinaryValueCountsAsRound) {
    EXPECT_EQ(rounded(0.1, 0.1), (bounds{0.1, 0.1}));
    EXPECT_EQ(rounded(0.3, 0.7), (bounds{0.3, 0.7}));
}

TEST_F(rounding, InfiniteAndNanBoundsStay) {
    EXPECT_EQ(rounded(-INFINITY, INFINITY), (bounds{-INFINITY, INFINITY}));
    EXPECT_TRUE(std::isnan(rounded(NAN, 1)[0]));
    EXPECT_TRUE(std::isnan(rounded(1, NAN)[1]));
}

TEST_F(rounding, HugeAndTinyBoundsComeThrough) {
    // Outside the range of single precision both sides of the comparison are infinite or 0, so that
    // a bound is round.
    EXPECT_EQ(rounded(1.5e300, 1.5e300), (bounds{1.5e300, 1.5e300}));
    EXPECT_EQ(rounded(1.5e-300, 1.5e-300), (bounds{1.5e-300, 1.5e-300}));
}

TEST_F(rounding, Level49TracesBeforeAndAfter) {
    crv_DBG = 49;
    EXPECT_EQ(stdout_of([] { rounded(1.5, 2.5); }),
              "    _49-i-val, \n"
              "    _49-i-val, Before: minmax[0] = 1.500000, minmax[1] = 2.500000\n"
              "    _49-i-val, After : minmax[0] = 1.000000, minmax[1] = 3.000000\n");
}

TEST_F(rounding, Levels491And492ReplacePair) {
    crv_DBG = 491;
    EXPECT_EQ(stdout_of([] {
                  EXPECT_EQ(rounded(1.5, 2.5), (bounds{0.491, 491.0}));
              }),
              "    _49-i-val, After : minmax[0] = 0.491000, minmax[1] = 491.000000\n");
    crv_DBG = 492;
    EXPECT_EQ(stdout_of([] {
                  EXPECT_EQ(rounded(1.5, 2.5), (bounds{0.492, 492.0}));
              }),
              "    _49-i-val, After : minmax[0] = 0.492000, minmax[1] = 492.000000\n");
}

TEST_F(rounding, Levels493And494TraceAfter) {
    for (const int level : {493, 494}) {
        crv_DBG = level;
        EXPECT_EQ(stdout_of([] {
                      EXPECT_EQ(rounded(1.5, 2.5), (bounds{1, 3}));
                  }),
                  "    _49-i-val, After : minmax[0] = 1.000000, minmax[1] = 3.000000\n");
    }
    for (const int level : {0, 48, 50, 490, 495}) {
        crv_DBG = level;
        EXPECT_EQ(stdout_of([] { rounded(1.5, 2.5); }), "");
    }
}

} // namespace
