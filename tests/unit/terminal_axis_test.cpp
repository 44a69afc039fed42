// unit/terminal_axis_test.cpp - ranges and numbers of a picture's axes.
#include "terminal/axis.h"

#include "records/range.h"
#include "support.h"

#include <cmath>
#include <limits>

namespace {

using terminal_axis = fresh_run;

std::vector<std::string> texts_of(const std::vector<crv_tick> &ticks) {
    std::vector<std::string> texts;
    for (const crv_tick &tick : ticks) texts.push_back(tick.text);
    return texts;
}

using texts = std::vector<std::string>;

// Ticks at least two characters apart on an axis of ten.
texts ticks_of(double low, double high) {
    return texts_of(crv_ChooseTicks(crv_MakeAxis(low, high), 10, 2, -1));
}

TEST_F(terminal_axis, NumbersAreRound) {
    EXPECT_EQ(ticks_of(0, 1), (texts{"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}));
    EXPECT_EQ(ticks_of(-31, 78), (texts{"0", "50"}));
    EXPECT_EQ(ticks_of(-31, 69), (texts{"-20", "0", "20", "40", "60"}));
    EXPECT_EQ(ticks_of(0.3, 0.7), (texts{"0.3", "0.4", "0.5", "0.6", "0.7"}));
    EXPECT_EQ(ticks_of(1200, 3900), (texts{"2000", "3000"}));
}

TEST_F(terminal_axis, PositionsAreFractions) {
    const std::vector<crv_tick> ticks = crv_ChooseTicks(crv_MakeAxis(-1, 3), 10, 2, -1);
    ASSERT_EQ(texts_of(ticks), (texts{"-1", "0", "1", "2", "3"}));
    EXPECT_DOUBLE_EQ(ticks[0].fraction, 0);
    EXPECT_DOUBLE_EQ(ticks[1].fraction, 0.25);
    EXPECT_DOUBLE_EQ(ticks[4].fraction, 1);
}

TEST_F(terminal_axis, NeighborsDifferInTheirDigits) {
    EXPECT_EQ(ticks_of(1e8, 1e8 + 9e-4),
              (texts{"100000000.0000", "100000000.0002", "100000000.0004", "100000000.0006",
                     "100000000.0008"}));
    EXPECT_EQ(ticks_of(0, 9e7), (texts{"0", "2e7", "4e7", "6e7", "8e7"}));
    EXPECT_EQ(ticks_of(1e-7, 6e-7), (texts{"1e-7", "2e-7", "3e-7", "4e-7", "5e-7", "6e-7"}));
    EXPECT_EQ(ticks_of(0, 2e-7), (texts{"0", "5.0e-8", "1.0e-7", "1.5e-7", "2.0e-7"}));
}

TEST_F(terminal_axis, NumbersFrom1e15OnHaveExponents) {
    EXPECT_EQ(ticks_of(1e15, 1e15 + 4e3),
              (texts{"1.000000000000e15", "1.000000000001e15", "1.000000000002e15",
                     "1.000000000003e15", "1.000000000004e15"}));
}

TEST_F(terminal_axis, NumbersLeaveSpaceBetweenThem) {
    const crv_axis axis = crv_MakeAxis(0, 1);
    EXPECT_EQ(texts_of(crv_ChooseTicks(axis, 16, 1, 4)), (texts{"0.0", "0.5", "1.0"}));
    EXPECT_EQ(texts_of(crv_ChooseTicks(axis, 14, 1, 4)), (texts{"0.0", "0.5", "1.0"}));
    EXPECT_EQ(texts_of(crv_ChooseTicks(axis, 13, 1, 4)), (texts{"0", "1"}));
    EXPECT_EQ(texts_of(crv_ChooseTicks(axis, 40, 1, 4)),
              (texts{"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}));
}

TEST_F(terminal_axis, NarrowAxisHasOneNumber) {
    EXPECT_EQ(texts_of(crv_ChooseTicks(crv_MakeAxis(1.1, 1.9), 4, 1, 4)), texts{"1.5"});
}

TEST_F(terminal_axis, RangeWithoutExtentIsWidened) {
    const crv_axis constant = crv_MakeAxis(5, 5);
    EXPECT_DOUBLE_EQ(constant.low, 4.5);
    EXPECT_DOUBLE_EQ(constant.high, 5.5);
    const crv_axis zero = crv_MakeAxis(0, 0);
    EXPECT_EQ(zero.low, -1);
    EXPECT_EQ(zero.high, 1);
    const crv_axis negative = crv_MakeAxis(-5, -5);
    EXPECT_DOUBLE_EQ(negative.low, -5.5);
    EXPECT_DOUBLE_EQ(negative.high, -4.5);
}

TEST_F(terminal_axis, AnyRangeHasFiniteFractions) {
    const double greatest = std::numeric_limits<double>::max();
    const double least = std::numeric_limits<double>::denorm_min();
    const std::vector<double> values = {-greatest, -1e300, -1, -1e-300, -least,  0,
                                        least,     1e-300, 1,  1e300,   greatest};
    for (const double low : values)
        for (const double high : values) {
            if (low > high) continue;
            const crv_axis axis = crv_MakeAxis(low, high);
            SCOPED_TRACE(testing::Message() << low << " to " << high);
            EXPECT_EQ(crv_FindFraction(axis, axis.low), 0);
            EXPECT_DOUBLE_EQ(crv_FindFraction(axis, axis.high), 1);
            for (const int length : {4, 80, 1000})
                for (const crv_tick &tick : crv_ChooseTicks(axis, length, 1, 4))
                    EXPECT_TRUE(tick.fraction >= 0 && tick.fraction <= 1) << tick.text;
        }
}

crv_view make_view(const std::vector<double> &x, const std::vector<double> &y) {
    const crv_column *columns[] = {add_column(0, x), add_column(1, y)};
    crv_view view;
    view.files = {{"a.req", columns[0], true, {columns[1]}}};
    view.curves = {{columns[0], columns[1], 0}};
    return view;
}

TEST_F(terminal_axis, RangesAreThoseOfFinitePoints) {
    const crv_axes axes = crv_FindAxes(make_view({1, NAN, 3, 9}, {10, 20, INFINITY, -30}));
    EXPECT_EQ(axes.x.low, 1);
    EXPECT_EQ(axes.x.high, 9);
    EXPECT_EQ(axes.y.low, -30);
    EXPECT_EQ(axes.y.high, 10);
}

TEST_F(terminal_axis, GivenRangesHold) {
    crv_view view = make_view({1, 9}, {10, 20});
    crv_SetRange(view.x_range, 2, 3);
    crv_SetRange(view.y_range, -4, 5);
    const crv_axes axes = crv_FindAxes(view);
    EXPECT_EQ(axes.x.low, 2);
    EXPECT_EQ(axes.x.high, 3);
    EXPECT_EQ(axes.y.low, -4);
    EXPECT_EQ(axes.y.high, 5);
}

TEST_F(terminal_axis, YRangeIsThatOfPointsInXRange) {
    crv_view view = make_view({1, 2, 3, 4}, {100, 10, 20, -100});
    crv_SetRange(view.x_range, 2, 3);
    EXPECT_EQ(crv_FindAxes(view).y.low, 10);
    EXPECT_EQ(crv_FindAxes(view).y.high, 20);
    crv_SetRange(view.x_range, 2.2, 2.8); // between two points
    EXPECT_EQ(crv_FindAxes(view).y.low, -100);
    EXPECT_EQ(crv_FindAxes(view).y.high, 100);
}

TEST_F(terminal_axis, UnusableRangesCountAsNotSet) {
    crv_view view = make_view({1, 9}, {10, 20});
    for (const double bound : std::vector<double>{NAN, INFINITY, -100}) {
        crv_SetRange(view.x_range, 0, bound);
        EXPECT_EQ(crv_FindAxes(view).x.low, 1) << bound;
    }
}

TEST_F(terminal_axis, ViewWithoutPointsHasRange) {
    const crv_axes axes = crv_FindAxes(make_view({NAN, 1}, {1, NAN}));
    EXPECT_EQ(axes.x.low, 0);
    EXPECT_EQ(axes.x.high, 1);
    EXPECT_EQ(axes.y.high, 1);
}

} // namespace
