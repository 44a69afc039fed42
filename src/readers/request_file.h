// readers/request_file.h - reader of request files (.req).
//
//   line 1       any text, skipped
//   line 2       title of the run
//   line 3       N, the number of requests, at the start of the line
//   then         N header lines: identifier, type, -, -, flag. After a line with a flag other than
//                0, one more line is skipped. Identifier 0 is never selected, it names the time.
//   to the end   steps of N + 1 lines: the time line, then one line per request in header order
//
// Lines have at most 125 characters; a longer one is read as two, which misaligns all further
// steps. Numbers are separated by blanks and commas. An unterminated last line is ignored unless it
// has 126 characters.
//
// Items of a request line are in readers/request_item.h. Labels of the types: 0 "Time ", 1 "Displ",
// 2 "Veloc", 3 "Accel", 4 "Force", 5 "User ", others "?????".
#pragma once

#include "readers/request_header.h"
#include "readers/selection.h"
#include "readers/survey.h"

#include <cstdint>
#include <string>
#include <vector>

// Routine 83. Makes one column per pair of `selection`: pair k fills slot first_slot + k of the
// column table with the values in the time window and the X filter of the settings, and with all
// statistics. Pairs without a slot in the table are skipped; the caller rejects such a selection.
//
// Returns the number of columns made; 0 and makes none if a selected request is not in the file; -1
// if the file cannot be read, contains several result sets, or memory runs out. Ends the program
// with status 1 if a column has no value. Deliberate: also if it has 32,768 to 65,536 values,
// because the count is a signed 16-bit number; with more values the count wraps to 1 and above.
int crv_ReadReq(const char *path, const crv_selection &selection);

// The contents of a request file, without its values.
struct crv_request_line {
    uint32_t identifier;
    uint32_t type;
    std::string name;
};

struct crv_request_survey {
    crv_request_header header;
    std::vector<crv_request_line> requests; // the first of the header, in its order
    crv_survey steps;
    uint64_t marked_line = 0; // the line with "<++>" that ended the pass, 0 without one
};

// Reads the header, and then at most `max_steps` steps as crv_ReadReq does, but prints nothing and
// stores no value. Returns false if the number of requests is below 0. A failed read ends the file;
// lines->error is then set.
bool crv_SurveyReq(utl_line_reader *lines, uint64_t max_steps, crv_request_survey *survey);
