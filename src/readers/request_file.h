// readers/request_file.h - reads request files (.req).
//
//   line 1       anything, skipped
//   line 2       title of the run
//   line 3       N, the number of requests, at the start of the line
//   then         N header lines: identifier, type, -, -, flag. After a line with a flag other than
//                0, one more line is skipped. Identifier 0 is never selected, it names the time.
//   to the end   steps of N + 1 lines: the time line, then one line per request in header order
//
// Lines hold at most 125 characters; a longer one is read as two and puts the steps out of order.
// Numbers are separated by blanks and commas. The last line counts only with its line end; a piece
// of 126 characters counts at the very end too.
//
//   item    value of the request's line       label        type   label
//   0, 1    first number                      "T ", "X "   0      "Time "
//   2, 3    second and third                  "Y ", "Z "   1      "Displ"
//   4 to 6  fourth to sixth                   "A1" .. "A3" 2      "Veloc"
//   7       magnitude of the first three      "M "         3      "Accel"
//   8       magnitude of the fourth to sixth  "AM"         4      "Force"
//   other   -999.999                          "??"         5      "User ", others "?????"
#pragma once

#include "readers/selection.h"

#include <cstdint>
#include <string_view>

// Routine 83. Makes one column per pair of `selection`: pair k fills slot first_slot + k of the
// column table with the values that pass the time window and the X filter of the settings, and
// keeps all their statistics. Pairs for which the table has no slot are left out; the caller
// refuses such a selection.
//
// Returns the number of columns made; 0 when a selected request is not in the file (no column is
// made then); -1 when the file cannot be read, holds several result sets, or memory runs out. A
// column without a value ends the program with status 1. Deliberate: so does one of 32,768 values
// to 65,536, as they are counted in 16 bits with a sign; with more the count begins anew.
int crv_ReadReq(const char *path, const crv_selection &selection);

// The value that `item` names on a record line. Sets *complete to false, and leaves it alone
// otherwise, when the line lacks a number that it takes; that number counts as 0.0.
double crv_ReadItem(std::string_view line, uint32_t item, bool *complete);
