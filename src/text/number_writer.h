// text/number_writer.h - formats numbers as printf does with %11.4e and %u, with the same bytes and
// several times as fast.
#pragma once

#include <cstddef>

// Buffer size for one number of either form; the longest, -1.2345e-308, has 12 characters.
constexpr size_t utl_max_number_chars = 32;

// Writes `value` in the form "%11.4e" to `to`, without a terminating zero. Returns the end of the
// text.
char *utl_WriteE11_4(char *to, double value);

// Does the same in the form "%u".
char *utl_WriteUnsigned(char *to, unsigned value);

// Writes the shortest text that reads back to the same number, such as "0.1", "-5e-324" or "1e+22",
// without a terminating zero. The others are "nan", without a sign, "inf" and "-inf". Returns the
// end of the text.
char *utl_WriteShortest(char *to, double value);

// A number as text: at most a sign, 309 digits, a point and 6 digits.
struct utl_number_text {
    char text[328];
};

// Returns `value` as the printf format "%*.*f" with `width` and `precision`, at most 6. A negative
// not-a-number is "-nan" everywhere; the printf of some libraries omits its sign.
utl_number_text utl_FormatFixed(double value, int width, int precision);
