// unit/page_file_test.cpp - pages: values as base64, texts as JSON, labels of curves.
#include "page/page_file.h"

#include "page/curve_labels.h"

#include "support.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

// The bytes that base64 stands for; the decoder of RFC 4648, section 4, written down bit by bit.
std::string decode(const std::string &text) {
    const std::string digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bits, bytes;
    for (const char c : text) {
        if (c == '=') continue;
        const size_t digit = digits.find(c);
        for (int bit = 5; bit >= 0; --bit) bits += digit >> bit & 1 ? '1' : '0';
    }
    for (size_t at = 0; at + 8 <= bits.size(); at += 8)
        bytes += static_cast<char>(std::stoi(bits.substr(at, 8), nullptr, 2));
    return bytes;
}

// Doubles whose lowest byte comes first.
std::vector<double> doubles_of(const std::string &bytes) {
    std::vector<double> values;
    for (size_t at = 0; at + 8 <= bytes.size(); at += 8) {
        uint64_t bits = 0;
        for (size_t k = 8; k-- > 0;) bits = bits << 8 | static_cast<unsigned char>(bytes[at + k]);
        values.push_back(std::bit_cast<double>(bits));
    }
    return values;
}

std::vector<std::string> blocks_of(const std::string &page, int column) {
    const std::string begin =
        "<script type=\"text/plain\" data-column=\"" + std::to_string(column) + "\">";
    std::vector<std::string> blocks;
    for (size_t at = 0; (at = page.find(begin, at)) != page.npos;) {
        at += begin.size();
        blocks.push_back(page.substr(at, page.find('<', at) - at));
    }
    return blocks;
}

std::string written(const crv_view &view) {
    return written_by([&](FILE *stream) { EXPECT_TRUE(crv_WritePage(view, stream)); });
}

class PageFile : public fresh_run {
  protected:
    // A file with columns for X and for curves over it.
    void add_file(const std::string &path, const crv_column *x,
                  const std::vector<const crv_column *> &columns) {
        view_.files.push_back({path, x, true, columns});
        for (const crv_column *column : columns)
            view_.curves.push_back({x, column, static_cast<int>(view_.files.size()) - 1});
    }

    crv_view view_;
};

TEST_F(PageFile, WritesValuesOfEachLength) {
    const std::vector<double> all = {1.0, -2.5, 0.1, 1e300, -0.0, 4.9e-324, 3.0, 7.0};
    for (size_t count = 0; count <= all.size(); ++count) {
        const std::vector<double> values(all.begin(), all.begin() + static_cast<long>(count));
        view_ = {};
        crv_column *column = add_column(0, values);
        add_file("a", column, {column});
        const std::vector<std::string> blocks = blocks_of(written(view_), 0);
        ASSERT_EQ(blocks.size(), 1u);
        EXPECT_EQ(blocks[0].size(), (8 * count + 2) / 3 * 4); // with padding
        EXPECT_EQ(doubles_of(decode(blocks[0])), values);
    }
}

// 1.0 is 3F F0 and six bytes 0, written from its lowest byte on.
TEST_F(PageFile, FillsTheLastDigits) {
    const crv_column *one = add_column(0, {1}, "one");
    const crv_column *two = add_column(1, {1, 1}, "two");
    add_file("a.req", one, {two});
    EXPECT_EQ(blocks_of(written(view_), 0).at(0), "AAAAAAAA8D8=");
    EXPECT_EQ(blocks_of(written(view_), 1).at(0), "AAAAAAAA8D8AAAAAAADwPw==");
}

TEST_F(PageFile, WritesBitsOfSpecialValues) {
    const double nan = std::numeric_limits<double>::quiet_NaN(), infinity = INFINITY;
    crv_column *column = add_column(0, {nan, infinity, -infinity, -0.0});
    add_file("a", column, {column});
    const std::vector<double> values = doubles_of(decode(blocks_of(written(view_), 0).at(0)));
    ASSERT_EQ(values.size(), 4u);
    EXPECT_TRUE(std::isnan(values[0]));
    EXPECT_EQ(values[1], infinity);
    EXPECT_EQ(values[2], -infinity);
    EXPECT_TRUE(std::signbit(values[3]));
}

TEST_F(PageFile, WritesLowByteFirst) {
    crv_column *column = add_column(0, {1.0}); // 3FF0000000000000
    add_file("a", column, {column});
    EXPECT_THAT(blocks_of(written(view_), 0), ElementsAre("AAAAAAAA8D8="));
}

TEST_F(PageFile, WritesSharedColumnOnce) {
    crv_column *x = add_column(0, {0, 1}, "x");
    add_file("a", x, {add_column(1, {2, 3}, "y"), add_column(2, {4, 5}, "z")});
    add_file("b", x, {add_column(3, {6}, "w")});
    const std::string page = written(view_);
    EXPECT_THAT(page, HasSubstr("\"columns\":[\"x\",\"y\",\"z\",\"w\"]"));
    EXPECT_THAT(page, HasSubstr("[[0,1,0,0,\"y\"],[0,2,0,1,\"z\"],[0,3,1,2,\"w\"]]"));
    EXPECT_EQ(blocks_of(page, 0).size(), 1u);
    EXPECT_EQ(doubles_of(decode(blocks_of(page, 3).at(0))), std::vector<double>{6});
}

