// text/line_scan.cpp - line ends and marks from the bit masks of the same vectors.
#include "text/line_scan.h"

#include "text/simd.h"

#include <cstring>

utl_line_scan utl_ScanLineScalar(const char *begin, size_t max_length) {
    bool has_lt_or_nul = false;
    for (size_t k = 0; k < max_length; ++k) {
        if (begin[k] == '\n') return {k, true, has_lt_or_nul};
        has_lt_or_nul = has_lt_or_nul || begin[k] == '<' || begin[k] == '\0';
    }
    return {max_length, false, has_lt_or_nul};
}

utl_line_run utl_ScanLineRunScalar(const char *begin, size_t length, size_t limit,
                                   size_t max_lines) {
    utl_line_run run = {0, 0};
    while (run.lines < max_lines) {
        const char *line = begin + run.length;
        const size_t left = length - run.length;
        const void *found = memchr(line, '\n', left < limit ? left : limit);
        if (!found) break;
        const auto line_length = static_cast<size_t>(static_cast<const char *>(found) - line);
        if (memchr(line, '<', line_length)) break;
        ++run.lines;
        run.length += line_length + 1;
    }
    return run;
}

static utl_vector marks_of(utl_vector text) {
    return utl_CompareEqual(text, '<') | utl_CompareEqual(text, '\0');
}

// Returns true if one of the first `length` characters is a mark.
static bool has_mark(utl_vector marks, unsigned length) {
    return (utl_MoveMask(marks) & ((1U << length) - 1)) != 0;
}

static utl_line_scan scan_line(const char *begin, size_t max_length) {
    utl_vector marks = {}; // of the previous vectors
    size_t k = 0;
    for (const size_t whole = max_length & ~size_t{15}; k < whole; k += 16) {
        const utl_vector text = utl_LoadVector(begin + k);
        const unsigned ends = utl_MoveMask(utl_CompareEqual(text, '\n'));
        if (ends != 0) {
            const unsigned length = utl_CountTrailingZeros(ends);
            return {k + length, true, has_mark(marks, 16) || has_mark(marks_of(text), length)};
        }
        marks |= marks_of(text);
    }
    const auto rest = static_cast<unsigned>(max_length - k);
    const utl_vector text = utl_LoadVector(begin + k);
    const unsigned ends = utl_MoveMask(utl_CompareEqual(text, '\n')) & ((1U << rest) - 1);
    const unsigned length = ends != 0 ? utl_CountTrailingZeros(ends) : rest;
    return {k + length, ends != 0, has_mark(marks, 16) || has_mark(marks_of(text), length)};
}

static utl_line_run scan_line_run(const char *begin, size_t length, size_t limit,
                                  size_t max_lines) {
    size_t line = 0; // where the current line begins
    size_t lines = 0;
    for (size_t k = 0; k < length && k < line + limit; k += 16) {
        const utl_vector text = utl_LoadVector(begin + k);
        const utl_vector line_ends = utl_CompareEqual(text, '\n');
        const utl_vector lt = utl_CompareEqual(text, '<');
        if (utl_MoveMask(line_ends | lt) == 0) continue;
        unsigned ends = utl_MoveMask(line_ends);
        const unsigned marks = utl_MoveMask(lt);
        // Line ends before the mark still count.
        if (marks != 0) ends &= (1U << utl_CountTrailingZeros(marks)) - 1;
        for (; ends != 0; ends &= ends - 1) {
            const size_t end = k + utl_CountTrailingZeros(ends);
            if (end >= length || end - line >= limit) return {lines, line};
            line = end + 1;
            if (++lines == max_lines) return {lines, line};
        }
        if (marks != 0) break;
    }
    return {lines, line};
}

// The same with wide vectors and masks of 64 characters.

UTL_WIDE static utl_line_scan scan_line_wide(const char *begin, size_t max_length) {
    bool has_marks = false;
    for (size_t k = 0; k < max_length; k += 64) {
        const char *at = begin + k;
        const size_t left = max_length - k;
        const uint64_t inside = left < 64 ? (uint64_t{1} << left) - 1 : ~uint64_t{0};
        const uint64_t ends = utl_EqualBits64(at, '\n') & inside;
        const uint64_t marks = utl_EqualBits64(at, '<') | utl_EqualBits64(at, '\0');
        if (ends != 0) {
            const auto length = static_cast<size_t>(std::countr_zero(ends));
            const uint64_t before = (uint64_t{1} << length) - 1;
            return {k + length, true, has_marks || (marks & before) != 0};
        }
        has_marks = has_marks || (marks & inside) != 0;
    }
    return {max_length, false, has_marks};
}

UTL_WIDE static utl_line_run scan_line_run_wide(const char *begin, size_t length, size_t limit,
                                                size_t max_lines) {
    size_t line = 0; // where the current line begins
    size_t lines = 0;
    for (size_t k = 0; k < length && k < line + limit; k += 64) {
        uint64_t ends = utl_EqualBits64(begin + k, '\n');
        const uint64_t marks = utl_EqualBits64(begin + k, '<');
        ends &= (marks & (0 - marks)) - 1; // before the first mark, or all
        for (; ends != 0; ends &= ends - 1) {
            const size_t end = k + static_cast<size_t>(std::countr_zero(ends));
            if (end >= length || end - line >= limit) return {lines, line};
            line = end + 1;
            if (++lines == max_lines) return {lines, line};
        }
        if (marks != 0) break;
    }
    return {lines, line};
}

bool utl_uses_wide_vectors = utl_HasWideVectors();

utl_line_scan utl_ScanLine(const char *begin, size_t max_length) {
    if (utl_uses_wide_vectors) return scan_line_wide(begin, max_length);
    return scan_line(begin, max_length);
}

utl_line_run utl_ScanLineRun(const char *begin, size_t length, size_t limit, size_t max_lines) {
    if (utl_uses_wide_vectors) return scan_line_run_wide(begin, length, limit, max_lines);
    return scan_line_run(begin, length, limit, max_lines);
}
