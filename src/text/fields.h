// text/fields.h - the numbers on a line of a result file. Fields are separated by blanks and
// commas.
#pragma once

#include <span>
#include <string_view>

// Reads the first numbers of `line` into `numbers`, as many as they hold. Returns how many the line
// has of them; those that it does not have are 0.
int crv_ReadNumbers(std::string_view line, std::span<double> numbers);
int crv_ReadIntegers(std::string_view line, std::span<int> numbers);

// Reads number `ordinal` of `line`, counted from 1, and looks no further. Returns false, with 0.0,
// when the line does not have it.
bool crv_ReadNumberAt(std::string_view line, unsigned ordinal, double *number);
