// stats/dat_file.h - writes columns as a text table (.dat).
//
//   title        an empty line, the title of the first column in 78 characters, two empty lines
//   layouts 1, 2, 3 statistics   a row per statistic, named by a label row below it layouts 2, 3
//   values       a row per point, as many as the shortest column has layouts 1, 3, 4
//
// Rows hold a cell of twelve characters per column, the last of them a blank.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

constexpr uint16_t crv_dat_columns = 1;    // title and values
constexpr uint16_t crv_dat_statistics = 2; // title and statistics
constexpr uint16_t crv_dat_all = 3;        // title, statistics and values
constexpr uint16_t crv_dat_values = 4;     // values only

// Routine 84. Writes columns start to end - 1 of the column table to the file that crv_DatPath
// names after `path`, the result file that they were read from; an old file of that name is
// replaced. The columnize flags of the settings choose the groups of the statistics. Any other
// layout makes an empty file. The val_cur of a column whose values were written is the last one
// that was.
//
// A file that cannot be opened or written ends the program with status 0, as does one that is the
// result file itself. An incomplete table is removed; a link or a device in its place stays.
//
// Deliberate: the status is 0 although the table failed.
void crv_WriteCols(const char *path, int16_t start, int16_t end, uint16_t layout);

// The name of the table for a result file: its extension replaced by ".dat", or ".dat" appended
// when it has none.
//
// Deliberate: only '/' ends a folder's name, so that res.1\run becomes res.dat.
std::string crv_DatPath(std::string_view path);