TEST_F(PageFile, ContinuesLongColumnInNextBlock) {
    std::vector<double> values(crv_page_block_values + 1);
    for (size_t k = 0; k < values.size(); ++k) values[k] = static_cast<double>(k);
    crv_column *column = add_column(0, values);
    add_file("a", column, {column});
    const std::vector<std::string> blocks = blocks_of(written(view_), 0);
    ASSERT_EQ(blocks.size(), 2u);
    EXPECT_EQ(blocks[0].size(), crv_page_block_values / 3 * 32);
    EXPECT_EQ(blocks[0].substr(0, 32).find('='), std::string::npos);
    EXPECT_THAT(doubles_of(decode(blocks[0].substr(blocks[0].size() - 32))),
                ElementsAre(3145725, 3145726, 3145727));
    EXPECT_THAT(doubles_of(decode(blocks[1])), ElementsAre(3145728));
}

TEST_F(PageFile, WritesNoEmptyBlockAfterFullOne) {
    crv_column *column = add_column(0, std::vector<double>(crv_page_block_values, 1.0));
    add_file("a", column, {column});
    EXPECT_EQ(blocks_of(written(view_), 0).size(), 1u);
}

TEST_F(PageFile, KeepsTextsInTheirPlaces) {
    view_.title = "</script><!--\"\\&";
    view_.subtitle = "a\tb\x01\xff";
    crv_column *column = add_column(0, {1}, "<b>");
    add_file("dir/</title>", column, {column});
    const std::string page = written(view_);
    EXPECT_THAT(page, HasSubstr("<title>&lt;/script>&lt;!--\"\\&amp;</title>"));
    EXPECT_THAT(page, HasSubstr("\"title\":\"\\u003c/script>\\u003c!--\\\"\\\\&\""));
    EXPECT_THAT(page, HasSubstr("\"subtitle\":\"a\uFFFDb\uFFFD\uFFFD\""));
    EXPECT_THAT(page, HasSubstr("\"files\":[\"title>\"]"));
    EXPECT_THAT(page, HasSubstr("\"columns\":[\"\\u003cb>\"]"));
}

TEST_F(PageFile, NamesWindowByTitleOrSubtitleOrFile) {
    crv_column *column = add_column(0, {1});
    add_file("dir/a.req", column, {column});
    EXPECT_THAT(written(view_), HasSubstr("<title>dir/a.req</title>"));
    view_.subtitle = "Of the file";
    EXPECT_THAT(written(view_), HasSubstr("<title>Of the file</title>"));
    view_.title = "Of the user";
    EXPECT_THAT(written(view_), HasSubstr("<title>Of the user</title>"));
}

TEST_F(PageFile, WritesRangesThatAreSet) {
    EXPECT_THAT(written(view_), HasSubstr("\"x_range\":null,\n\"y_range\":null"));
    view_.x_range[0] = 0.1;
    view_.x_range[1] = 1e22;
    view_.y_range[0] = view_.y_range[1] = 5; // of no width
    EXPECT_THAT(written(view_), HasSubstr("\"x_range\":[0.1,1e+22],\n\"y_range\":null"));
    view_.y_range[1] = INFINITY;
    EXPECT_THAT(written(view_), HasSubstr("\"y_range\":null"));
}

TEST_F(PageFile, PutsHashesIntoThePolicy) {
    const std::string page = written(view_);
    EXPECT_THAT(page, testing::ContainsRegex("default-src 'none'; img-src data: blob:"));
    EXPECT_THAT(page, testing::ContainsRegex("script-src 'sha256-[A-Za-z0-9+/]{43}='"));
    EXPECT_THAT(page, testing::ContainsRegex("style-src 'sha256-[A-Za-z0-9+/]{43}='"));
    EXPECT_THAT(page, Not(testing::ContainsRegex("@[A-Z_]+@"))); // a mark left in the text
}

std::vector<std::string> texts_of(const crv_view &view) {
    std::vector<std::string> texts;
    for (const crv_curve_label &label : crv_LabelCurves(view)) texts.push_back(label.text);
    return texts;
}

std::vector<size_t> series_of(const crv_view &view) {
    std::vector<size_t> series;
    for (const crv_curve_label &label : crv_LabelCurves(view)) series.push_back(label.series);
    return series;
}

TEST_F(PageFile, LabelsCurvesDistinctly) {
    crv_column *x = add_column(0, {0});
    add_file("d/a.req", x,
             {add_column(1, {1}, "F"), add_column(2, {1}, "F"), add_column(3, {1}, "G")});
    add_file("e\\b.req", x, {add_column(4, {1}, "F"), add_column(5, {1}, "H")});
    EXPECT_THAT(texts_of(view_), ElementsAre("F (a.req)", "F (a.req)_2", "G", "F (b.req)", "H"));
    EXPECT_THAT(series_of(view_), ElementsAre(0, 1, 2, 0, 3));
}

TEST_F(PageFile, NumbersLabelsOfFilesWithEqualNames) {
    crv_column *x = add_column(0, {0});
    add_file("d/a.req", x, {add_column(1, {1}, "F")});
    add_file("e/a.req", x, {add_column(2, {1}, "F")});
    EXPECT_THAT(texts_of(view_), ElementsAre("F (a.req)", "F (a.req)_2"));
    EXPECT_THAT(series_of(view_), ElementsAre(0, 0));
}

} // namespace
