// text/number_reader.cpp - see number_reader.h.
#include "text/number_reader.h"

#include "text/field_scan.h"
#include "text/fixed_text.h"
#include "text/powers_of_ten.h"

#include <bit>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>

static bool is_digit(char c) { return c >= '0' && c <= '9'; }

// The digits at the front of a text: the number they make, modulo 2^64, and how many they are.
struct digit_run {
    uint64_t number;
    int count;
};

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__

// The number that eight digits make, each a value of 0 to 9 in its byte, the first in the lowest.
static uint64_t combine_8_digits(uint64_t digits) {
    digits = digits * 10 + (digits >> 8);
    const uint64_t high = ((digits & 0x000000FF000000FFU) * 0x000F424000000064U) >> 32;
    const uint64_t low = (((digits >> 16) & 0x000000FF000000FFU) * 0x0000271000000001U) >> 32;
    return (high + low) & 0xFFFFFFFFU;
}

// Up to eight digits at once, in the bytes of a word: a number of ordinary length takes two such
// steps instead of a dozen.
static digit_run parse_up_to_8_digits(const char *at) {
    uint64_t word = 0;
    memcpy(&word, at, sizeof word);
    const uint64_t values = word - 0x3030303030303030U;
    const uint64_t others = ((word + 0x4646464646464646U) | values) & 0x8080808080808080U;
    const int count = others == 0 ? 8 : __builtin_ctzll(others) / 8;
    if (count == 0) return {0, 0};
    return {combine_8_digits(values << (64 - 8 * count)), count}; // as if zeros stood in front
}

#else

static digit_run parse_up_to_8_digits(const char *at) {
    digit_run run = {0, 0};
    for (; run.count < 8 && is_digit(at[run.count]); ++run.count)
        run.number = run.number * 10 + static_cast<uint64_t>(at[run.count] - '0');
    return run;
}

#endif

static constexpr uint64_t tens[9] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

// Takes the digits at `at` separators_from_begin those that `number` has already. Returns how many.
static int parse_digits(const char *at, const char *end, uint64_t *number) {
    const char *const begin = at;
    if (end - at >= 8) {
        const digit_run run = parse_up_to_8_digits(at);
        *number = *number * tens[run.count] + run.number;
        if (run.count < 8) return run.count;
        at += 8;
    }
    for (; at != end && is_digit(*at); ++at)
        *number = *number * 10 + static_cast<uint64_t>(*at - '0');
    return static_cast<int>(at - begin);
}

// `digits` of at most 2^53 times a power of ten that is held exactly: rounded once.
static double scaled(uint64_t digits, int exponent) {
    const auto whole = static_cast<double>(static_cast<int64_t>(digits));
    return exponent < 0 ? whole / utl_power_of_ten(-exponent) : whole * utl_power_of_ten(exponent);
}

// No branch: signs come and go without a pattern.
static double with_sign(double magnitude, unsigned negative) {
    return std::bit_cast<double>(std::bit_cast<uint64_t>(magnitude) | uint64_t{negative} << 63);
}

// Reads a plain decimal that a double and a power of ten hold exactly: at most 19 digits, the
// number they make at most 2^53, a power of ten of at most 22. One multiplication or division then
// rounds as strtod does. Returns where the number ends, or null for all other text. What follows
// may make it another number: a digit of the exponent, or an x.
static const char *parse_exact_decimal(const char *at, const char *end, double *value) {
    const bool negative = at != end && *at == '-';
    at += negative;

    uint64_t digits = 0;
    int count = parse_digits(at, end, &digits);
    int exponent = 0;
    at += count;
    if (at != end && *at == '.') {
        exponent = -parse_digits(++at, end, &digits);
        at -= exponent;
        count -= exponent;
    }
    if (count == 0 || count > 19 || digits > (uint64_t{1} << 53)) return nullptr;
    if (at != end && (*at == 'e' || *at == 'E')) {
        const bool exponent_is_negative = end - at > 1 && at[1] == '-';
        at += exponent_is_negative || (end - at > 1 && at[1] == '+') ? 2 : 1;
        int written = 0;
        const char *const first = at;
        for (; at != end && at - first < 4 && is_digit(*at); ++at)
            written = written * 10 + (*at - '0');
        if (at == first || at - first == 4) return nullptr;
        exponent += exponent_is_negative ? -written : written;
    }
    if (exponent <= -utl_exact_powers || exponent >= utl_exact_powers) return nullptr;
    *value = with_sign(scaled(digits, exponent), negative);
    return at;
}

#if defined(__SSE2__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__

