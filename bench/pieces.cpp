// bench/pieces.cpp - micro-benchmarks of line reading, number conversion, curve output and pictures
// for the terminal, compared with the C library.
#include "page/page_file.h"
#include "postscript/chart_file.h"
#include "records/chart.h"
#include "records/column.h"
#include "terminal/picture.h"
#include "text/fields.h"
#include "text/line_reader.h"
#include "text/number_writer.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

// Returns 1,000 numbers between -500 and 500 with six decimals, the same every time, by the
// generator of MMIX (D. E. Knuth, The Art of Computer Programming, volume 2, section 3.3.4).
std::vector<std::string> numbers() {
    std::vector<std::string> texts;
    uint64_t state = 1;
    for (int k = 0; k < 1000; ++k) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        char text[32];
        snprintf(text, sizeof text, "%.6f",
                 (static_cast<double>(state >> 40) - 8388608.0) / 16777.216);
        texts.emplace_back(text);
    }
    return texts;
}

// A temporary file of 100,000 lines of 90 characters, as in a column file.
class line_file {
  public:
    line_file() : path_("/tmp/crv_bench_" + std::to_string(getpid())) {
        FILE *out = fopen(path_.c_str(), "w");
        for (int k = 0; k < lines; ++k) fprintf(out, "%s\n", std::string(90, 'x').c_str());
        fclose(out);
    }
    ~line_file() { remove(path_.c_str()); }
    line_file(const line_file &) = delete;
    line_file &operator=(const line_file &) = delete;
    const char *path() const { return path_.c_str(); }
    static constexpr int lines = 100'000;

  private:
    std::string path_;
};

void line_by_utl_read_line(benchmark::State &state) {
    const line_file file;
    for (auto _ : state) {
        utl_line_reader *in = utl_OpenReader(file.path());
        while (utl_ReadLine(in, 126).status != utl_line_status::eof) {
        }
        utl_CloseReader(in);
    }
    state.SetItemsProcessed(state.iterations() * line_file::lines);
}
BENCHMARK(line_by_utl_read_line);

void line_by_utl_skip_lines(benchmark::State &state) {
    const line_file file;
    for (auto _ : state) {
        utl_line_reader *in = utl_OpenReader(file.path());
        benchmark::DoNotOptimize(utl_SkipLines(in, 126, line_file::lines));
        utl_CloseReader(in);
    }
    state.SetItemsProcessed(state.iterations() * line_file::lines);
}
BENCHMARK(line_by_utl_skip_lines);

void line_by_fgets(benchmark::State &state) {
    const line_file file;
    for (auto _ : state) {
        FILE *in = fopen(file.path(), "r");
        char line[128];
        while (fgets(line, 127, in)) benchmark::DoNotOptimize(line);
        fclose(in);
    }
    state.SetItemsProcessed(state.iterations() * line_file::lines);
}
BENCHMARK(line_by_fgets);

void number_by_utl_take_number(benchmark::State &state) {
    std::string line;
    for (const std::string &text : numbers()) line += "   " + text;
    const size_t length = line.size();
    line.append(utl_padding, ' ');
    for (auto _ : state) {
        utl_line_fields fields = utl_SplitLine(std::string_view(line).substr(0, length));
        double number = 0.0;
        while (utl_TakeNumber(&fields, &number)) benchmark::DoNotOptimize(number);
    }
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(number_by_utl_take_number);

void number_by_atof(benchmark::State &state) {
    const std::vector<std::string> texts = numbers();
    for (auto _ : state)
        for (const std::string &text : texts) benchmark::DoNotOptimize(atof(text.c_str()));
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(number_by_atof);

void cell_by_utl_write_e11_4(benchmark::State &state) {
    std::vector<double> values;
    for (const std::string &text : numbers()) values.push_back(atof(text.c_str()));
    char cell[utl_max_number_chars];
    for (auto _ : state)
        for (const double value : values) benchmark::DoNotOptimize(utl_WriteE11_4(cell, value));
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(cell_by_utl_write_e11_4);

void cell_by_fprintf(benchmark::State &state) {
    std::vector<double> values;
    for (const std::string &text : numbers()) values.push_back(atof(text.c_str()));
    FILE *out = fopen("/dev/null", "w");
    for (auto _ : state)
        for (const double value : values) fprintf(out, "%11.4e ", value);
    fclose(out);
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(cell_by_fprintf);

void page_value(benchmark::State &state) {
    constexpr int rows = 300'000;
    crv_column *columns[2];
    for (crv_column *&column : columns) {
        column = crv_AllocColumn(static_cast<int>(&column - columns));
        for (int k = 0; k < rows; ++k) crv_AppendValue(column, k * 0.1);
    }
    crv_view view;
    view.files.push_back({"run", columns[0], true, {columns[1]}});
    view.curves.push_back({columns[0], columns[1], 0});
    FILE *out = fopen("/dev/null", "w");
    for (auto _ : state) crv_WritePage(view, out);
    fclose(out);
    state.SetItemsProcessed(state.iterations() * 2 * rows);
}
BENCHMARK(page_value);

void curve_point(benchmark::State &state) {
    constexpr int points = 100'000;
    crv_chart *chart = crv_AllocCht(0);
    for (int slot = 0; slot < 2; ++slot) {
        crv_column *column = crv_AllocColumn(slot);
        for (int k = 0; k < points; ++k) {
            crv_value *node = crv_AllocValue();
            node->val = k;
            (column->val_list ? column->val_cur->next : column->val_list) = node;
            column->val_cur = node;
        }
    }
    chart->num_curves = 1;
    chart->xminmax[0] = chart->yminmax[0] = 0;
    chart->xminmax[1] = chart->yminmax[1] = points;
    FILE *out = fopen("/dev/null", "w");
    for (auto _ : state) crv_PlotData(out, 135, 110, 600, 400, chart);
    fclose(out);
    state.SetItemsProcessed(state.iterations() * points);
}
BENCHMARK(curve_point);

// A curve that fills the picture from the lower to the upper border.
void terminal_point(benchmark::State &state) {
    constexpr int points = 1'000'000;
    const crv_column *columns[] = {crv_AllocColumn(0), crv_AllocColumn(1)};
    const std::vector<std::string> texts = numbers();
    for (size_t k = 0; k < points; ++k) {
        crv_AppendValue(crv_columns[0], static_cast<double>(k));
        crv_AppendValue(crv_columns[1], atof(texts[k % texts.size()].c_str()));
    }
    crv_view view;
    view.files = {{"run.req", columns[0], true, {columns[1]}}};
    view.curves = {{columns[0], columns[1], 0}};
    for (auto _ : state) benchmark::DoNotOptimize(crv_DrawPicture(view, {200, 50, true, false}));
    state.SetItemsProcessed(state.iterations() * points);
}
BENCHMARK(terminal_point);

} // namespace
