// text/number_reader.h - text to numbers, by the rules of atof and atoi and several times as fast.
#pragma once

#include <cstdint>
#include <string_view>

inline bool utl_IsDigit(char c) { return c >= '0' && c <= '9'; }

// Returns true if `text` is digits alone, one or more, and their number is at most `max`.
bool utl_IsWholeNumber(std::string_view text, uint32_t max);

// Returns the number at the start of `text` as atof reads it, including hexadecimal, infinite and
// not-a-number forms; 0.0 if there is none. Only the first 2,047 characters of a form that is not
// plain decimal are converted.
double utl_ToDouble(std::string_view text);

// Does the same for a field, which is not empty, contains no separator and is followed by
// utl_padding readable characters (text/simd.h). Faster for plain decimals.
double utl_ReadField(std::string_view field);

// Returns the number at the start of `text` as atoi reads it: leading white space, a sign, digits;
// 0 without digits. A value beyond 64 bits is clamped to their bounds; the result is its lower 32
// bits, on every machine: atoi does the same where a long has 64 bits.
int utl_ToInt(std::string_view text);