// A run of digits of known length, at most eight; `fault` becomes other than 0 when it holds
// something else.
static uint64_t known_digits(const char *at, unsigned count, uint64_t *fault) {
    if (count == 0) return 0;
    uint64_t word = 0;
    memcpy(&word, at, sizeof word);
    const unsigned trailing_bits = 64 - 8 * count; // bits of the characters after the digits
    const uint64_t values = word - 0x3030303030303030U;
    *fault |= (((word + 0x4646464646464646U) | values) & 0x8080808080808080U) << trailing_bits;
    return combine_8_digits(values << trailing_bits);
}

// Takes "e+dd" off the end of the `length` characters at `at`. Returns the power of ten that it
// stands for, 0 without it.
static int strip_exponent(const char *at, unsigned *length) {
    if (*length < 5) return 0;
    const char *const tail = at + *length - 4;
    if (tail[0] != 'e' && tail[0] != 'E') return 0;
    if ((tail[1] != '+' && tail[1] != '-') || !is_digit(tail[2]) || !is_digit(tail[3])) return 0;
    *length -= 4;
    const int exponent = 10 * (tail[2] - '0') + (tail[3] - '0');
    return tail[1] == '-' ? -exponent : exponent;
}

// The next number when it is of the plainest kind: a sign perhaps, up to eight digits, a point
// perhaps and up to eight digits, and perhaps an exponent of two digits. One vector tells where it
// begins and ends and where its point is, so that nothing is looked for twice. Returns where it
// ends, or null when the general way must look.
static const char *parse_field_vector(const char *at, const char *end, double *number) {
    if (end - at < 24) return nullptr; // words of eight are read from within the vector
    const __m128i text = utl_LoadVector(at);
    const unsigned separators = utl_SeparatorBits(text);
    const unsigned begin = utl_CountTrailingZeros(~separators);
    const unsigned separators_from_begin = separators >> begin;
    if (begin >= 16 || separators_from_begin == 0) return nullptr;
    const char *const stop = at + begin + utl_CountTrailingZeros(separators_from_begin);

    const unsigned sign = at[begin] == '-';
    const char *const digits = at + begin + sign;
    auto length = static_cast<unsigned>(stop - digits);
    int exponent = strip_exponent(digits, &length);
    const unsigned points = utl_MoveMask(utl_CompareEqual(text, '.')) >> (begin + sign);
    const unsigned whole_count = utl_CountTrailingZeros(points | (1U << length));
    if (whole_count > length) return nullptr;
    const unsigned point = whole_count < length ? 1 : 0;
    const unsigned part_count = length - whole_count - point;
    if (whole_count > 8 || part_count > 8 || whole_count + part_count == 0) return nullptr;

    uint64_t fault = 0;
    const uint64_t whole = known_digits(digits, whole_count, &fault);
    const uint64_t part = known_digits(digits + whole_count + point, part_count, &fault);
    exponent -= static_cast<int>(part_count);
    if (fault != 0 || whole > 9'000'000) return nullptr; // below 2^53 with eight digits more
    if (exponent <= -utl_exact_powers || exponent >= utl_exact_powers) return nullptr;
    *number = with_sign(scaled(whole * tens[part_count] + part, exponent), sign);
    return stop;
}

#else

static const char *parse_field_vector(const char * /*at*/, const char * /*end*/,
                                      double * /*number*/) {
    return nullptr;
}

#endif

bool utl_NextNumber(std::string_view *rest, double *number) {
    const char *const end = rest->data() + rest->size();
    const char *stop = parse_field_vector(rest->data(), end, number);
    if (!stop) stop = parse_exact_decimal(utl_FindField(rest->data(), end), end, number);
    if (stop && (stop == end || utl_IsSeparator(*stop))) {
        *rest = {stop, static_cast<size_t>(end - stop)};
        return true;
    }
    std::string_view field;
    *number = utl_NextField(rest, &field) ? utl_ToDouble(field) : 0.0;
    return !field.empty();
}

// strtod wants a zero-terminated text. Text without a number is 0; some runtimes make a minus sign
// before it count.
static double convert_copy(std::string_view text) {
    char copy[2048];
    utl_CopyText(copy, text);
    char *end = nullptr;
    const double value = strtod(copy, &end);
    return end == copy ? 0.0 : value;
}

double utl_ToDouble(std::string_view text) {
    const char *const text_end = text.data() + text.size();
    double short_value = 0.0;
    if (parse_exact_decimal(text.data(), text_end, &short_value) == text_end) return short_value;

    // from_chars reads plain decimals as strtod does, and several times as fast. All else is left
    // to strtod: a leading plus or white space, hexadecimal, infinite and not-a-number forms, and
    // what lies outside the range.
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
