// text/field_scan.h - finds where fields begin and end: runs of blanks and commas separate them.
//
// Blanks and fields are of all lengths, which makes a loop guess wrong at their ends: 16 characters
// are looked at together.
#pragma once

#include "text/simd.h"

inline bool utl_IsSeparator(char c) { return c == ' ' || c == ','; }

#ifdef __SSE2__

// A bit for each of the 16 characters that separates fields.
inline unsigned utl_SeparatorBits(__m128i text) {
    return utl_MoveMask(_mm_or_si128(utl_CompareEqual(text, ' '), utl_CompareEqual(text, ',')));
}

#endif

// The first character from `at` on that is in a field, or `end`.
inline const char *utl_FindField(const char *at, const char *end) {
#ifdef __SSE2__
    for (; end - at >= 16; at += 16)
        if (const unsigned bits = utl_SeparatorBits(utl_LoadVector(at)) ^ 0xFFFFU)
            return at + utl_CountTrailingZeros(bits);
#endif
    while (at != end && utl_IsSeparator(*at)) ++at;
    return at;
}

// The first character from `at` on that is in no field, or `end`.
inline const char *utl_FindSeparator(const char *at, const char *end) {
#ifdef __SSE2__
    for (; end - at >= 16; at += 16)
        if (const unsigned bits = utl_SeparatorBits(utl_LoadVector(at)))
            return at + utl_CountTrailingZeros(bits);
#endif
    while (at != end && !utl_IsSeparator(*at)) ++at;
    return at;
}
