// unit/column_stats_test.cpp - running statistics of a column.
#include "stats/column_stats.h"

#include "support.h"

#include <cmath>

namespace {

using column_stats = fresh_run;

TEST_F(column_stats, FirstOfEqualValuesIsExtreme) {
    crv_column column = {};
    crv_value first = {};
    crv_UpdateMinMax(&column, 3, 1, 0.1, 0.1);
    crv_UpdateAbsMinMax(&column, -3, 1, 0.1);
    column.val_list = &first;
    crv_UpdateMinMax(&column, 3, 2, 0.2, 0.2);
    crv_UpdateAbsMinMax(&column, 3, 2, 0.2);
    EXPECT_EQ(column.min_step, 1U);
    EXPECT_EQ(column.max_step, 1U);
    EXPECT_EQ(column.absmin_step, 1U);
    EXPECT_EQ(column.absmax_step, 1U);
    EXPECT_EQ(column.var1, 0.1);
    EXPECT_EQ(column.var2, 0.1);
}

TEST_F(column_stats, FirstNanStaysTheExtreme) {
    crv_column column = {};
    crv_value first = {};
    crv_UpdateMinMax(&column, NAN, 1, 0.1, 0.1);
    column.val_list = &first;
    crv_UpdateMinMax(&column, 5, 2, 0.2, 0.2);
    EXPECT_TRUE(std::isnan(column.min));
    EXPECT_TRUE(std::isnan(column.max));
}

TEST_F(column_stats, MeanDividesBySignedCount) {
    EXPECT_EQ(crv_MeanOf(6.0, 3), 2.0);
    EXPECT_EQ(crv_MeanOf(6.0, -3), -2.0);
    EXPECT_TRUE(std::isinf(crv_MeanOf(6.0, 0)));
    EXPECT_TRUE(std::isnan(crv_MeanOf(0.0, 0)));
}

} // namespace
