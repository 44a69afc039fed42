// text/line_scan.cpp - see line_scan.h.
#include "text/line_scan.h"

#include "text/simd.h"

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

static __m128i marks_of(__m128i text) {
    return _mm_or_si128(utl_EqualTo(text, '<'), utl_EqualTo(text, '\0'));
}

// Whether one of the first `length` characters is a mark.
static bool has_mark(__m128i marks, unsigned length) {
    return (utl_BitsOf(marks) & ((1U << length) - 1)) != 0;
}

utl_scanned utl_ScanLine(const char *begin, size_t most) {
    __m128i marks = _mm_setzero_si128(); // of the vectors before
    size_t k = 0;
    for (const size_t whole = most & ~size_t{15}; k < whole; k += 16) {
        const __m128i text = utl_LoadVector(begin + k);
        const unsigned ends = utl_BitsOf(utl_EqualTo(text, '\n'));
        if (ends != 0) {
            const unsigned length = utl_FirstBit(ends);
            return {k + length, true, has_mark(marks, 16) || has_mark(marks_of(text), length)};
        }
        marks = _mm_or_si128(marks, marks_of(text));
    }
    const auto rest = static_cast<unsigned>(most - k);
    const __m128i text = utl_LoadVector(begin + k);
    const unsigned ends = utl_BitsOf(utl_EqualTo(text, '\n')) & ((1U << rest) - 1);
    const unsigned length = ends != 0 ? utl_FirstBit(ends) : rest;
    return {k + length, ends != 0, has_mark(marks, 16) || has_mark(marks_of(text), length)};
}

utl_skipped utl_SkipLines(const char *begin, size_t length, size_t limit, size_t most_lines) {
    size_t line = 0; // where the line begins
    size_t lines = 0;
    for (size_t k = 0; k < length && k < line + limit; k += 16) {
        const __m128i text = utl_LoadVector(begin + k);
        const __m128i line_ends = utl_EqualTo(text, '\n');
        const __m128i marked = utl_EqualTo(text, '<');
        if (utl_BitsOf(_mm_or_si128(line_ends, marked)) == 0) continue;
        unsigned ends = utl_BitsOf(line_ends);
        const unsigned marks = utl_BitsOf(marked);
        if (marks != 0) ends &= (1U << utl_FirstBit(marks)) - 1; // line ends before the mark still count
        for (; ends != 0; ends &= ends - 1) {
            const size_t end = k + utl_FirstBit(ends);
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
