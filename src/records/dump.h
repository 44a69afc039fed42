// records/dump.h - debug dumps of the chart record and the column table on standard output.
#pragma once

// Modes of crv_DumpCols.
constexpr int crv_dump_headers = 1;
constexpr int crv_dump_values = 2;
constexpr int crv_dump_both = 3;

// Routine 82. Prints chart `index`, which must exist.
void crv_DumpChts(int index);

// Routine 86. Prints headers, values or both of all columns, as `mode` says; `first` and `last` are
// not used. Sets the val_cur of each column whose values are printed to null.
void crv_DumpCols(int first, int last, int mode);
