// unit/input_test.cpp
#include "readers/input.h"

#include "support.h"

namespace {

TEST(Input, ReportsErrorOfFailedRead) {
    utl_line_reader lines = {};
    const crv_input in = {"a.req", &lines, 83, false};
    errno = ENOENT; // of another failure
    EXPECT_FALSE(crv_ReadFailed(in));
    EXPECT_EQ(errno, ENOENT);
    lines.error = EIO;
    EXPECT_TRUE(crv_ReadFailed(in));
    EXPECT_EQ(errno, EIO);
}

} // namespace
