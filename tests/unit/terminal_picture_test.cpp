// unit/terminal_picture_test.cpp - charts as text.
#include "terminal/picture.h"

#include "records/range.h"
#include "support.h"
#include "text/text_columns.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>

namespace {

// A curve by its points.
struct points {
    std::vector<double> x, y;
    const char *label = "y";
};

class terminal_picture : public fresh_run {
  protected:
    // Adds a file with these curves, which have the first one's X.
    void add_file(const char *path, const std::vector<points> &curves) {
        const int file = static_cast<int>(view.files.size());
        const crv_column *x = add_column(0, curves[0].x, "x");
        view.files.push_back({path, x, true, {}});
        for (const points &curve : curves) {
            const crv_column *y = add_column(1, curve.y, curve.label);
            view.files.back().columns.push_back(y);
            view.curves.push_back({x, y, file});
        }
    }

    std::string draw(int columns, int rows, bool braille, bool colors = false) {
        return crv_DrawPicture(view, {columns, rows, braille, colors});
    }

    // The plot area in 16 columns and 3 rows, one line each, without the dots of the grid.
    std::vector<std::string> draw_plot(bool braille, bool colors = false) {
        std::istringstream picture(draw(20, 8, braille, colors));
        std::vector<std::string> lines;
        for (std::string line; std::getline(picture, line);) lines.push_back(line);
        lines.resize(4);
        std::vector<std::string> plot;
        const std::string border = braille ? "\u2502" : "|";
        for (size_t row = 1; row < 4; ++row) {
            const std::string inner = lines[row].substr(2 + (braille ? 3 : 1));
            plot.push_back(inner.substr(0, inner.size() - border.size()));
            const std::string grid = braille ? "\u00B7" : ".";
            const size_t dot = plot.back().find(grid);
            if (dot != std::string::npos) plot.back().replace(dot, grid.size(), " ");
        }
        return plot;
    }

    void set_ranges(double x_low, double x_high, double y_low, double y_high) {
        crv_SetRange(view.x_range, x_low, x_high);
        crv_SetRange(view.y_range, y_low, y_high);
    }

