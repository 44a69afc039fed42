// fuzz/chart_target.cpp - a chart file has its sections in order and its points in its frame,
// whatever the texts and the values are.
//
// Input: number of curves, ranges of X and Y and debug level on a line, with ' ' between them; then
// texts that end with the character 1: two titles, subtitle, four stories, names of the columns;
// then numbers, given to the columns in turn.
#include "harness.h"

#include "postscript/chart_file.h"
#include "readers/column_builder.h"
#include "records/chart.h"
#include "records/column.h"
#include "records/settings.h"
#include "text/fixed_text.h"

#include <algorithm>
#include <cmath>

static constexpr int left = 135, bottom = 110, width = 600, height = 400;
static constexpr const char *user_file = "%% user\nnewpath (text) show\n";

namespace {

struct chart_input {
    int curves;
    double x[2];
    double y[2];
    int debug_level;
    std::vector<std::string> texts; // of the chart
    std::vector<std::string> names; // of the columns
    std::vector<std::vector<double>> values;
};

} // namespace

static chart_input take_input(std::string_view rest) {
    chart_input input;
    input.curves = static_cast<int>(static_cast<unsigned>(take_integer(&rest, ' ')) % CRV_MAXCOLS);
    for (double(*range)[2] : {&input.x, &input.y})
        for (double &bound : *range) bound = take_number(&rest, ' ');
    input.debug_level = take_integer(&rest, '\n');
    for (int k = 0; k < 7; ++k) input.texts.push_back(take_text(&rest, '\1'));
    if (!input.texts[3].empty()) input.texts[3] = "user.ps";
    for (int k = 0; k <= input.curves; ++k) input.names.push_back(take_text(&rest, '\1'));
    input.values.resize(input.names.size());
    for (size_t k = 0; !rest.empty(); ++k)
        input.values[k % input.values.size()].push_back(take_number(&rest, ' '));
    return input;
}

static crv_chart *fill_records(const chart_input &input) {
    for (size_t k = 0; k < input.names.size(); ++k) {
        crv_column *column = crv_AllocColumn(static_cast<int>(k));
        utl_CopyText(column->colname, input.names[k]);
        for (const double value : input.values[k]) crv_AppendValue(column, value);
    }
    crv_chart *chart = crv_AllocCht(0);
    utl_CopyText(chart->major_t[0], input.texts[0]);
    utl_CopyText(chart->major_t[1], input.texts[1]);
    utl_CopyText(chart->minor_t[0], input.texts[2]);
    for (size_t k = 0; k < 4; ++k) utl_CopyText(chart->story_ts[k], input.texts[3 + k]);
    chart->num_curves = static_cast<uint16_t>(input.curves);
    std::copy_n(input.x, 2, chart->xminmax);
    std::copy_n(input.y, 2, chart->yminmax);
    return chart;
}

static void write_chart(const chart_input &input) {
    crv_chart *chart = fill_records(input);
    crv_DBG = input.debug_level;
    crv_settings.print_flag = 1;
    FILE *stream = crv_PlotHead("crv.ps", chart);
    crv_PlotTxt(stream, left, bottom, width, height, 10, chart);
    if (chart->story_ts[0][0] != '\0') crv_PlotAppen(stream, chart->story_ts[0], "crv.ps");
    crv_PlotData(stream, left, bottom, width, height, chart);
    crv_PlotGrid(stream, left, bottom, width, height);
    crv_PlotEnd("crv.ps", stream);
}

static bool is_zero_range(const double (&range)[2]) {
    return std::fabs(range[1] - range[0]) <= 0.0005;
}

static void check_sections(const chart_input &input, const std::string &text) {
    const bool appends = !input.texts[3].empty();
    const bool draws = !is_zero_range(input.x) && !is_zero_range(input.y);
    size_t at = 0;
    const auto next = [&](const char *line, bool there) {
        if (!there) return;
        at = text.find(line, at);
        require(at != text.npos, "the sections of a chart file stand in their order");
    };
    next("%!   ", true);
    next("\n%% --- preamble and subroutines --- (crv_ module [[41]]) --- \n", true);
    next("\n%% --- Begin setting Legend information - (crv_ module [[47]]) ---\n", true);
    next("\n%% --- Begin of user supplied ps -- (crv_ module [[46]]) --- \n", appends);
    next(user_file, appends);
    next("%% --- End of user supplied ps ---- (crv_ module [[46]]) --- \n", appends);
    next("\n%% --- Begin drawing chart data  -- (crv_ module [[44]]) ---\n", draws);
    for (int k = 0; draws && k < std::min(input.curves, 7); ++k)
        next("\n%% --- Begin drawing chart points - (crv_ module [[44]]) ---\n", true);
    next("\n%%  --- Begin drawing Major ticks  \n", true);
    next("\n%%  --- Begin writing  Trailer (crv module [[45]])\n", true);
    require(text.ends_with("showpage \n"), "a chart file ends with its page");
}

