// text/number_writer.h - numbers as text, byte for byte as printf writes them and several times as
// fast.
#pragma once

#include <cstddef>

// Room for one number of either kind.
constexpr size_t utl_max_number_chars = 32;

// Writes `value` as printf's "%11.4e" to `to` and returns the end of it. No zero is put behind it.
char *utl_WriteE11_4(char *to, double value);

// Writes `value` as printf's "%u".
char *utl_WriteUnsigned(char *to, unsigned value);
