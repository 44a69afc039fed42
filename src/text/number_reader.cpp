// text/number_reader.cpp - number conversion in tiers: a field of plain form by one vector, a short
// decimal by its digits, other decimals by from_chars, everything else by strtod.
//
// The first two tiers convert only what one rounding makes exact: an integer of at most 2^53 and a
// power of ten of at most 10^22 are held exactly by a double, so that their product or quotient is
// rounded once, as IEEE arithmetic requires (W. D. Clinger, How to Read Floating Point Numbers
// Accurately, 1990).
#include "text/number_reader.h"

#include "text/fields.h"
#include "text/fixed_text.h"
#include "text/powers_of_ten.h"

#include <bit>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

static constexpr uint64_t max_exact_integer = uint64_t{1} << 53;

// Eight characters as a word, the first in the lowest byte.
static uint64_t load_8_chars(const char *at) {
    uint64_t word = 0;
    memcpy(&word, at, sizeof word);
    return std::endian::native == std::endian::big ? __builtin_bswap64(word) : word;
}

// Subtracting '0' (0x30) from each byte of a word leaves the values of the digits.
static uint64_t digit_values(uint64_t word) { return word - 0x3030303030303030U; }

// Sets the top bit of the byte of each character that is not a digit. A character below '0' borrows
// in the subtraction, one above '9' (0x39) reaches 0x80 when 0x46 is added. A carry or borrow
// reaches later characters only, so that the first bit set is right.
static uint64_t non_digit_bits(uint64_t word) {
    return ((word + 0x4646464646464646U) | digit_values(word)) & 0x8080808080808080U;
}

// Combines eight digits, given as values in the bytes of a word with the first in the lowest, into
// their number by two multiplications. The first step makes pairs, 10 times each digit plus the
// next, in every other byte. Then 0x64 is 100 and 0xF4240 is 1,000,000, the weights of the first
// and third pair, and 0x2710 is 10,000, beside 1, those of the second and fourth; the upper half of
// each product is the sum of both. (Known from fast_float and simdjson, D. Lemire.)
static uint64_t combine_8_digits(uint64_t digits) {
    digits = digits * 10 + (digits >> 8);
    const uint64_t odd = ((digits & 0x000000FF000000FFU) * 0x000F424000000064U) >> 32;
    const uint64_t even = (((digits >> 16) & 0x000000FF000000FFU) * 0x0000271000000001U) >> 32;
    return (odd + even) & 0xFFFFFFFFU;
}

// The digits at the front of a text: the number they make, modulo 2^64, and their count.
struct digit_run {
    uint64_t number;
    int count;
};

// Parses up to eight digits at once: two such steps instead of a dozen single digits.
static digit_run parse_up_to_8_digits(const char *at) {
    const uint64_t word = load_8_chars(at);
    const uint64_t others = non_digit_bits(word);
    const int count = others == 0 ? 8 : __builtin_ctzll(others) / 8;
    if (count == 0) return {0, 0};
    // Moved to the end of the word, the digits have zeros before them.
    return {combine_8_digits(digit_values(word) << (64 - 8 * count)), count};
}

static constexpr uint64_t tens[9] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

// Appends the digits at `at` to `number`. Returns their count.
static int parse_digits(const char *at, const char *end, uint64_t *number) {
    const char *const begin = at;
    if (end - at >= 8) {
        const digit_run run = parse_up_to_8_digits(at);
        *number = *number * tens[run.count] + run.number;
        if (run.count < 8) return run.count;
        at += 8;
    }
    for (; at != end && utl_IsDigit(*at); ++at)
        *number = *number * 10 + static_cast<uint64_t>(*at - '0');
    return static_cast<int>(at - begin);
}

// Multiplies an integer of at most 2^53 by an exact power of ten.
static double scale_exactly(uint64_t digits, int exponent) {
    const auto whole = static_cast<double>(static_cast<int64_t>(digits));
    return exponent < 0 ? whole / utl_power_of_ten(-exponent) : whole * utl_power_of_ten(exponent);
}

// Sets the sign bit without a branch: signs follow no pattern that could be predicted.
static double with_sign(double magnitude, unsigned negative) {
    return std::bit_cast<double>(std::bit_cast<uint64_t>(magnitude) | uint64_t{negative} << 63);
}

// Reads a decimal whose parts a double holds exactly: at most 19 digits that make at most 2^53, and
// a power of ten of at most 22. Returns the end of the number, or null for all other text. The
// caller looks at the character there: another digit of the exponent or an x makes it a different
// number.
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
    if (count == 0 || count > 19 || digits > max_exact_integer) return nullptr;
    if (at != end && (*at == 'e' || *at == 'E')) {
        const bool exponent_is_negative = end - at > 1 && at[1] == '-';
        at += exponent_is_negative || (end - at > 1 && at[1] == '+') ? 2 : 1;
        int written = 0;
        const char *const first = at;
        for (; at != end && at - first < 4 && utl_IsDigit(*at); ++at)
            written = written * 10 + (*at - '0');
        if (at == first || at - first == 4) return nullptr;
        exponent += exponent_is_negative ? -written : written;
    }
    if (exponent <= -utl_exact_powers || exponent >= utl_exact_powers) return nullptr;
    *value = with_sign(scale_exactly(digits, exponent), negative);
    return at;
}

