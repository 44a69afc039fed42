// text/simd.h - vectors of 16 characters, on x86 also of 32, and bit masks of 16, 32 and 64
// characters: the only code with instructions of one processor.
//
// The vector of 16 is the compiler's own type, which GCC and Clang have for every processor. Only
// the step from a vector of flags to a mask of bits is written for each. Vectors of 32 are those of
// AVX2, and are used only where utl_HasWideVectors() is true, which is never elsewhere than on x86.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <immintrin.h>
#elif defined(__aarch64__) && defined(__ARM_NEON) && !defined(__ARM_BIG_ENDIAN)
#include <arm_neon.h>
#endif

using utl_vector = uint8_t __attribute__((vector_size(16)));

// Vector code reads up to this number of characters after the end of its text. That memory must be
// readable; its contents do not matter.
constexpr size_t utl_padding = 64;

// Loads the 16 characters at `at`, all of which must be readable.
inline utl_vector utl_LoadVector(const char *at) {
    utl_vector text;
    memcpy(&text, at, sizeof text);
    return text;
}

// Returns a flag for each character: all bits set where it is `c`, none elsewhere.
inline utl_vector utl_CompareEqual(utl_vector text, char c) {
    return reinterpret_cast<utl_vector>(text == static_cast<uint8_t>(c));
}

#if defined(__SSE2__)

// Returns a mask with a bit for each of the 16 flags, the first flag in the lowest bit.
inline unsigned utl_MoveMask(utl_vector flags) {
    return static_cast<unsigned>(_mm_movemask_epi8(reinterpret_cast<__m128i>(flags)));
}

#elif defined(__aarch64__) && defined(__ARM_NEON) && !defined(__ARM_BIG_ENDIAN)

// The same by one addition for each half: the flags keep one bit each, a different one.
inline unsigned utl_MoveMask(utl_vector flags) {
    constexpr utl_vector weights = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
    const uint8x16_t bits = flags & weights;
    return vaddv_u8(vget_low_u8(bits)) | static_cast<unsigned>(vaddv_u8(vget_high_u8(bits))) << 8;
}

#else

// The same by one multiplication for each half. Byte k of a word, counted from the lowest, keeps
// bit 8k; the term 2^(7(8-k)) of the factor moves it to bit 56+k, and no two terms meet.
inline unsigned utl_MoveMask(utl_vector flags) {
    uint64_t halves[2];
    memcpy(halves, &flags, sizeof halves);
    unsigned masks[2];
    for (int k = 0; k < 2; ++k) {
        const bool swap = std::endian::native == std::endian::big;
        const uint64_t half = swap ? __builtin_bswap64(halves[k]) : halves[k];
        masks[k] = static_cast<unsigned>((half & 0x0101010101010101U) * 0x0102040810204080U >> 56);
    }
    return masks[0] | masks[1] << 8;
}

#endif

// Returns a mask with a bit for each of the 64 characters at `at` that has a flag in
// flags_of(vector).
template <class function> inline uint64_t utl_Bits64(const char *at, function flags_of) {
    uint64_t bits = 0;
    for (unsigned k = 0; k < 64; k += 16)
        bits |= uint64_t{utl_MoveMask(flags_of(utl_LoadVector(at + k)))} << k;
    return bits;
}

// Vectors of 32 characters, in routines marked with UTL_WIDE. Call them only if the processor has
// such vectors.
#if defined(__SSE2__)

#define UTL_WIDE __attribute__((target("avx2,bmi")))

inline bool utl_HasWideVectors() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi");
}

// Returns a mask with a bit for each of the 32 characters at `at` that is `c`.
UTL_WIDE inline uint32_t utl_EqualBits32(const char *at, char c) {
    const __m256i text = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(at));
    return static_cast<uint32_t>(
        _mm256_movemask_epi8(_mm256_cmpeq_epi8(text, _mm256_set1_epi8(c))));
}

#else

#define UTL_WIDE

inline bool utl_HasWideVectors() { return false; }

inline uint32_t utl_EqualBits32(const char *at, char c) {
    return utl_MoveMask(utl_CompareEqual(utl_LoadVector(at), c)) |
           utl_MoveMask(utl_CompareEqual(utl_LoadVector(at + 16), c)) << 16;
}

#endif

// Does the same for 64 characters.
UTL_WIDE inline uint64_t utl_EqualBits64(const char *at, char c) {
    return utl_EqualBits32(at, c) | uint64_t{utl_EqualBits32(at + 32, c)} << 32;
}

// Returns the number of zero bits below the lowest set bit; one bit must be set.
inline unsigned utl_CountTrailingZeros(unsigned bits) {
    return static_cast<unsigned>(__builtin_ctz(bits));
}
