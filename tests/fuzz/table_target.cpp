// fuzz/table_target.cpp - a table is, byte for byte, what printf would have written.
//
// Input: layout, columnize flags and number of columns on a line; title and names of the columns,
// one a line; then numbers, given to the columns in turn.
#include "harness.h"

#include "readers/column_builder.h"
#include "records/column.h"
#include "records/settings.h"
#include "stats/column_stats.h"
#include "stats/dat_file.h"
#include "text/fixed_text.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace {

struct table_input {
    uint16_t layout;
    uint32_t flags;
    size_t columns;
    std::string title;
    std::vector<std::string> names;
    std::vector<std::vector<double>> values;
};

} // namespace

static table_input take_input(std::string_view rest) {
    table_input input;
    input.layout = static_cast<uint16_t>(static_cast<unsigned>(take_integer(&rest, ' ')) % 6);
    input.flags = static_cast<uint32_t>(take_integer(&rest, ' ')) & 3;
    input.columns = 1 + static_cast<unsigned>(take_integer(&rest, '\n')) % CRV_MAXCOLS;
    input.title = take_text(&rest, '\n');
    for (size_t k = 0; k < input.columns; ++k) input.names.push_back(take_text(&rest, '\n'));
    input.values.resize(input.columns);
    for (size_t k = 0; !rest.empty(); ++k) {
        const std::string text = take_text(&rest, ' ');
        if (text != "-") // "-" skips a column
            input.values[k % input.columns].push_back(atof(text.c_str()));
    }
    return input;
}

static void fill_columns(const table_input &input) {
    for (size_t k = 0; k < input.columns; ++k) {
        crv_column *column = crv_AllocColumn(static_cast<int>(k));
        utl_CopyText(column->coltitle, input.title);
        utl_CopyText(column->colname, input.names[k]);
        uint32_t step = 0;
        for (const double value : input.values[k]) {
            ++step;
            crv_UpdateMinMax(column, value, step, value, value);
            crv_UpdateFirstLast(column, value, step * 1000, value);
            crv_UpdateAbsMinMax(column, value, step, value);
            crv_AccumulateSum(column, value);
            crv_AppendValue(column, value);
        }
        column->mean = crv_MeanOf(column->sum, 7);
    }
}

[[gnu::format(printf, 2, 3)]] static void print(std::string *to, const char *format, ...) {
    char text[512];
    va_list values;
    va_start(values, format);
    vsnprintf(text, sizeof text, format, values);
    va_end(values);
    *to += text;
}

// One row of the table by printf: a label, or a cell for each column.
template <typename cell> static void print_row(std::string *to, size_t columns, cell write) {
    for (size_t k = 0; k < columns; ++k) write(crv_columns[k]);
    *to += '\n';
}

static void print_label(std::string *to, size_t columns, const char *label) {
    print_row(to, columns, [&](const crv_column *) { print(to, "%s", label); });
}

static void print_value(std::string *to, size_t columns, double crv_column::*value) {
    print_row(to, columns, [&](const crv_column *column) { print(to, "%11.4e ", column->*value); });
}

static void print_step(std::string *to, size_t columns, uint32_t crv_column::*step) {
    print_row(to, columns, [&](const crv_column *column) { print(to, "s=%9d ", column->*step); });
}

static void print_time(std::string *to, size_t columns, double crv_column::*time) {
    print_row(to, columns, [&](const crv_column *column) { print(to, "t=%9.2e ", column->*time); });
}

static void print_extreme(std::string *to, size_t columns, double crv_column::*value,
                          uint32_t crv_column::*step, double crv_column::*time, const char *label) {
    print_value(to, columns, value);
    if (step) print_step(to, columns, step);
    print_time(to, columns, time);
    print_label(to, columns, label);
}

static void print_statistics(std::string *to, size_t columns, bool absolute, bool all) {
    print_label(to, columns, "----------- ");
    print_row(to, columns,
              [&](const crv_column *column) { print(to, "%-11.11s ", column->colname); });
    print_extreme(to, columns, &crv_column::min, all ? &crv_column::min_step : nullptr,
                  &crv_column::var1, "Minimum ^^^ ");
    print_extreme(to, columns, &crv_column::max, all ? &crv_column::max_step : nullptr,
                  &crv_column::var2, "Maximum ^^^ ");
    if (absolute || all) {
        print_label(to, columns, "----------- ");
        print_extreme(to, columns, &crv_column::absmin, &crv_column::absmin_step,
                      &crv_column::absmin_time, "ABSMIN  ^^^ ");
        print_extreme(to, columns, &crv_column::absmax, &crv_column::absmax_step,
                      &crv_column::absmax_time, "ABSMAX  ^^^ ");
    }
    if (all) {
        print_label(to, columns, "----------- ");
        print_extreme(to, columns, &crv_column::begin_val, &crv_column::begin_step,
                      &crv_column::begin_time, "BEGINVal^^^ ");
        print_extreme(to, columns, &crv_column::end_val, &crv_column::end_step,
                      &crv_column::end_time, "ENDVal  ^^^ ");
    }
    print_label(to, columns, "----------- ");
    print_row(to, columns,
              [&](const crv_column *column) { print(to, "%11.4e ", column->max - column->min); });
    print_label(to, columns, "Range   ^^^ ");
    print_value(to, columns, &crv_column::mean);
    print_label(to, columns, "Mean    ^^^ ");
    print_label(to, columns, "=========== ");
}

static std::string table_by_printf(const table_input &input) {
    const bool has_title = input.layout >= 1 && input.layout <= 3;
    const bool has_statistics = input.layout == 2 || input.layout == 3;
    const bool has_values = input.layout == 1 || input.layout == 3 || input.layout == 4;
    std::string text;
    if (has_title) {
        const std::string title = crv_columns[0]->coltitle;
        print(&text, "\n%-78s\n\n\n", title.substr(0, 78).c_str());
    }
    if (has_statistics) print_statistics(&text, input.columns, input.flags & 1, input.flags & 2);
    size_t rows = has_values ? input.values[0].size() : 0;
    for (const auto &values : input.values) rows = std::min(rows, values.size());
    for (size_t row = 0; row < rows; ++row) {
        for (const auto &values : input.values) print(&text, "%11.4e ", values[row]);
        text += '\n';
    }
    return text;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const table_input input = take_input({reinterpret_cast<const char *>(data), size});
    std::string wanted;
    const outcome result = run_sandboxed({}, {}, [&] {
        fill_columns(input);
        wanted = table_by_printf(input);
        crv_settings.columnize_flags = input.flags;
        crv_WriteCols("run.req", 0, static_cast<int16_t>(input.columns), input.layout);
    });
    require(!result.quit && result.err.empty(), "a table is written without a complaint");
    require(result.files == std::map<std::string, std::string>{{"run.dat", wanted}},
            "a table is what printf would have written");
    return 0;
}
