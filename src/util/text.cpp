// util/text.cpp - see text.h.
#include "util/text.h"

#include "util/powers_of_ten.h"

#include <charconv>
#include <cstdlib>
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

static bool is_separator(char c) { return c == ' ' || c == ','; }

bool utl_NextField(std::string_view *rest, std::string_view *field) {
    const char *at = rest->data();
    const char *const end = at + rest->size();
    while (at != end && is_separator(*at)) ++at;
    const char *const begin = at;
    while (at != end && !is_separator(*at)) ++at;
    *field = {begin, static_cast<size_t>(at - begin)};
    *rest = {at, static_cast<size_t>(end - at)};
    return !field->empty();
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

// strtod wants a zero-terminated text.
static double convert_copy(std::string_view text) {
    char copy[2048];
    utl_CopyText(copy, text);
    return strtod(copy, nullptr);
}

// Reads a plain decimal that a double and a power of ten hold exactly: at most 19 digits, the number they make below
// 2^53, a power of ten of at most 22. One multiplication or division then rounds as strtod does. Returns false for all
// other text, also for what may go on as hexadecimal.
static bool read_short_decimal(std::string_view text, double *value) {
    const char *at = text.data();
    const char *const end = at + text.size();
    const bool negative = at != end && *at == '-';
    if (negative) ++at;

    uint64_t digits = 0;
    int exponent = 0;
    const char *first = at;
    for (; at != end && is_digit(*at); ++at) digits = digits * 10 + static_cast<uint64_t>(*at - '0');
    auto count = at - first;
    if (at != end && *at == '.') {
        first = ++at;
        for (; at != end && is_digit(*at); ++at) digits = digits * 10 + static_cast<uint64_t>(*at - '0');
        count += at - first;
        exponent = static_cast<int>(first - at);
    }
    if (count == 0 || count > 19) return false;
    if (at != end && (*at == 'e' || *at == 'E')) {
        ++at;
        const bool below_one = at != end && *at == '-';
        if (at != end && (*at == '-' || *at == '+')) ++at;
        if (end - at < 1 || end - at > 3) return false;
        int written = 0;
        for (; at != end && is_digit(*at); ++at) written = written * 10 + (*at - '0');
        exponent += below_one ? -written : written;
    }
    if (at != end || digits > (uint64_t{1} << 53) || exponent <= -utl_exact_powers ||
        exponent >= utl_exact_powers)
        return false;
    const auto whole = static_cast<double>(digits);
    const double magnitude =
        exponent < 0 ? whole / utl_power_of_ten(-exponent) : whole * utl_power_of_ten(exponent);
    *value = negative ? -magnitude : magnitude;
    return true;
}

double utl_ToDouble(std::string_view text) {
    double short_value = 0.0;
    if (read_short_decimal(text, &short_value)) return short_value;

    // from_chars reads plain decimals as strtod does, and several times as fast. All else is left to strtod: a leading
    // plus, hexadecimal, infinite and not-a-number forms, and what lies outside the range.
    text = without_leading_space(text);
    const size_t sign = !text.empty() && text.front() == '-' ? 1 : 0;
    if (text.size() > sign && (is_digit(text[sign]) || text[sign] == '.')) {
        double value = 0.0;
        const char *const end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, value);
        const bool hexadecimal = stop != end && (*stop == 'x' || *stop == 'X');
        if (error == std::errc() && !hexadecimal) return value;
    }
    return convert_copy(text);
}
