// unit/header_test.cpp - headers of the four formats, entry by entry.
#include "readers/column_header.h"
#include "readers/frame_header.h"
#include "readers/madymo_header.h"
#include "readers/request_header.h"

#include "support.h"

#include <memory>

namespace {

class file_header : public testing::Test {
  protected:
    // Opens a file that contains `bytes`.
    utl_line_reader *open(const std::string &bytes) {
        file = std::make_unique<text_file>(bytes);
        lines = utl_OpenReader(file->path());
        return lines;
    }
    void TearDown() override {
        if (lines) utl_CloseReader(lines);
    }

    std::unique_ptr<text_file> file;
    utl_line_reader *lines = nullptr;
};

TEST_F(file_header, RequestEntriesHaveTypeBlockAndName) {
    open("x\nThe title  \n3 requests\n7 1 0 0 0\n-5,4,0,0,9\nFORCE\n\n0.0\n");
    crv_request_header header = crv_ReadRequestHeader(lines);
    EXPECT_STREQ(header.title, "The title  ");
    EXPECT_EQ(header.num_requests, 3);
    crv_request_entry entry;
    ASSERT_TRUE(crv_ReadRequestEntry(lines, &header, &entry));
    EXPECT_EQ(entry.identifier, 7U);
    EXPECT_EQ(entry.type, 1U);
    EXPECT_EQ(entry.block, 1);
    EXPECT_EQ(entry.name, "");
    ASSERT_TRUE(crv_ReadRequestEntry(lines, &header, &entry));
    EXPECT_EQ(entry.identifier, 4294967291U);
    EXPECT_EQ(entry.block, 2);
    EXPECT_EQ(entry.name, "FORCE");
    ASSERT_TRUE(crv_ReadRequestEntry(lines, &header, &entry));
    EXPECT_EQ(entry.identifier, 0U); // of an empty line
    EXPECT_FALSE(crv_ReadRequestEntry(lines, &header, &entry));
    EXPECT_EQ(utl_ReadLine(lines, crv_request_line_limit).text, "0.0");
}

TEST_F(file_header, RequestEntriesEndWithTheFile) {
    open("x\ny\n2147483647\n7 1 0 0 1\nNAME");
    crv_request_header header = crv_ReadRequestHeader(lines);
    crv_request_entry entry;
    EXPECT_TRUE(crv_ReadRequestEntry(lines, &header, &entry));
    EXPECT_EQ(entry.name, "NAME");
    EXPECT_FALSE(crv_ReadRequestEntry(lines, &header, &entry));
    EXPECT_EQ(header.num_entries, 1);
}

TEST_F(file_header, LongRequestTitleHas78CharactersAndItsLineEnd) {
    open("x\n" + std::string(125, 't') + "u\n1\n");
    const crv_request_header header = crv_ReadRequestHeader(lines);
    EXPECT_EQ(header.title, std::string(78, 't'));
    EXPECT_EQ(header.title_status, utl_line_status::newline);
}

TEST_F(file_header, MadymoListsNamesThenDescriptions) {
    open("Sled\nx\n2 1\nSLED       1\nHEAD\nacceleration\n0.0\n");
    crv_madymo_header header = crv_ReadMadymoHeader(lines);
    EXPECT_STREQ(header.title, "Sled");
    EXPECT_TRUE(header.has_counts);
    std::string_view text;
    ASSERT_TRUE(crv_ReadMadymoName(lines, &header, &text));
    EXPECT_EQ(text, "SLED       1");
    ASSERT_TRUE(crv_ReadMadymoName(lines, &header, &text));
    EXPECT_EQ(text, "HEAD");
    EXPECT_FALSE(crv_ReadMadymoName(lines, &header, &text));
    ASSERT_TRUE(crv_ReadMadymoDescription(lines, &header, &text));
    EXPECT_EQ(text, "acceleration");
    EXPECT_FALSE(crv_ReadMadymoDescription(lines, &header, &text));
    EXPECT_EQ(utl_ReadLine(lines, crv_madymo_line_limit).text, "0.0");
}

TEST_F(file_header, MadymoLineWithoutTwoNumbersIsNoted) {
    open("Sled\nx\n1 and\nSLED\n");
    const crv_madymo_header header = crv_ReadMadymoHeader(lines);
    EXPECT_FALSE(header.has_counts);
    EXPECT_EQ(header.num_requests, 1);
    EXPECT_EQ(header.num_descriptions, 0);
}

TEST_F(file_header, MadymoCountsMayEndTheLongestLine) {
    open("Sled\nx\n" + std::string(506, ' ') + "2 1\nSLED\nHEAD\nacceleration\n");
    const crv_madymo_header header = crv_ReadMadymoHeader(lines);
    EXPECT_TRUE(header.has_counts);
    EXPECT_EQ(header.num_requests, 2);
    EXPECT_EQ(header.num_descriptions, 1);
}

TEST_F(file_header, ColumnHeaderEndsAtFirstRow) {
    open("made by hand\ntime, force\n\n0 1 2\n1 2 3\n");
    crv_column_header header = {};
    const utl_line row = crv_ReadColumnHeader(lines, 2, 4, &header);
    EXPECT_STREQ(header.labels, "time, force");
    EXPECT_EQ(header.num_columns, 3);
    EXPECT_EQ(row.text, "0 1 2");
}

TEST_F(file_header, ColumnHeaderWithoutLinesHasNoColumns) {
    open("1 2\n");
    crv_column_header header = {};
    EXPECT_EQ(crv_ReadColumnHeader(lines, -1, 0, &header).status, utl_line_status::eof);
    EXPECT_EQ(header.num_columns, 0);
    EXPECT_EQ(utl_ReadLine(lines, crv_column_line_limit).text, "1 2");
}

TEST(ColumnLabel, DoublePercentSignsAreOne) {
    EXPECT_EQ(crv_ColumnLabel("load%%"), "load%");
    EXPECT_EQ(crv_ColumnLabel("%%%"), "%%");
    EXPECT_EQ(crv_ColumnLabel("50%"), "50%");
}

TEST_F(file_header, FrameDirectivesFillTheRecord) {
    open("text\n \n%T\nTitle\n%XA\nX label\n%YA\nY label\n%YA3\nthird\n%XR\n0\n60\n%YR\n9\n1\n"
         "%N\n5\n%XY\n%D\n1 2\n");
    crv_frame_header header;
    std::vector<crv_frame_event> events;
    do {
        events.push_back(crv_ReadFrameDirective(lines, &header));
    } while (events.back() != crv_frame_event::data);
    using enum crv_frame_event;
    EXPECT_THAT(events, testing::ElementsAre(text, empty, none, none, none, none, x_range, y_range,
                                             none, begin, data));
    EXPECT_STREQ(header.title.text, "Title\n");
    EXPECT_STREQ(header.x_label.text, "X label\n");
    EXPECT_STREQ(header.y_label.text, "Y label\n");
    EXPECT_TRUE(header.y_titles[3].given);
    EXPECT_FALSE(header.y_titles[2].given);
    EXPECT_THAT(header.x_range, testing::ElementsAre(0, 60));
    EXPECT_THAT(header.y_range, testing::ElementsAre(9, 1));
    EXPECT_EQ(header.num_points, 5);
    EXPECT_EQ(crv_ReadFrameDirective(lines, &header), text); // the data line
    EXPECT_EQ(crv_ReadFrameDirective(lines, &header), end);
}

TEST_F(file_header, LaterOfStyleAndCountGivesThePoints) {
    open("%S\n3\n%N\n5\n%S\n7\n");
    crv_frame_header header;
    crv_ReadFrameDirective(lines, &header);
    EXPECT_TRUE(header.has_points_of_style);
    crv_ReadFrameDirective(lines, &header);
    EXPECT_FALSE(header.has_points_of_style);
    EXPECT_EQ(header.num_points, 5);
    EXPECT_EQ(header.style, 3);
    crv_ReadFrameDirective(lines, &header);
    EXPECT_EQ(header.num_points, 7);
    EXPECT_EQ(header.style, 7);
}

} // namespace
