// fuzz/frame_file_target.cpp - what the frame file reader makes of any bytes.
#include "column_check.h"

#include "readers/frame_file.h"
#include "records/chart.h"

#include <algorithm>

static int slot_of(const reader_input &input) {
    return std::min(input.first_slot, CRV_MAXCOLS - 2);
}

static int read_file(const char *path, const reader_input &input) {
    crv_AllocCht(0);
    return crv_ReadVDR(path, slot_of(input));
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const reader_input input = take_reader_input(data, size);
    outcome result;
    const reading read = check_reading(input, read_file, &result);
    require(!result.quit, "a file that can be read does not end the program");
    require(read.count == 0 || read.count == 2, "there are two columns or none");
    if (read.count == 0) {
        require(result.out.find("%crv_85-f-nopts, ") != result.out.npos,
                "a file that is refused is reported");
        return 0;
    }
    require(read.columns.size() == 2, "no column is made in vain");
    require(read.columns[0].values.size() == read.columns[1].values.size(), "points are pairs");
    for (const column_copy &column : read.columns) {
        check_count(column);
        check_mean(column, sum_of(column));
        require(column.fields.sum == 0.0, "the sum stays 0");
    }
    return 0;
}