    crv_view view;
};

using rows = std::vector<std::string>;

TEST_F(terminal_picture, AsciiPictureHasAllParts) {
    add_file("a.req", {{{0, 1}, {0, 1}, "Force (N)"}});
    view.title = "Title";
    view.subtitle = "run";
    EXPECT_EQ(draw(20, 10, false), "       Title\n"
                                   "        run\n"
                                   "  +----------------+\n"
                                   "1 +        .   ****|\n"
                                   "  |    ********    |\n"
                                   "0 +****    .       |\n"
                                   "  ++-------+------++\n"
                                   "  0.0     0.5    1.0\n"
                                   "          x\n"
                                   "*** Force (N)\n");
}

TEST_F(terminal_picture, BraillePictureHasAllParts) {
    add_file("a.req", {{{0, 2}, {1, 1}, "Force (N)"}});
    view.title = "Title";
    crv_SetRange(view.y_range, 0, 2);
    EXPECT_EQ(draw(20, 9, true), "       Title\n"
                                 "  ┌────────────────┐\n"
                                 "2 ┤        ·       │\n"
                                 "  │⠤⠤⠤⠤⠤⠤⠤⠤⠤⠤⠤⠤⠤⠤⠤⠤│\n"
                                 "0 ┤        ·       │\n"
                                 "  └┬───────┬──────┬┘\n"
                                 "   0       1      2\n"
                                 "          x\n"
                                 "⠤⠤⠤⠤⠤⠤ Force (N)\n");
}

TEST_F(terminal_picture, VerticalLineHasOneColumn) {
    add_file("a.req", {{{1, 1}, {0, 2}}});
    set_ranges(0, 2, 0, 2);
    EXPECT_EQ(draw_plot(true), (rows(3, "        ⡇       ")));
}

TEST_F(terminal_picture, SinglePointIsACross) {
    add_file("a.req", {{{1}, {1}}});
    set_ranges(0, 2, 0, 2);
    EXPECT_EQ(draw_plot(true),
              (rows{std::string(16, ' '), "       ⠠⡦       ", std::string(16, ' ')}));
    EXPECT_EQ(draw_plot(false),
              (rows{std::string(16, ' '), "        *       ", std::string(16, ' ')}));
}

TEST_F(terminal_picture, PointAtCornerIsVisible) {
    add_file("a.req", {{{0, NAN, 2}, {0, NAN, 2}}});
    set_ranges(0, 2, 0, 2);
    EXPECT_EQ(draw_plot(true),
              (rows{"               ⠙", std::string(16, ' '), "⣄               "}));
}

TEST_F(terminal_picture, ValuesThatAreNotFiniteInterruptCurve) {
    for (const double gap : std::vector<double>{NAN, INFINITY, -INFINITY}) {
        view = {};
        add_file("a.req", {{{0, 5, 7, 9, 15}, {1, 1, gap, 1, 1}}});
        set_ranges(0, 15, 0, 2);
        EXPECT_EQ(draw_plot(false)[1], "******   *******") << gap;
        view = {};
        add_file("a.req", {{{0, 5, gap, 9, 15}, {1, 1, 1, 1, 1}}});
        set_ranges(0, 15, 0, 2);
        EXPECT_EQ(draw_plot(false)[1], "******   *******") << gap;
    }
}

TEST_F(terminal_picture, LinesAreClippedAtTheBorder) {
    const rows diagonal = {"            ****", "    ********    ", "****            "};
    add_file("a.req", {{{-15, 30}, {-2, 4}}});
    set_ranges(0, 15, 0, 2);
    EXPECT_EQ(draw_plot(false), diagonal);
    view.curves.clear();
    add_file("b.req", {{{-15e9, 30e9}, {-2e9, 4e9}}});
    view.curves[0].file = 0;
    EXPECT_EQ(draw_plot(false), diagonal);
}

TEST_F(terminal_picture, PictureWithoutPointsSaysSo) {
    add_file("a.req", {{{0, 15, 15, 30, 30, -5}, {3, 3, 2.5, 2.5, -1, -1}}});
    set_ranges(0, 15, 0, 2);
    const std::string blank(16, ' ');
    EXPECT_EQ(draw_plot(false), (rows{blank, " no points here ", blank}));
}

TEST_F(terminal_picture, LoopsAreDrawnAsTheyAre) {
    add_file("a.req", {{{0, 15, 15, 0, 0}, {0, 0, 2, 2, 0}}});
    EXPECT_EQ(draw_plot(false),
              (rows{std::string(16, '*'), "*              *", std::string(16, '*')}));
}

TEST_F(terminal_picture, OnePointOfManyIsVisible) {
    points curve = {std::vector<double>(100'001), std::vector<double>(100'001, 1)};
    for (size_t k = 0; k < curve.x.size(); ++k) curve.x[k] = static_cast<double>(k);
    curve.y[80'000] = 2;
    curve.y[80'001] = 0;
    add_file("a.req", {curve});
    EXPECT_EQ(draw_plot(false),
              (rows{"            *   ", std::string(16, '*'), "            *   "}));
}

TEST_F(terminal_picture, ShorterColumnEndsCurve) {
    add_file("a.req", {{{0, 5, 10, 15}, {1, 1}}});
    set_ranges(0, 15, 0, 2);
    EXPECT_EQ(draw_plot(false)[1], "******          ");
}

TEST_F(terminal_picture, NumbersOutsideTheRangeOfFloatsAreDrawn) {
    add_file("a.req", {{{0, 1}, {-1.7e308, 1.7e308}}});
    const std::string picture = draw(30, 10, false);
    EXPECT_THAT(picture, testing::HasSubstr(" 1e308 +"));
    EXPECT_THAT(picture, testing::HasSubstr("-1e308 +"));
}

constexpr const char *blue = "\033[94m";
constexpr const char *red = "\033[31m";
constexpr const char *end_of_color = "\033[0m";

std::string repeated(const std::string &text, int count) {
    std::string result;
    while (count-- > 0) result += text;
    return result;
}

TEST_F(terminal_picture, EachSeriesHasAColor) {
    add_file("a.req", {{{0, 15}, {2, 2}, "high"}, {{0, 15}, {0, 0}, "low"}});
    const std::string picture = draw(30, 8, true, true);
    const std::string high = blue + repeated("\u2809", 26) + end_of_color;
    EXPECT_THAT(picture, testing::HasSubstr("2 \u2524" + high));
    EXPECT_THAT(picture,
                testing::HasSubstr("0 \u2524" + std::string(red) + repeated("\u28C0", 26)));
    EXPECT_THAT(picture,
                testing::HasSubstr(blue + repeated("\u2824", 6) + end_of_color + " high   " + red +
                                   repeated("\u2824", 6) + end_of_color + " low\n"));
}

TEST_F(terminal_picture, SeriesOfAllFilesHaveTheSameColor) {
    add_file("a.req", {{{0, 15}, {2, 2}, "high"}});
    add_file("b.req", {{{0, 15}, {0, 0}, "low"}});
    const std::string braille = draw(40, 10, true, true);
    const std::string dashes = "\u2824\u2824\u2824 \u2824\u2824";
    EXPECT_THAT(braille, testing::HasSubstr("a.req   " + (blue + repeated("\u2824", 6))));
    EXPECT_THAT(braille, testing::HasSubstr("b.req   " + (blue + dashes)));
    EXPECT_THAT(braille,
                testing::HasSubstr(blue + repeated("\u28C0", 3) + end_of_color + " " + blue));
    const std::string ascii = draw(40, 10, false, true);
    EXPECT_THAT(ascii, testing::HasSubstr("a.req   " + (blue + repeated("*", 3))));
    EXPECT_THAT(ascii, testing::HasSubstr("b.req   " + (blue + repeated("+", 3))));
}

TEST_F(terminal_picture, FourFilesHaveDashPatternsInPlaceOfLetters) {
    for (const char *path : {"a.req", "b.req", "c.req", "d.req"})
        add_file(path, {{{0, 15}, {2, 2}, "high"}});
    EXPECT_THAT(draw(40, 30, true, true),
                testing::HasSubstr("d.req   " + (std::string(blue) + "\u2824\u2824\u2824\u2824 ")));
    add_file("e.req", {{{0, 15}, {2, 2}, "high"}});
    EXPECT_THAT(draw(40, 30, true, true),
                testing::HasSubstr("d.req   " + (std::string(blue) + "D")));
}

TEST_F(terminal_picture, CurvesWithoutColorsHaveLetters) {
    add_file("a.req", {{{0, 15}, {2, 2}, "high"}, {{0, 15}, {0, 0}, "low"}});
    EXPECT_EQ(draw(30, 8, true), "  ┌──────────────────────────┐\n"
                                 "2 ┤⠉⠉⠉⠉⠉⠉A⠉⠉⠉⠉⠉⠉⠉⠉⠉⠉⠉⠉⠉⠉⠉⠉⠉⠉⠉│\n"
                                 "  │                          │\n"
                                 "0 ┤⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀B⣀⣀⣀⣀⣀⣀│\n"
                                 "  └┬───────┬────────┬───────┬┘\n"
                                 "   0       5       10      15\n"
                                 "               x\n"
                                 "A⠤⠤⠤⠤⠤ high   B⠤⠤⠤⠤⠤ low\n");
}

// The letter of the first of two curves belongs at a quarter of the width, or up to half of the
// width beside it.
TEST_F(terminal_picture, LetterStandsWhereItsCurveIs) {
    set_ranges(0, 31, 0, 2);
    add_file("a.req", {{{24, 24}, {0, 2}, "up"}});
    add_file("b.req", {{{0, 3}, {1, 1}, "level"}});
    EXPECT_THAT(draw_plot(true), testing::Contains(testing::HasSubstr("A")));
}

TEST_F(terminal_picture, CurvesInAsciiHaveCharacters) {
    add_file("a.req", {{{0, 15}, {2, 2}, "high"}, {{0, 15}, {0, 0}, "low"}});
    add_file("b.req", {{{0, 15}, {1, 1}, "mean"}});
    EXPECT_EQ(draw(30, 11, false), "  +--------------------------+\n"
                                   "2 +**************************|\n"
                                   "  |                          |\n"
                                   "1 +xxxxxxxxxxxxxxxxxxxxxxxxxx|\n"
                                   "  |                          |\n"
                                   "0 +++++++++++++++++++++++++++|\n"
                                   "  ++-------+--------+-------++\n"
                                   "   0       5       10      15\n"
                                   "               x\n"
                                   "a.req   *** high   +++ low\n"
                                   "b.req   xxx mean\n");
}

TEST_F(terminal_picture, MoreSeriesThanColorsHaveLetters) {
    std::vector<points> curves;
    for (int k = 0; k < 7; ++k) curves.push_back({{0, 15}, {1.0 * k, 1.0 * k}, "y"});
    add_file("a.req", curves);
    const std::string picture = draw(80, 24, true, true);
    for (const char letter : std::string("ABCDEFG"))
        EXPECT_THAT(picture, testing::HasSubstr("m" + std::string(1, letter) + "\u2824")) << letter;
    EXPECT_THAT(picture, testing::Not(testing::HasSubstr("H\u2824")));
}

TEST_F(terminal_picture, LegendCountsCurvesThatDoNotFit) {
    std::vector<points> curves;
    for (int k = 0; k < 12; ++k) curves.push_back({{0, 15}, {1.0 * k, 2}, "Displ 38, Z"});
    add_file("a.req", curves);
    EXPECT_THAT(draw(60, 12, false),
                testing::HasSubstr("\n*** Displ 38, Z   +++ Displ 38, Z   xxx Displ 38, Z\n"));
    EXPECT_THAT(draw(60, 12, false),
                testing::EndsWith("\n%%% Displ 38, Z   &&& Displ 38, Z  +4 more\n"));
}

TEST_F(terminal_picture, EntryOfTheWholeWidthLeavesTheCountItsLine) {
    const std::string label(31, 'a'); // the longest
    std::vector<points> curves;
    for (int k = 0; k < 12; ++k) curves.push_back({{0, 15}, {1.0 * k, 2}, label.c_str()});
    add_file("a.req", curves);
    EXPECT_THAT(draw(35, 12, false), testing::HasSubstr("\n*** " + label + "\n"));
    std::istringstream picture(draw(35, 12, false));
    std::string line, last;
    for (; std::getline(picture, line); last = line) EXPECT_LE(line.size(), 35U);
    EXPECT_EQ(last, "  +10");
}

TEST_F(terminal_picture, LabelIsCutToTheWidthOfItsEntry) {
    const std::string label(31, 'a');
    add_file("a.req", {{{0, 15}, {2, 2}, label.c_str()}});
    EXPECT_THAT(draw(30, 8, false), testing::EndsWith("\n*** " + std::string(23, 'a') + "...\n"));
}

TEST_F(terminal_picture, TextsAreCleanedAndCut) {
    add_file("a.req", {{{0, 1}, {0, 1}, "\xFF\033[2J \u8ECA"}});
    view.title = "  a title that is longer than twenty \u8ECA ";
    const std::string braille = draw(20, 8, true);
    EXPECT_THAT(braille, testing::StartsWith("a title that is lon\u2026\n"));
    EXPECT_THAT(braille, testing::EndsWith("\u2824 \uFFFD\uFFFD[2J \u8ECA\n"));
    const std::string ascii = draw(20, 8, false);
    EXPECT_THAT(ascii, testing::StartsWith("a title that is l...\n"));
    EXPECT_THAT(ascii, testing::EndsWith("*** ??[2J ?\n"));
}

TEST_F(terminal_picture, TitleIsCenteredByItsColumns) {
    add_file("a.req", {{{0, 1}, {0, 1}}});
    view.title = "\u8ECA\u4F53";
    EXPECT_THAT(draw(20, 8, true), testing::StartsWith("        \u8ECA\u4F53\n"));
}

TEST_F(terminal_picture, SmallestPictureHasPlotAndLegend) {
    add_file("a.req", {{{0, 15}, {0, 2}, "Force (N)"}});
    view.title = "Title";
    EXPECT_EQ(draw(20, 6, false), "2 +          . ****|\n"
                                  "  |    ********    |\n"
                                  "0 +****      .     |\n"
                                  "  ++---------+-----+\n"
                                  "   0        10\n"
                                  "*** Force (N)\n");
}

TEST_F(terminal_picture, SmallerPictureIsEmpty) {
    add_file("a.req", {{{0, 15}, {0, 2}}});
    EXPECT_EQ(draw(19, 6, false), "");
    EXPECT_EQ(draw(20, 5, true), "");
    EXPECT_EQ(draw(0, 0, true), "");
}

TEST_F(terminal_picture, LongNumbersAreLeftOutOfANarrowPicture) {
    add_file("a.req", {{{0, 15}, {1e9, 1e9 + 1e-3}}});
    EXPECT_THAT(draw(60, 12, false), testing::HasSubstr("\n1000000000.0000 +"));
    EXPECT_THAT(draw(30, 12, false), testing::StartsWith("+----------------------------+\n|"));
}

TEST_F(terminal_picture, HugeFormatIsLimited) {
    add_file("a.req", {{{0, 15}, {0, 2}}});
    const std::string picture = draw(1'000'000, 1'000'000, false);
    EXPECT_EQ(std::count(picture.begin(), picture.end(), '\n'), 1000);
}

// Lines of the picture fit, and the frame ends in the last column.
void expect_shape(const std::string &picture, const crv_terminal_format &format) {
    std::istringstream stream(picture);
    int lines = 0;
    int framed = 0;
    for (std::string line; std::getline(stream, line); ++lines) {
        EXPECT_LE(utl_CountColumns(line), format.columns) << line;
        for (const char *end : {"\u2502", "\u2510", "\u2518", "|", "+"})
            if (line.ends_with(end) && utl_CountColumns(line) == format.columns) {
                ++framed;
                break;
            }
    }
    EXPECT_LE(lines, format.rows);
    EXPECT_GE(framed, 4);
}

TEST_F(terminal_picture, AnyPictureFitsItsFormat) {
    std::mt19937 random(1);
    std::vector<double> values = {0, 1, -1, 1e300, -1e300, 1e-300, NAN, INFINITY, 9.81, 1e6};
    for (int round = 0; round < 300; ++round) {
        view = {};
        const auto pick = [&](int low, int high) {
            return std::uniform_int_distribution(low, high)(random);
        };
        for (int file = 0; file < pick(1, 3); ++file) {
            std::vector<points> curves(static_cast<size_t>(pick(1, 5)));
            for (points &curve : curves)
                for (int k = pick(0, 20); k > 0; --k) {
                    curve.x.push_back(values[static_cast<size_t>(pick(0, 9))]);
                    curve.y.push_back(pick(0, 1) ? pick(-9, 9) * 0.3
                                                 : values[static_cast<size_t>(pick(0, 9))]);
                }
            add_file("\u8ECA.req", curves);
        }
        view.title = repeated("\u8ECA", pick(0, 60));
        const crv_terminal_format format = {pick(20, 200), pick(6, 60), pick(0, 1) == 1, false};
        expect_shape(crv_DrawPicture(view, format), format);
    }
}

} // namespace
