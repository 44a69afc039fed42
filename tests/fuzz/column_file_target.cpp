// fuzz/column_file_target.cpp - the column file reader on arbitrary bytes. The first slot of the
// input is the line of the labels too.
#include "column_check.h"

#include "readers/column_file.h"

static int read_file(const char *path, const reader_input &input) {
    const int label_line = input.first_slot % 5;
    return crv_ReadPost(path, crv_ParseSel(input.selection.c_str(), input.first_slot / 5),
                        label_line, label_line + 1);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const reader_input input = take_reader_input(data, size);
    outcome result;
    const reading read = check_reading(input, read_file, &result);
    require(!result.quit, "a file that can be read does not end the program");
    const int wanted = wanted_columns(input, input.first_slot / 5);
    require(read.count == 0 || read.count == wanted,
            "there is a column for each number of the selection, or none");
    if (read.count < 1) return 0;
    require(read.columns.size() == static_cast<size_t>(wanted), "no column is made in vain");
    for (const column_copy &column : read.columns) {
        const auto rows = static_cast<uint16_t>(column.fields.numpts);
        require(column.values.size() >= 65536 || column.values.size() <= rows,
                "dropped rows count, kept ones are no more");
        check_extremes(column);
        check_sum(column);
        check_mean(column, column.fields.sum);
    }
    return 0;
}
