// csv/csv_file.h - writes a view as comma-separated values (RFC 4180) with all digits.
//
//   Time (sec),"Displ 38, Y","Force 52, Z"
//   0,1.25,-8.0625e-05
//
// The columns are those of each file in turn: its abscissa, unless that is the one of the first
// file, then its series. Lines end with LF. A column that is shorter than others ends in empty
// cells. A number is the shortest text that reads back to the same double; the others are nan, inf
// and -inf.
//
// Labels are shown text (text/utf8.h), in quotation marks where a comma or a quotation mark needs
// them. Equal labels of several files get the path of their file, "Time (sec) (run2.req)"; those
// that are still equal get a number from the second on, "Time (sec)_2".
#pragma once

#include "records/view.h"

#include <cstdio>

// Writes the view to `stream`; its ranges and titles are not used. Stops at the first failure of
// the stream, which ferror tells. Returns true.
bool crv_WriteCsv(const crv_view &view, FILE *stream);

// Returns the labels of the columns in their order, each of them once.
std::vector<std::string> crv_NameCsvColumns(const crv_view &view);
