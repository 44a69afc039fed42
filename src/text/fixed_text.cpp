// text/fixed_text.cpp - see fixed_text.h.
#include "text/fixed_text.h"

#include "text/field_scan.h"

#include <cstring>

void utl_CopyText(char *to, size_t size, std::string_view text) {
    const size_t length = text.size() < size ? text.size() : size - 1;
    if (length > 0) memcpy(to, text.data(), length);
    to[length] = '\0';
}

std::string_view utl_TrimEnd(std::string_view text) {
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

bool utl_NextField(std::string_view *rest, std::string_view *field) {
    const char *const end = rest->data() + rest->size();
    const char *const begin = utl_FindField(rest->data(), end);
    const char *const at = utl_FindSeparator(begin, end);
    *field = {begin, static_cast<size_t>(at - begin)};
    *rest = {at, static_cast<size_t>(end - at)};
    return !field->empty();
}

bool utl_SkipFields(std::string_view *rest, unsigned count) {
    const char *at = rest->data();
    const char *const end = at + rest->size();
    for (; count > 0; --count) {
        at = utl_FindField(at, end);
        if (at == end) break;
        at = utl_FindSeparator(at, end);
    }
    *rest = {at, static_cast<size_t>(end - at)};
    return count == 0;
}

// White space as isspace knows it.
static bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

static bool is_digit(char c) { return c >= '0' && c <= '9'; }

static std::string_view without_leading_space(std::string_view text) {
    while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
    return text;
}

int utl_ToInt(std::string_view text) {
    text = without_leading_space(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);

    uint64_t magnitude = 0;
    const uint64_t largest = static_cast<uint64_t>(INT64_MAX) + (negative ? 1 : 0);
    for (const char c : text) {
        if (!is_digit(c)) break;
        const auto digit = static_cast<uint64_t>(c - '0');
        magnitude = magnitude > (largest - digit) / 10 ? largest : magnitude * 10 + digit;
    }
    return static_cast<int>(static_cast<uint32_t>(negative ? 0 - magnitude : magnitude));
}