// The user's texts balance, and cannot be taken for anything else.
static bool is_plain(const chart_input &input) {
    const auto plain = [](const std::string &text) {
        return text.find_first_of("()[]{}%\\\n\r") == text.npos;
    };
    return std::all_of(input.texts.begin(), input.texts.end(), plain) &&
           std::all_of(input.names.begin(), input.names.end(), plain);
}

static void check_balance(const std::string &text) {
    int parens = 0, braces = 0, loops = 0;
    for (const char c : text) {
        parens += (c == '(') - (c == ')');
        braces += (c == '{') - (c == '}');
        require(parens >= 0 && braces >= 0, "nothing is closed that was not opened");
    }
    for (size_t at = 0; (at = text.find("} for\n", at)) != text.npos; ++at) ++loops;
    require(parens == 0 && braces == 0, "all that was opened is closed");
    require(loops == 4, "the grid is drawn by four loops");
}

static size_t points_inside(const chart_input &input, size_t curve) {
    // The last two of seven curves have no columns of their own.
    const std::vector<double> &x = input.values[0];
    const std::vector<double> &y = input.values[curve <= 5 ? curve : 0];
    size_t count = 0;
    for (size_t k = 0; k < std::min(x.size(), y.size()); ++k)
        count +=
            input.x[0] <= x[k] && x[k] <= input.x[1] && input.y[0] <= y[k] && y[k] <= input.y[1];
    return count;
}

// Follows the path of one curve, up to its end, and returns its points.
static size_t check_path(const std::string &text, bool finite) {
    size_t points = 0, in_stroke = 0;
    for (size_t at = 0; at < text.size();) {
        unsigned x = 0, y = 0;
        int length = 0;
        char name[8] = {};
        if (sscanf(text.c_str() + at, " %u %u %7s %n", &x, &y, name, &length) != 3) {
            require(text.compare(at, 8, "stroke \n") == 0, "a path is made of points and strokes");
            in_stroke = 0;
            at += 8;
            continue;
        }
        const bool begins = std::string(name) == "moveto";
        require(begins || std::string(name) == "lineto", "a path is made of moves and lines");
        require(begins == (in_stroke == 0), "a stroke begins with a move");
        require(++in_stroke <= 901, "a stroke has at most 900 points and the one it begins with");
        if (!begins || points == 0) ++points;
        if (finite) {
            require(x >= left && x <= left + width, "points lie in the frame");
            require(y >= bottom && y <= bottom + height, "points lie in the frame");
        }
        at += static_cast<size_t>(length);
    }
    return points;
}

static void check_curves(const chart_input &input, const std::string &text) {
    static const std::string begin =
        "%% --- Begin drawing chart points - (crv_ module [[44]]) ---\n";
    static const std::string end =
        "crv_line_0\n%% --- End Drawing chart Data  ---- (crv_ module [[44]]) ---\n";
    const bool finite =
        std::isfinite(input.x[1] - input.x[0]) && std::isfinite(input.y[1] - input.y[0]);
    size_t curve = 0;
    for (size_t at = text.find(begin); at != text.npos; at = text.find(begin, at)) {
        at += begin.size();
        const size_t path_end = text.find(end, at);
        require(path_end != text.npos, "a curve has an end");
        require(check_path(text.substr(at, path_end - at), finite) == points_inside(input, ++curve),
                "the points inside the ranges are drawn, and no others");
    }
}

// The first read gives the whole file, and the second one its end.
static void check_bad_read(const chart_input &input,
                           const std::map<std::string, std::string> &files) {
    if (input.texts[3].empty()) return;
    sandbox box;
    box.bad_read = 2;
    const outcome result = run_sandboxed(box, files, [&] { write_chart(input); });
    require(!result.quit && result.commands.size() == 1, "the chart is written and printed");
    require(result.err.find("    _46-e-fread: Input/output error\n") != result.err.npos,
            "a pasted file that cannot be read to its end is reported");
    require(result.files.at("crv.ps").find(user_file) != std::string::npos,
            "what was read is pasted");
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const chart_input input = take_input({reinterpret_cast<const char *>(data), size});
    const std::map<std::string, std::string> files = {{"user.ps", user_file}};
    const outcome result = run_sandboxed({}, files, [&] { write_chart(input); });
    require(!result.quit, "a chart is written to its end");
    require(result.commands == std::vector<std::string>{"lpr  crv.ps"}, "and printed");
    const std::string &text = result.files.at("crv.ps");
    check_sections(input, text);
    if (is_plain(input)) {
        check_balance(text);
        check_curves(input, text);
        require(result.err.find("-e-bal") == result.err.npos,
                "texts that balance are not complained of");
    }
    require(run_sandboxed({}, files, [&] { write_chart(input); }) == result,
            "a second chart is the same");
    check_bad_read(input, files);
    return 0;
}
