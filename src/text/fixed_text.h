// text/fixed_text.h - text into fields of records, fields and whole numbers out of text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Copies `text` into the field `to` of `size` characters, cut to size - 1 and zero-terminated.
void utl_CopyText(char *to, size_t size, std::string_view text);

template <size_t size> void utl_CopyText(char (&to)[size], std::string_view text) {
    utl_CopyText(to, size, text);
}

// The text without the blanks at its end. Only the character blank counts.
std::string_view utl_TrimEnd(std::string_view text);

// Takes the next field off the front of `rest`: what stands between runs of blanks and commas.
// Returns false, with an empty field, when no field is left.
bool utl_NextField(std::string_view *rest, std::string_view *field);

// Takes `count` fields off the front of `rest`. Returns false when there are fewer.
bool utl_SkipFields(std::string_view *rest, unsigned count);

// The number at the start of `text` as atoi reads it: leading white space, a sign, digits; no
// digits is 0. Beyond the 64-bit range the value sticks to its bound; the result is its lower 32
// bits.
int utl_ToInt(std::string_view text);
