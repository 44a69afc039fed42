// util/line_scan.cpp - see line_scan.h.
#include "util/line_scan.h"

#include <cstring>

utl_scanned utl_ScanLinePlainly(const char *begin, size_t most) {
    bool marked = false;
    for (size_t k = 0; k < most; ++k) {
        if (begin[k] == '\n') return {k, true, marked};
        marked = marked || begin[k] == '<' || begin[k] == '\0';
    }
    return {most, false, marked};
}

utl_skipped utl_SkipLinesPlainly(const char *begin, size_t length, size_t limit, size_t most_lines) {
    utl_skipped skipped = {0, 0};
    while (skipped.lines < most_lines) {
        const char *line = begin + skipped.length;
        const size_t left = length - skipped.length;
        const void *found = memchr(line, '\n', left < limit ? left : limit);
        if (!found) break;
        const auto line_length = static_cast<size_t>(static_cast<const char *>(found) - line);
        if (memchr(line, '<', line_length)) break;
        ++skipped.lines;
        skipped.length += line_length + 1;
    }
    return skipped;
}

#ifdef __SSE2__

#include <emmintrin.h>

static __m128i load(const char *at) { return _mm_loadu_si128(reinterpret_cast<const __m128i *>(at)); }

static __m128i equal_to(__m128i text, char c) { return _mm_cmpeq_epi8(text, _mm_set1_epi8(c)); }

static unsigned bits_of(__m128i flags) { return static_cast<unsigned>(_mm_movemask_epi8(flags)); }

static unsigned first_bit(unsigned bits) { return static_cast<unsigned>(__builtin_ctz(bits)); }

static __m128i marks_of(__m128i text) { return _mm_or_si128(equal_to(text, '<'), equal_to(text, '\0')); }

// Whether one of the first `length` characters is a mark.
static bool has_mark(__m128i marks, unsigned length) { return (bits_of(marks) & ((1U << length) - 1)) != 0; }

utl_scanned utl_ScanLine(const char *begin, size_t most) {
    __m128i marks = _mm_setzero_si128(); // of the vectors before
    size_t k = 0;
    for (const size_t whole = most & ~size_t{15}; k < whole; k += 16) {
        const __m128i text = load(begin + k);
        const unsigned ends = bits_of(equal_to(text, '\n'));
        if (ends != 0) {
            const unsigned length = first_bit(ends);
            return {k + length, true, has_mark(marks, 16) || has_mark(marks_of(text), length)};
        }
        marks = _mm_or_si128(marks, marks_of(text));
    }
    const auto rest = static_cast<unsigned>(most - k);
    const __m128i text = load(begin + k);
    const unsigned ends = bits_of(equal_to(text, '\n')) & ((1U << rest) - 1);
    const unsigned length = ends != 0 ? first_bit(ends) : rest;
    return {k + length, ends != 0, has_mark(marks, 16) || has_mark(marks_of(text), length)};
}

utl_skipped utl_SkipLines(const char *begin, size_t length, size_t limit, size_t most_lines) {
    size_t line = 0; // where the line begins
    size_t lines = 0;
    for (size_t k = 0; k < length; k += 16) {
        const __m128i text = load(begin + k);
        unsigned ends = bits_of(equal_to(text, '\n'));
        const unsigned marks = bits_of(equal_to(text, '<'));
        if ((ends | marks) == 0) continue;
        if (marks != 0) ends &= (1U << first_bit(marks)) - 1; // line ends before the mark still count
        for (; ends != 0; ends &= ends - 1) {
            const size_t end = k + first_bit(ends);
            if (end >= length || end - line >= limit) return {lines, line};
            line = end + 1;
            if (++lines == most_lines) return {lines, line};
        }
        if (marks != 0) break;
    }
    return {lines, line};
}

#else

utl_scanned utl_ScanLine(const char *begin, size_t most) { return utl_ScanLinePlainly(begin, most); }

utl_skipped utl_SkipLines(const char *begin, size_t length, size_t limit, size_t most_lines) {
    return utl_SkipLinesPlainly(begin, length, limit, most_lines);
}

#endif
