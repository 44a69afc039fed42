// readers/madymo_steps.h - the steps of a Madymo file, for its reader and its survey.
#pragma once

#include "readers/input.h"
#include "readers/madymo_header.h"
#include "text/fields.h"
#include "text/line_reader.h"

#include <algorithm>
#include <cstdint>

// State of a Madymo file whose header has been read.
struct crv_madymo_steps {
    crv_input in;
    crv_madymo_header header;
    double time;         // of the latest step
    bool in_window;      // the time is in the time window
    int64_t lines_left;  // lines of the incomplete step at the end
    utl_line_status end; // of the line that ended the steps
};

inline void crv_ReadMadymoTime(crv_madymo_steps *mad, utl_line_fields *fields) {
    if (!utl_TakeNumberAt(fields, 1, &mad->time)) crv_WarnMissingNumbers(&mad->in);
    mad->in_window = crv_CountPoint(&mad->in, mad->time);
}

// Reads one step: the time, and those of the lines that are needed; skips the others. Returns false
// after the last step, with the reason in mad->end: end of the file, or a line without its line
// end.
//
// `needed` is called with the lines, block 0 for the time line and from 1 on for the requests:
//   int64_t next_block() const                      the next block that is needed; beyond the last
//                                                   one, none
//   void read(block, const utl_line &, utl_line_fields *)   reads a line that was not skipped
template <typename needed_lines>
bool crv_ReadMadymoStep(crv_madymo_steps *mad, needed_lines needed) {
    const int64_t num_lines = int64_t{mad->header.num_requests} + 1;
    for (int64_t block = 0; block < num_lines;) {
        const utl_line line = utl_ReadLine(mad->in.lines, crv_madymo_line_limit);
        if (line.status != utl_line_status::newline) {
            mad->lines_left = block;
            mad->end = line.status;
            return false;
        }
        utl_line_fields fields = utl_SplitLine(line.text);
        if (block == 0) crv_ReadMadymoTime(mad, &fields);
        needed.read(block, line, &fields);
        ++block;
        const int64_t next = std::min(needed.next_block(), num_lines);
        block += utl_SkipLines(mad->in.lines, crv_madymo_line_limit, next - block);
    }
    return true;
}
