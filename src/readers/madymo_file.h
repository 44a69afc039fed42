// readers/madymo_file.h - reader of Madymo post-processed files (.mad).
//
//   line 1       title of the run
//   line 2       any text, skipped
//   line 3       N and M, the number of requests and of column descriptions
//   then         N request lines: the first ten characters are the request's name
//   then         M column descriptions, skipped
//   to the end   steps of N + 1 lines: the time line, then one line per request
//
// Line 1 has at most 125 characters, the others 509. Numbers are separated by blanks and commas;
// the first 31 of a line are used. A request is identified by its position in the list, counted
// from 1, its item by the position of the number on its line; item 0 is the time.
#pragma once

#include "readers/madymo_header.h"
#include "readers/selection.h"
#include "readers/survey.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Routine 88. Makes one column per pair of `selection`: pair k fills slot first_slot + k of the
// column table with the values in the time window of the settings, and with all statistics except
// steps and times. Pairs without a slot in the table are skipped; the caller rejects such a
// selection.
//
// Returns the number of columns made, or 0 and makes none if a selected request is not in the file.
// Ends the program with status 0 if the file cannot be read, a data line is unterminated or too
// long, an item is above 31 or memory runs out.
//
// Deliberate: a third line without two numbers is reported, and reading continues with the numbers
// that it has.
int crv_ReadMad(const char *path, const crv_selection &selection);

// The contents of a Madymo file, without its values.
struct crv_madymo_survey {
    crv_madymo_header header;
    std::vector<std::string> names;        // of the requests
    std::vector<std::string> descriptions; // of the columns
    std::vector<size_t> numbers;           // on the line of each request in the first step
    crv_survey steps;
    uint64_t long_line = 0; // the line beyond the limit that ended the pass, 0 without one
};

// Reads the header, and then at most `max_steps` steps as crv_ReadMad does, but prints nothing and
// stores no value. Returns false if the number of requests is below 0. A failed read ends the file;
// lines->error is then set.
bool crv_SurveyMad(utl_line_reader *lines, uint64_t max_steps, crv_madymo_survey *survey);
