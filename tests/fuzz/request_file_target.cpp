// fuzz/request_file_target.cpp - what the request file reader makes of any bytes.
#include "column_check.h"

#include "readers/request_file.h"

static int read_file(const char *path, const reader_input &input) {
    return crv_ReadReq(path, crv_ParseSel(input.selection.c_str(), input.first_slot));
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const reader_input input = take_reader_input(data, size);
    outcome result;
    const reading read = check_reading(input, read_file, &result);
    if (result.quit) {
        require(result.status == 1 && result.err.find("%crv_83-e-pts, ") != result.err.npos,
                "the reader ends the program only for a column without values");
        return 0;
    }
    const int wanted = wanted_columns(input, input.first_slot);
    require(read.count == -1 || read.count == 0 || read.count == wanted,
            "there is a column for each pair of the selection, or none");
    if (read.count < 1) return 0;
    require(read.columns.size() == static_cast<size_t>(wanted), "no column is made in vain");
    for (const column_copy &column : read.columns) {
        check_statistics(column);
        require(column.fields.begin_step >= 1 && column.fields.begin_step <= column.fields.end_step,
                "steps count from 1");
        for (const uint32_t step : {column.fields.min_step, column.fields.max_step,
                                    column.fields.absmin_step, column.fields.absmax_step})
            require(column.fields.begin_step <= step && step <= column.fields.end_step,
                    "an extreme lies at a step that was kept");
    }
    return 0;
}
