// text/number_reader.cpp - number conversion in tiers: a field of plain form by words of eight
// characters, other decimals by from_chars, everything else by strtod.
//
// The first tier converts only what one rounding makes exact: an integer of at most 2^53 and a
// power of ten of at most 10^22 are held exactly by a double, so that their product or quotient is
// rounded once, as IEEE arithmetic requires (W. D. Clinger, How to Read Floating Point Numbers
// Accurately, 1990).
#include "text/number_reader.h"

#include "text/fixed_text.h"
#include "text/powers_of_ten.h"
#include "text/simd.h"

#include <bit>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

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

static constexpr uint64_t tens[9] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

// Multiplies an integer of at most 2^53 by an exact power of ten.
static double scale_exactly(uint64_t digits, int exponent) {
    const auto whole = static_cast<double>(static_cast<int64_t>(digits));
    return exponent < 0 ? whole / utl_power_of_ten(-exponent) : whole * utl_power_of_ten(exponent);
}

// Sets the sign bit without a branch: signs follow no pattern that could be predicted.
static double with_sign(double magnitude, unsigned negative) {
    return std::bit_cast<double>(std::bit_cast<uint64_t>(magnitude) | uint64_t{negative} << 63);
}

// Converts the first `count` characters of a word, 1 to 8 digits. Sets a bit of `fault` if one is
// another character.
static uint64_t convert_digits(uint64_t word, unsigned count, uint64_t *fault) {
    const unsigned trailing_bits = 64 - 8 * count; // of the characters after the digits
    *fault |= non_digit_bits(word) << trailing_bits;
    // Moved to the end of the word, the digits have zeros before them.
    return combine_8_digits(digit_values(word) << trailing_bits);
}

// Loads eight of the nine characters at `at`, without the one at `point`, 0 to 7.
static uint64_t load_without_point(const char *at, unsigned point) {
    const uint64_t after_point = ~uint64_t{0} << (8 * point);
    return (load_8_chars(at) & ~after_point) | (load_8_chars(at + 1) & after_point);
}

// Returns true if the four characters at `tail` are "e+dd", and sets `exponent`.
static bool read_exponent(const char *tail, int *exponent) {
    const unsigned sign = static_cast<unsigned char>(tail[1]) - unsigned{'+'}; // 0, or 2 for '-'
    const unsigned tens_digit = static_cast<unsigned char>(tail[2]) - unsigned{'0'};
    const unsigned digit = static_cast<unsigned char>(tail[3]) - unsigned{'0'};
    if ((tail[0] | 0x20) != 'e' || (sign & ~2U) != 0 || tens_digit > 9 || digit > 9) return false;
    const auto power = static_cast<int>(10 * tens_digit + digit);
    *exponent = sign != 0 ? -power : power;
    return true;
}

// A decimal number: digits times a power of ten.
struct decimal {
    uint64_t digits; // of at most 2^53
    int exponent;
};

// Reads up to eight digits, a point that may be missing, and up to eight digits. Returns false if
// the `length` characters at `at`, which is 20 or less, have another form. The mask `points` shows
// the points among them.
static bool read_mantissa(const char *at, unsigned length, unsigned points, decimal *number) {
    const unsigned whole_count = utl_CountTrailingZeros(points | 1U << length);
    const unsigned count = length - (whole_count < length ? 1 : 0);
    const unsigned part_count = count - whole_count;
    uint64_t fault = 0;
    if (count <= 8) { // nearly all numbers in the form %e
        if (count == 0) return false;
        const uint64_t word =
            whole_count < 8 ? load_without_point(at, whole_count) : load_8_chars(at);
        number->digits = convert_digits(word, count, &fault);
    } else {
        if (whole_count - 1 > 7 || part_count - 1 > 7) return false;
        const uint64_t whole = convert_digits(load_8_chars(at), whole_count, &fault);
        const uint64_t part =
            convert_digits(load_8_chars(at + whole_count + 1), part_count, &fault);
        if (whole > 90'000'000) return false; // with eight digits more it stays below 2^53
        number->digits = whole * tens[part_count] + part;
    }
    number->exponent = -static_cast<int>(part_count);
    return fault == 0;
}

double utl_ReadField(std::string_view field) {
    const unsigned negative = field.front() == '-';
    const char *const at = field.data() + negative;
    size_t length = field.size() - negative;
    int exponent = 0;
    if (length > 4 && read_exponent(at + length - 4, &exponent)) length -= 4;
    if (length > 17) return utl_ToDouble(field);

    const unsigned points = utl_MoveMask(utl_CompareEqual(utl_LoadVector(at), '.'));
    decimal number = {};
    const bool is_plain = read_mantissa(at, static_cast<unsigned>(length), points, &number);
    exponent += number.exponent;
    if (!is_plain || exponent <= -utl_exact_powers || exponent >= utl_exact_powers)
        return utl_ToDouble(field);
    return with_sign(scale_exactly(number.digits, exponent), negative);
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

bool utl_IsWholeNumber(std::string_view text, uint32_t max) {
    uint64_t number = 0;
    for (const char c : text) {
        if (!utl_IsDigit(c)) return false;
        number = 10 * number + static_cast<uint64_t>(c - '0');
        if (number > max) return false;
    }
    return !text.empty();
}
