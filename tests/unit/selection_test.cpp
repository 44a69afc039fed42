// unit/selection_test.cpp - parsing and ordering of the request selection.
#include "readers/selection.h"

#include "support.h"

namespace {

struct pair {
    uint32_t req, item;
    int32_t block;
    bool operator==(const pair &) const = default;
};

void PrintTo(const pair &p, std::ostream *out) {
    *out << p.req << ":" << p.item << " block " << p.block;
}

std::vector<pair> parsed(const char *text) {
    const crv_selection selection = crv_ParseSel(text, 0);
    std::vector<pair> pairs;
    for (const crv_reqsel &entry : crv_Entries(selection))
        pairs.push_back({entry.req, entry.item, entry.block});
    EXPECT_EQ(selection.num_pairs, static_cast<int>(pairs.size()));
    return pairs;
}

using pairs = std::vector<pair>;

TEST(Selection, FindsTimeOnly) {
    EXPECT_EQ(parsed("0,38:3,1:1"), (pairs{{0, 0, 0}, {38, 3, -1}, {1, 1, -1}}));
}

TEST(Selection, ItemOfTimeIsZero) { EXPECT_EQ(parsed("0:5"), (pairs{{0, 0, 0}})); }

TEST(Selection, ItemDefaultsToOne) { EXPECT_EQ(parsed("1052"), (pairs{{1052, 1, -1}})); }

TEST(Selection, ARequestMayBeNamedTwice) {
    EXPECT_EQ(parsed("1052:1,1052:3"), (pairs{{1052, 1, -1}, {1052, 3, -1}}));
}

TEST(Selection, NonNumericTextIsTime) { EXPECT_EQ(parsed("R"), (pairs{{0, 0, 0}})); }

TEST(Selection, OnlyTheFirstColonSeparates) { EXPECT_EQ(parsed("12:3:4"), (pairs{{12, 3, -1}})); }

TEST(Selection, ASemicolonDoesNotSeparate) { EXPECT_EQ(parsed("1052;3"), (pairs{{1052, 1, -1}})); }

TEST(Selection, AnItemWithoutDigitsIsZero) {
    EXPECT_EQ(parsed("1052:"), (pairs{{1052, 0, -1}}));
    EXPECT_EQ(parsed("1052:x"), (pairs{{1052, 0, -1}}));
    EXPECT_EQ(parsed("1052: 5"), (pairs{{1052, 0, -1}, {5, 1, -1}}));
}

TEST(Selection, NegativeIdentifierBecomesLarge) {
    EXPECT_EQ(parsed("-5:1"), (pairs{{4294967291U, 1, -1}}));
}

TEST(Selection, RepeatedSeparatorsMakeNoPairs) {
    EXPECT_EQ(parsed("1052:3, ,1090:2"), (pairs{{1052, 3, -1}, {1090, 2, -1}}));
    EXPECT_EQ(parsed(" ,, "), pairs{});
    EXPECT_EQ(parsed(""), pairs{});
    EXPECT_EQ(parsed(nullptr), pairs{});
}

TEST(Selection, TabIsPartOfToken) {
    EXPECT_EQ(parsed("\t5:2"), (pairs{{5, 2, -1}}));
    EXPECT_EQ(parsed("5\t6"), (pairs{{5, 1, -1}}));
}

TEST(Selection, ExcessPairsAreCountedNotStored) {
    std::string text = "0";
    for (int k = 1; k < 100000; ++k) text += ",1:1";
    const crv_selection selection = crv_ParseSel(text.c_str(), 0);
    EXPECT_EQ(selection.count, 31U);
    EXPECT_EQ(selection.num_pairs, 100000);
    EXPECT_EQ(crv_ParseSel(text.c_str(), 29).count, 2U);
    EXPECT_EQ(crv_ParseSel(text.c_str(), CRV_MAXCOLS).count, 0U);
}

TEST(Selection, OrderByBlockIsStable) {
    crv_selection selection = crv_ParseSel("1,2,3,4,5", 0);
    const int blocks[5] = {3, 0, 3, 1, 0};
    for (int k = 0; k < 5; ++k) selection.table[k].block = blocks[k];
    crv_SortByBlock(&selection);
    EXPECT_THAT(std::vector<uint8_t>(selection.order, selection.order + 5),
                testing::ElementsAre(1, 4, 3, 0, 2));
}

} // namespace
