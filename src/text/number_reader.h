// text/number_reader.h - numbers out of text, by the rules of the C library and several times as
// fast.
#pragma once

#include <string_view>

// The number at the start of `text` as atof reads it, hexadecimal, infinite and not-a-number forms
// included; no number is 0.0. A number that needs them counts up to its 2,047th character.
double utl_ToDouble(std::string_view text);

// Takes the next field off the front of `rest` as a number, as utl_ToDouble reads it. Returns
// false, with 0.0, when no field is left.
bool utl_NextNumber(std::string_view *rest, double *number);
