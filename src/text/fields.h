// text/fields.h - splits lines into fields, and reads fields as numbers.
//
// A field is a run of characters between separators; separators are blanks and commas. Fields and
// runs of separators have all lengths, so that a branch per character is often mispredicted: the
// searches compare 16 characters at once.
#pragma once

#include "text/simd.h"

#include <span>
#include <string_view>

inline bool utl_IsSeparator(char c) { return c == ' ' || c == ','; }

// Returns a mask with a bit for each of the 16 characters that is a separator.
inline unsigned utl_SeparatorBits(utl_vector text) {
    return utl_MoveMask(utl_CompareEqual(text, ' ') | utl_CompareEqual(text, ','));
}

// Returns the first character from `at` on that belongs to a field, or `end`.
inline const char *utl_FindField(const char *at, const char *end) {
    for (; end - at >= 16; at += 16)
        if (const unsigned bits = utl_SeparatorBits(utl_LoadVector(at)) ^ 0xFFFFU)
            return at + utl_CountTrailingZeros(bits);
    while (at != end && utl_IsSeparator(*at)) ++at;
    return at;
}

// Returns the first separator from `at` on, or `end`.
inline const char *utl_FindSeparator(const char *at, const char *end) {
    for (; end - at >= 16; at += 16)
        if (const unsigned bits = utl_SeparatorBits(utl_LoadVector(at)))
            return at + utl_CountTrailingZeros(bits);
    while (at != end && !utl_IsSeparator(*at)) ++at;
    return at;
}

// Removes the next field from the front of `rest` and stores it in `field`. Returns false, with an
// empty field, if no field is left.
bool utl_NextField(std::string_view *rest, std::string_view *field);

// Does the same and reads the field as utl_ToDouble does. Returns false, with 0.0, if none is left.
bool utl_NextNumber(std::string_view *rest, double *number);

// Removes `count` fields from the front of `rest`. Returns false if there are fewer.
bool utl_SkipFields(std::string_view *rest, unsigned count);

// Returns the number of fields of `line`.
size_t utl_CountFields(std::string_view line);

// Reads the first fields of `line` into `numbers`, as many as it has elements. Returns the number
// of fields found; the elements without a field are 0.
int utl_ReadNumbers(std::string_view line, std::span<double> numbers);
int utl_ReadIntegers(std::string_view line, std::span<int> numbers);

// Reads field `ordinal` of `line`, counted from 1, and nothing after it. Returns false, with 0.0,
// if the line has fewer fields.
bool utl_ReadNumberAt(std::string_view line, unsigned ordinal, double *number);
