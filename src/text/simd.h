// text/simd.h - vectors of 16 characters, where the processor has them.
#pragma once

#ifdef __SSE2__

#include <emmintrin.h>

// The 16 characters at `at`, all of which must be there.
inline __m128i utl_LoadVector(const char *at) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(at));
}

inline __m128i utl_CompareEqual(__m128i text, char c) {
    return _mm_cmpeq_epi8(text, _mm_set1_epi8(c));
}

// A bit for each of the 16 flags, the first in the lowest.
inline unsigned utl_MoveMask(__m128i flags) {
    return static_cast<unsigned>(_mm_movemask_epi8(flags));
}

// The place of the lowest bit; there must be one.
inline unsigned utl_CountTrailingZeros(unsigned bits) {
    return static_cast<unsigned>(__builtin_ctz(bits));
}

#endif
