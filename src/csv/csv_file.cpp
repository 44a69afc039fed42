// csv/csv_file.cpp - writes the rows through a block buffer, from one cursor into each value list.
#include "csv/csv_file.h"

#include "text/number_writer.h"

#include <cstring>
#include <span>

static constexpr size_t block_size = 64 * 1024;
static constexpr size_t max_cell = utl_max_number_chars + 1; // with its separator

namespace {

// Text that is collected in a block.
struct block_writer {
    FILE *stream;
    bool failed;
    size_t length;
    char block[block_size];
};

} // namespace

static void flush_block(block_writer *out) {
    if (!out->failed && fwrite(out->block, 1, out->length, out->stream) != out->length)
        out->failed = true;
    out->length = 0;
}

static void write_label(block_writer *out, const std::string &label) {
    const bool quoted = label.empty() || label.find_first_of(",\"") != label.npos;
    std::string cell = quoted ? "\"" : "";
    for (const char c : label) cell.append(c == '"' ? 2 : 1, c);
    if (quoted) cell += '"';
    // Also a path of any length fits in parts.
    for (const char c : cell) {
        if (out->length == block_size) flush_block(out);
        out->block[out->length++] = c;
    }
}

static void write_separator(block_writer *out, char separator) {
    if (out->length == block_size) flush_block(out);
    out->block[out->length++] = separator;
}

static void write_header(block_writer *out, const crv_view &view) {
    const std::vector<std::string> labels = crv_NameCsvColumns(view);
    for (size_t k = 0; k < labels.size(); ++k) {
        write_label(out, labels[k]);
        write_separator(out, k + 1 < labels.size() ? ',' : '\n');
    }
}

static std::vector<const crv_value *> first_values(const crv_view &view) {
    std::vector<const crv_value *> values;
    for (const crv_view_file &file : view.files) {
        if (file.has_own_x) values.push_back(file.x->val_list);
        for (const crv_column *column : file.columns) values.push_back(column->val_list);
    }
    return values;
}

// Writes the row of the values at the cursors to `to` and moves them on; a null cursor is an empty
// cell. Returns the end of the text.
static char *write_row(char *to, std::span<const crv_value *> cursors) {
    for (const crv_value *&cursor : cursors) {
        if (cursor) {
            to = utl_WriteShortest(to, cursor->val);
            cursor = cursor->next;
        }
        *to++ = ',';
    }
    to[-1] = '\n';
    return to;
}

static bool has_row(std::span<const crv_value *const> cursors) {
    for (const crv_value *cursor : cursors)
        if (cursor) return true;
    return false;
}

bool crv_WriteCsv(const crv_view &view, FILE *stream) {
    block_writer out;
    out.stream = stream;
    out.failed = false;
    out.length = 0;
    write_header(&out, view);
    std::vector<const crv_value *> cursors = first_values(view);
    while (!out.failed && has_row(cursors)) {
        if (block_size - out.length < cursors.size() * max_cell) flush_block(&out);
        char *end = write_row(out.block + out.length, cursors);
        out.length = static_cast<size_t>(end - out.block);
    }
    flush_block(&out);
    return true;
}
