// fuzz/column_check.cpp - see column_check.h.
#include "column_check.h"

#include "readers/selection.h"
#include "records/settings.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

static bool same(double one, double other) {
    return std::bit_cast<uint64_t>(one) == std::bit_cast<uint64_t>(other) ||
           (std::isnan(one) && std::isnan(other));
}

static double take_bound(std::string_view *rest, char separator, double otherwise) {
    const std::string text = take_text(rest, separator);
    return text.empty() ? otherwise : atof(text.c_str());
}

reader_input take_reader_input(const uint8_t *data, size_t size) {
    std::string_view rest(reinterpret_cast<const char *>(data), size);
    const std::string line = take_text(&rest, '\n');
    std::string_view fields = line;
    reader_input input;
    input.selection = take_text(&fields, '|');
    input.time_window[0] = take_bound(&fields, ':', -100.0);
    input.time_window[1] = take_bound(&fields, '|', 10000.0);
    input.x_filter[0] = take_bound(&fields, ':', 100.0);
    input.x_filter[1] = take_bound(&fields, '|', -100.0);
    input.first_slot =
        static_cast<int>(static_cast<unsigned>(take_integer(&fields, '|')) % CRV_MAXCOLS);
    input.debug_level = take_integer(&fields, '|');
    input.read_piece = static_cast<unsigned>(take_integer(&fields, '|')) % 5000;
    input.bytes = rest;
    return input;
}

static std::vector<column_copy> copy_columns() {
    std::vector<column_copy> copies;
    for (const crv_column *column : crv_columns) {
        if (!column) continue;
        column_copy copy = {*column, {}};
        copy.fields.val_list = copy.fields.val_cur = nullptr;
        for (const crv_value *node = column->val_list; node; node = node->next)
            copy.values.push_back(node->val);
        require(!column->val_list || copy.fields.numpts != 0 || copy.values.size() % 65536 == 0,
                "a column with values counts them");
        copies.push_back(copy);
    }
    return copies;
}

static bool same_columns(const reading &one, const reading &other) {
    if (one.count != other.count || one.columns.size() != other.columns.size()) return false;
    for (size_t k = 0; k < one.columns.size(); ++k) {
        const column_copy &a = one.columns[k];
        const column_copy &b = other.columns[k];
        if (memcmp(&a.fields, &b.fields, sizeof a.fields) != 0 ||
            a.values.size() != b.values.size())
            return false;
        for (size_t v = 0; v < a.values.size(); ++v)
            if (!same(a.values[v], b.values[v])) return false;
    }
    return true;
}

static reading read_sandboxed(const reader_input &input, const std::string &bytes,
                              const sandbox &box, file_reader reader, outcome *result) {
    reading read;
    *result = run_sandboxed(box, {{"a.file", bytes}}, [&] {
        crv_DBG = input.debug_level;
        for (int k = 0; k < 2; ++k) {
            crv_settings.time_window[k] = input.time_window[k];
            crv_settings.x_filter[k] = input.x_filter[k];
        }
        read.count = reader("a.file", input);
        read.columns = copy_columns();
    });
    require(result->files == std::map<std::string, std::string>{{"a.file", bytes}},
            "a reader leaves the file as it was");
    return read;
}

static std::string with_cr(const std::string &bytes) {
    std::string longer;
    for (const char c : bytes) {
        if (c == '\n' && !longer.ends_with('\r')) longer += '\r';
        longer += c;
    }
    return longer;
}

// A file that cannot be read to its end is reported as that, unless the reader had stopped before.
static void check_bad_read(const reader_input &input, const outcome &good, file_reader reader) {
    sandbox box;
    box.read_piece = input.read_piece;
    box.bad_read = 1 + static_cast<int64_t>(input.bytes.size() % 7);
    outcome result;
    const reading read = read_sandboxed(input, input.bytes, box, reader, &result);
    const bool told = result.err.find("-f-fopen: Input/output error\n") != result.err.npos ||
                      result.err.find("-f-fread: Input/output error\n") != result.err.npos;
    const bool gave_up = result.quit || read.count < 1;
    require(told ? gave_up : gave_up || (result.err == good.err && result.out == good.out),
            "a file that cannot be read to its end gives no columns");
}

reading check_reading(const reader_input &input, file_reader reader, outcome *result) {
    const reading whole = read_sandboxed(input, input.bytes, {}, reader, result);
    outcome again;
    sandbox in_pieces;
    in_pieces.read_piece = input.read_piece;
    const reading pieces = read_sandboxed(input, input.bytes, in_pieces, reader, &again);
    require(same_columns(whole, pieces), "a file that arrives in pieces gives the same columns");
    require(again == *result, "and the same messages");
    const std::string longer = with_cr(input.bytes);
    const reading ends = read_sandboxed(input, longer, {}, reader, &again);
    require(same_columns(whole, ends), "a file with CR LF gives the same columns");
    require(again.out == result->out && again.err == result->err, "and the same messages");
    check_bad_read(input, *result, reader);
    return whole;
}

void check_count(const column_copy &column) {
    require(static_cast<int16_t>(static_cast<uint16_t>(column.values.size())) ==
                column.fields.numpts,
            "numpts counts the values");
}

static bool holds(const column_copy &column, double wanted) {
    for (const double value : column.values)
        if (same(value, wanted)) return true;
    return false;
}

void check_extremes(const column_copy &column) {
    if (column.values.empty() || std::isnan(column.values[0]))
        return; // a NaN that comes first stays
    for (const double value : column.values)
        require(std::isnan(value) || (column.fields.min <= value && value <= column.fields.max),
                "every value lies between the extremes");
    require(holds(column, column.fields.min) && holds(column, column.fields.max),
            "the extremes are values of the column");
}

static void check_ends(const column_copy &column) {
    if (column.values.empty()) return;
    require(same(column.fields.begin_val, column.values.front()),
            "the first value is the first value");
    require(same(column.fields.end_val, column.values.back()), "the last value is the last value");
}

static void check_magnitudes(const column_copy &column) {
    if (column.values.empty() || std::isnan(column.values[0])) return;
    for (const double value : column.values)
        require(std::isnan(value) || (column.fields.absmin <= std::fabs(value) &&
                                      std::fabs(value) <= column.fields.absmax),
                "every magnitude lies between the extremes");
    require(holds(column, column.fields.absmax) || holds(column, -column.fields.absmax),
            "the largest magnitude is that of a value");
    require(holds(column, column.fields.absmin) || holds(column, -column.fields.absmin),
            "the smallest magnitude is that of a value");
}

double sum_of(const column_copy &column) {
    double sum = column.values.empty() ? 0.0 : column.values[0];
    for (size_t k = 1; k < column.values.size(); ++k) sum += column.values[k];
    return sum;
}

void check_sum(const column_copy &column) {
    require(same(column.fields.sum, sum_of(column)),
            "the sum is that of the values in their order");
}

void check_mean(const column_copy &column, double sum) {
    const double count = column.fields.numpts;
    require(same(column.fields.mean, sum / count), "the mean is the sum divided by the count");
}

void check_statistics(const column_copy &column) {
    check_count(column);
    check_extremes(column);
    check_ends(column);
    check_magnitudes(column);
    check_sum(column);
    check_mean(column, column.fields.sum);
}

int wanted_columns(const reader_input &input, int first_slot) {
    return static_cast<int>(crv_ParseSel(input.selection.c_str(), first_slot).count);
}
