// stats/dat_file.h - writes columns as a text table (.dat).
//
//   title        layouts 1, 2, 3   an empty line, the title of the first column in 78 characters,
//                                  two empty lines
//   statistics   layouts 2, 3      a row per statistic, with a label row below each
//   values       layouts 1, 3, 4   a row per point, as many as the shortest column has
//
// A row has a cell of twelve characters per column; the last of them is a blank.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

constexpr uint16_t crv_dat_columns = 1;    // title and values
constexpr uint16_t crv_dat_statistics = 2; // title and statistics
constexpr uint16_t crv_dat_all = 3;        // title, statistics and values
constexpr uint16_t crv_dat_values = 4;     // values only

// Routine 84. Writes columns `start` to `end` - 1 of the column table to the file crv_DatPath(path)
// and overwrites an existing one; `path` is the result file that they were read from. The columnize
// flags of the settings select the groups of the statistics. A layout other than 1 to 4 makes an
// empty file. If `end` is not above `start`, prints a message and writes nothing. Afterwards the
// val_cur of each column whose values were written is at the last one written.
//
// Ends the program with status 0 if the table is the result file itself or cannot be opened or
// written. An incomplete table is removed unless its path is a link or a device.
//
// Deliberate: the status is 0 although writing the table failed.
void crv_WriteCols(const char *path, int16_t start, int16_t end, uint16_t layout);

// Returns the path of the table for a result file: its extension is replaced by ".dat"; without an
// extension ".dat" is appended.
//
// Deliberate: only '/' is a directory separator, so that res.1\run becomes res.dat.
std::string crv_DatPath(std::string_view path);