// Converts a run of `count` digits, at most eight. Sets a bit of `fault` if it contains another
// character.
static uint64_t convert_digits(const char *at, unsigned count, uint64_t *fault) {
    if (count == 0) return 0;
    const uint64_t word = load_8_chars(at);
    const unsigned trailing_bits = 64 - 8 * count; // of the characters after the digits
    *fault |= non_digit_bits(word) << trailing_bits;
    return combine_8_digits(digit_values(word) << trailing_bits);
}

// Removes "e+dd" from the end of the `length` characters at `at`. Returns the power of ten, 0
// without an exponent of this form.
static int strip_exponent(const char *at, unsigned *length) {
    if (*length < 5) return 0;
    const char *const tail = at + *length - 4;
    if (tail[0] != 'e' && tail[0] != 'E') return 0;
    if ((tail[1] != '+' && tail[1] != '-') || !utl_IsDigit(tail[2]) || !utl_IsDigit(tail[3]))
        return 0;
    *length -= 4;
    const int exponent = 10 * (tail[2] - '0') + (tail[3] - '0');
    return tail[1] == '-' ? -exponent : exponent;
}

// Reads the next field if it has the commonest form: an optional sign, up to eight digits, an
// optional point with up to eight digits, an optional exponent of two digits. One vector shows the
// begin, the end and the point, so that nothing is searched for twice. Returns the end of the
// field, or null if the field has another form or may continue after the vector.
static const char *parse_field_vector(const char *at, const char *end, double *number) {
    if (end - at < 24) return nullptr; // words of eight are loaded from within the vector
    const utl_vector text = utl_LoadVector(at);
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
    const uint64_t whole = convert_digits(digits, whole_count, &fault);
    const uint64_t part = convert_digits(digits + whole_count + point, part_count, &fault);
    exponent -= static_cast<int>(part_count);
    // With eight digits more the number stays below 2^53.
    if (fault != 0 || whole > 9'000'000) return nullptr;
    if (exponent <= -utl_exact_powers || exponent >= utl_exact_powers) return nullptr;
    *number = with_sign(scale_exactly(whole * tens[part_count] + part, exponent), sign);
    return stop;
}

const char *utl_ParseDecimalField(const char *at, const char *end, double *number) {
    const char *stop = parse_field_vector(at, end, number);
    if (!stop) stop = parse_exact_decimal(utl_FindField(at, end), end, number);
    return stop && (stop == end || utl_IsSeparator(*stop)) ? stop : nullptr;
}

// Converts by strtod, which needs zero-terminated text. Text without a number is 0: some runtimes
// return -0 for a minus sign alone.
static double convert_copy(std::string_view text) {
    char copy[2048];
    utl_CopyText(copy, text);
    char *end = nullptr;
    const double value = strtod(copy, &end);
    return end == copy ? 0.0 : value;
}

#ifdef __cpp_lib_to_chars

// Converts a decimal as strtod does and several times as fast. Returns false for a value outside
// the range and for a hexadecimal number.
static bool convert_decimal(std::string_view text, double *value) {
    const char *const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, *value);
    return error == std::errc() && (stop == end || (*stop != 'x' && *stop != 'X'));
}

#else

// The same for a library without from_chars for floating point, such as libc++ 14. strtod needs a
// zero-terminated copy, of whatever length.
static bool convert_decimal(std::string_view text, double *value) {
    const std::string copy(text);
    const char *const digits = copy.c_str() + (copy[0] == '-' ? 1 : 0);
    if (digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) return false;
    char *end = nullptr;
    errno = 0;
    *value = strtod(copy.c_str(), &end);
    return end != copy.c_str() && errno != ERANGE;
}

#endif

double utl_ToDouble(std::string_view text) {
    const char *const text_end = text.data() + text.size();
    double short_value = 0.0;
    if (parse_exact_decimal(text.data(), text_end, &short_value) == text_end) return short_value;

    // Everything but plain decimals is left to strtod: a leading plus or white space, hexadecimal,
    // infinite and not-a-number forms, and values outside the range.
    const size_t sign = !text.empty() && text.front() == '-' ? 1 : 0;
    if (text.size() > sign && (utl_IsDigit(text[sign]) || text[sign] == '.')) {
        double value = 0.0;
        if (convert_decimal(text, &value)) return value;
    }
    return convert_copy(text);
}

// True for white space as isspace knows it.
static bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

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
        if (!utl_IsDigit(c)) break;
        const auto digit = static_cast<uint64_t>(c - '0');
        magnitude = magnitude > (largest - digit) / 10 ? largest : magnitude * 10 + digit;
    }
    return static_cast<int>(static_cast<uint32_t>(negative ? 0 - magnitude : magnitude));
}
