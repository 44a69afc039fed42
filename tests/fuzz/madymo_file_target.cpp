// fuzz/madymo_file_target.cpp - what the Madymo file reader makes of any bytes.
#include "column_check.h"

#include "readers/madymo_file.h"

static int read_file(const char *path, const reader_input &input) {
    return crv_ReadMad(path, crv_ParseSel(input.selection.c_str(), input.first_slot));
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const reader_input input = take_reader_input(data, size);
    outcome result;
    const reading read = check_reading(input, read_file, &result);
    if (result.quit) {
        require(result.status == 0 && !result.err.empty(), "an end of the program has its report");
        return 0;
    }
    const int wanted = wanted_columns(input, input.first_slot);
    require(read.count == 0 || read.count == wanted,
            "there is a column for each pair of the selection, or none");
    if (read.count < 1) return 0;
    require(read.columns.size() == static_cast<size_t>(wanted), "no column is made in vain");
    for (const column_copy &column : read.columns) {
        check_statistics(column);
        require(column.fields.min_step == 0 && column.fields.absmax_step == 0,
                "the format has no steps");
        const size_t most = read.columns[0].values.size() + 1; // the file can end within a step
        require(column.values.size() <= most &&
                    read.columns[0].values.size() <= column.values.size() + 1,
                "a step gives every column a value");
    }
    return 0;
}
