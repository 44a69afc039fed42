// records/dump.h - prints the records on standard output, for whoever looks for an error.
#pragma once

// What crv_DumpCols prints of each column.
constexpr int crv_dump_headers = 1;
constexpr int crv_dump_values = 2;
constexpr int crv_dump_both = 3;

// Routine 82. Prints chart `index`, which must be there.
void crv_DumpChts(int index);

// Routine 86. Prints the column table. The first two arguments are not used. After the values of a
// column its val_cur is null.
void crv_DumpCols(int first, int last, int mode);
