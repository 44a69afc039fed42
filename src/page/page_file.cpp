// page/page_file.cpp - the page of a view: texts as JSON, columns as base64 of little-endian
// doubles.
#include "page/page_file.h"

#include "page/curve_labels.h"
#include "page/page_text.h"
#include "text/number_writer.h"
#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

using column_list = std::vector<const crv_column *>;

static void write_text(FILE *stream, std::string_view text) {
    fwrite(text.data(), 1, text.size(), stream);
}

// Writes `text` as the content of an HTML element. A '>' needs no escape there.
static void write_content(FILE *stream, std::string_view text) {
    std::string escaped;
    for (const char c : utl_CleanText(text)) {
        if (c == '<')
            escaped += "&lt;";
        else if (c == '&')
            escaped += "&amp;";
        else
            escaped += c;
    }
    write_text(stream, escaped);
}

// Writes `text` as a JSON string. No '<' stands in it, so that it cannot end the script element.
static void write_string(FILE *stream, std::string_view text) {
    std::string escaped = "\"";
    for (const char c : utl_CleanText(text)) {
        if (c == '<')
            escaped += "\\u003c";
        else if (c == '"' || c == '\\')
            (escaped += '\\') += c;
        else
            escaped += c;
    }
    write_text(stream, escaped += '"');
}

// ----- The view as JSON

static void write_number(FILE *stream, double value) {
    char text[utl_max_number_chars];
    const char *end = utl_WriteShortest(text, value);
    write_text(stream, {text, static_cast<size_t>(end - text)});
}

// A range of no width cannot be shown, and counts as not set.
static void write_range(FILE *stream, const double (&range)[2]) {
    if (!std::isfinite(range[0]) || !std::isfinite(range[1]) || range[0] >= range[1]) {
        write_text(stream, "null");
        return;
    }
    write_text(stream, "[");
    write_number(stream, range[0]);
    write_text(stream, ",");
    write_number(stream, range[1]);
    write_text(stream, "]");
}

template <typename list, typename writer>
static void write_array(FILE *stream, const list &items, writer write_item) {
    const char *separator = "[";
    for (const auto &item : items) {
        write_text(stream, separator);
        write_item(item);
        separator = ",";
    }
    write_text(stream, items.empty() ? "[]" : "]");
}

static size_t index_of(const column_list &columns, const crv_column *column) {
    return static_cast<size_t>(std::find(columns.begin(), columns.end(), column) - columns.begin());
}

static void write_view(FILE *stream, const crv_view &view, const column_list &columns) {
    write_text(stream, "<script type=\"application/json\" id=\"view\">\n{\"title\":");
    write_string(stream, view.title);
    write_text(stream, ",\n\"subtitle\":");
    write_string(stream, view.subtitle);
    write_text(stream, ",\n\"files\":");
    write_array(stream, view.files, [&](const crv_view_file &file) {
        write_string(stream, crv_ShownFileName(file.path));
    });
    write_text(stream, ",\n\"columns\":");
    write_array(stream, columns,
                [&](const crv_column *column) { write_string(stream, column->colname); });
    write_text(stream, ",\n\"curves\":");
    size_t index = 0;
    write_array(stream, crv_LabelCurves(view), [&](const crv_curve_label &label) {
        const crv_view_curve &curve = view.curves[index++];
        fprintf(stream, "[%zu,%zu,%d,%zu,", index_of(columns, curve.x), index_of(columns, curve.y),
                curve.file, label.series);
        write_string(stream, label.text);
        write_text(stream, "]");
    });
    write_text(stream, ",\n\"x_range\":");
    write_range(stream, view.x_range);
    write_text(stream, ",\n\"y_range\":");
    write_range(stream, view.y_range);
    write_text(stream, "}\n</script>\n");
}

// ----- Values as base64

static constexpr size_t group_values = 3; // 24 bytes
static constexpr size_t group_chars = 32;

// The pairs of base64 digits of the numbers 0 to 4,095.
static constexpr auto digit_pairs = [] {
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<char, 2 * 4096> pairs = {};
    for (size_t k = 0; k < 4096; ++k) {
        pairs[2 * k] = digits[k / 64];
        pairs[2 * k + 1] = digits[k % 64];
    }
    return pairs;
}();

// Writes the lowest 12 bits of `bits` as two digits.
static char *write_pair(char *to, uint64_t bits) {
    memcpy(to, &digit_pairs[2 * (bits & 4095)], 2);
    return to + 2;
}

// Returns the bits of a value with the byte that is written first as the highest.
static uint64_t bytes_of(double value) {
    uint64_t bits = std::bit_cast<uint64_t>(value);
    bits = (bits & 0x00FF00FF00FF00FF) << 8 | (bits >> 8 & 0x00FF00FF00FF00FF);
    bits = (bits & 0x0000FFFF0000FFFF) << 16 | (bits >> 16 & 0x0000FFFF0000FFFF);
    return bits << 32 | bits >> 32;
}

// Writes three values as 32 digits, 192 bits in 16 pairs.
static char *write_group(char *to, const uint64_t (&bytes)[group_values]) {
    const auto [a, b, c] = bytes;
    for (const int shift : {52, 40, 28, 16, 4}) to = write_pair(to, a >> shift);
    to = write_pair(to, a << 8 | b >> 56);
    for (const int shift : {44, 32, 20, 8}) to = write_pair(to, b >> shift);
    to = write_pair(to, b << 4 | c >> 60);
    for (const int shift : {48, 36, 24, 12, 0}) to = write_pair(to, c >> shift);
    return to;
}

// Writes the values from `node` to the end of their list, one or two of them. 64 bits make 11
// digits and 128 make 22; "=" fills the last group of four digits.
static char *write_last_values(char *to, const crv_value *node) {
    const bool single = !node->next;
    write_group(to, {bytes_of(node->val), single ? 0 : bytes_of(node->next->val), 0});
    const std::string_view padding = single ? "=" : "==";
    to += single ? 11 : 22;
    memcpy(to, padding.data(), padding.size());
    return to + padding.size();
}

// Writes at most crv_page_block_values values from `node` on. Returns the node after them, or null.
static const crv_value *write_block(FILE *stream, const crv_value *node) {
    constexpr size_t buffer_groups = 2048;
    char buffer[buffer_groups * group_chars];
    size_t groups_left = crv_page_block_values / group_values;
    while (node && groups_left > 0) {
        char *end = buffer;
        for (size_t k = std::min(groups_left, buffer_groups); node && k > 0; --k) {
            const crv_value *second = node->next;
            const crv_value *third = second ? second->next : nullptr;
            if (!third) {
                end = write_last_values(end, node);
                node = nullptr;
                break;
            }
            end = write_group(end,
                              {bytes_of(node->val), bytes_of(second->val), bytes_of(third->val)});
            node = third->next;
            --groups_left;
        }
        write_text(stream, {buffer, static_cast<size_t>(end - buffer)});
    }
    return node;
}

static void write_column(FILE *stream, size_t index, const crv_column *column) {
    const crv_value *node = column->val_list;
    do {
        fprintf(stream, "<script type=\"text/plain\" data-column=\"%zu\">", index);
        node = write_block(stream, node);
        write_text(stream, "</script>\n");
    } while (node);
}

// The columns of the curves, each once, in the order of their first use.
static column_list columns_of(const crv_view &view) {
    column_list columns;
    for (const crv_view_curve &curve : view.curves)
        for (const crv_column *column : {curve.x, curve.y})
            if (index_of(columns, column) == columns.size()) columns.push_back(column);
    return columns;
}

// The title of the window: that of the view, else its subtitle, else the first file.
static std::string_view window_title(const crv_view &view) {
    if (!view.title.empty()) return view.title;
    if (!view.subtitle.empty()) return view.subtitle;
    return view.files.empty() ? std::string_view("Curves")
                              : std::string_view(view.files.front().path);
}

bool crv_WritePage(const crv_view &view, FILE *stream) {
    const column_list columns = columns_of(view);
    write_text(stream, crv_page_head);
    write_content(stream, window_title(view));
    write_text(stream, crv_page_body);
    write_view(stream, view, columns);
    for (size_t k = 0; k < columns.size(); ++k) write_column(stream, k, columns[k]);
    write_text(stream, crv_page_end);
    return true;
}
