// text/shortest_writer.cpp - shortest text of a number: by a division that is exact for decimals of
// at most 15 digits, by the library for the others.
#include "text/number_writer.h"

#include "text/powers_of_ten.h"
#include "text/three_digits.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>

// Two different decimals of 15 digits are never the same double (C11 5.2.4.2.2, DBL_DIG). So if
// one of them reads back to a value, it is the only one, and without its trailing zeros it is the
// shortest text. Result files have 5 to 8 digits, so that most of their values are found among the
// decimals of nine digits, in a third of the time of the library.
static constexpr int few_digits = 9; // fit into 32 bits
static constexpr int max_digits = 15;

// Exponents of the values that are tried: the power of ten that scales them is exact.
static constexpr int min_exponent = max_digits - utl_exact_powers; // 10^(14 + 8) is 10^22
static constexpr int max_exponent = max_digits - 1;

namespace {

// The value d.ddd times ten to the exponent.
struct decimal {
    char digits[16]; // without trailing zeros; further characters have any value
    int length;      // number of digits, 0 if there is no such decimal
    int exponent;
};

} // namespace

// Returns the exponent of the first digit, for a value that is not subnormal.
static int decimal_exponent(double magnitude) {
    const int binary = static_cast<int>(std::bit_cast<uint64_t>(magnitude) >> 52) - 1023;
    // log10(2) = 0.30103 is 1233/4096 with an error of 5e-6 (S. E. Anderson, Bit Twiddling Hacks):
    // exact or one too low within the exponents that are used here.
    const int exponent = (binary * 1233) >> 12;
    if (exponent < min_exponent || exponent > max_exponent) return exponent;
    if (exponent + 1 < 0) return exponent + (magnitude * utl_power_of_ten(-exponent - 1) >= 1.0);
    return exponent + (magnitude >= utl_power_of_ten(exponent + 1));
}

// Returns the decimal of `digits` digits that reads back to a value with this exponent, as an
// integer, or 0 if there is none.
static uint64_t scale(double magnitude, int exponent, int digits) {
    const double power = utl_power_of_ten(digits - 1 - exponent);
    // Scaling and the value itself are off by at most 0.12 each, so that this is the right number.
    const double product = magnitude * power + 0.5;
    const auto scaled = static_cast<int64_t>(product);
    // Both operands are exact, so the quotient is what reading the decimal gives.
    return static_cast<double>(scaled) / power == magnitude ? static_cast<uint64_t>(scaled) : 0;
}

static char *write_nine_digits(char *to, unsigned number) {
    to = utl_WriteThreeDigits(to, number / 1'000'000);
    to = utl_WriteThreeDigits(to, number / 1000 % 1000);
    return utl_WriteThreeDigits(to, number % 1000);
}

static char *write_fifteen_digits(char *to, uint64_t number) {
    const auto high = static_cast<unsigned>(number / 1'000'000'000);
    to = utl_WriteThreeDigits(to, high / 1000);
    to = utl_WriteThreeDigits(to, high % 1000);
    return write_nine_digits(to, static_cast<unsigned>(number % 1'000'000'000));
}

// Finds the decimal of at most 15 digits that reads back to the value.
static decimal find_decimal(double magnitude) {
    decimal found = {};
    found.exponent = decimal_exponent(magnitude);
    if (found.exponent < min_exponent || found.exponent > max_exponent) return found;
    const char *end = found.digits;
    uint64_t number = 0;
    if (found.exponent < few_digits && (number = scale(magnitude, found.exponent, few_digits)) != 0)
        end = write_nine_digits(found.digits, static_cast<unsigned>(number));
    else if ((number = scale(magnitude, found.exponent, max_digits)) != 0)
        end = write_fifteen_digits(found.digits, number);
    while (end != found.digits && end[-1] == '0') --end;
    found.length = static_cast<int>(end - found.digits);
    return found;
}

static char *write_exponent(char *to, int exponent) {
    *to++ = 'e';
    *to++ = exponent < 0 ? '-' : '+';
    const int magnitude = exponent < 0 ? -exponent : exponent;
    if (magnitude < 10) *to++ = '0';
    return std::to_chars(to, to + 3, magnitude).ptr;
}

static char *write_scientific(char *to, const decimal &number) {
    *to++ = number.digits[0];
    if (number.length > 1) *to++ = '.';
    to = std::copy_n(number.digits + 1, number.length - 1, to);
    return write_exponent(to, number.exponent);
}

// Writes a value below 1 as 0.000ddd.
static char *write_fraction(char *to, const decimal &number) {
    *to++ = '0';
    *to++ = '.';
    to = std::fill_n(to, -number.exponent - 1, '0');
    return std::copy_n(number.digits, number.length, to);
}

// Writes an integer as ddd000.
static char *write_integer(char *to, const decimal &number) {
    to = std::copy_n(number.digits, number.length, to);
    return std::fill_n(to, number.exponent + 1 - number.length, '0');
}

// Writes the digits with a point between them, where 0 <= exponent < length - 1. Copies of a fixed
// length are faster than those of the lengths that are needed.
static char *write_mixed(char *to, const decimal &number) {
    memcpy(to, number.digits, sizeof number.digits);
    to[number.exponent + 1] = '.';
    memcpy(to + number.exponent + 2, number.digits + number.exponent + 1,
           sizeof number.digits - static_cast<size_t>(number.exponent) - 1);
    return to + number.length + 1;
}

// Writes the shorter of both forms, that without an exponent if they have the same length, as
// std::to_chars does.
static char *write_decimal(char *to, const decimal &number) {
    const int scientific_length =
        number.length + (number.length > 1 ? 5 : 4); // for |exponent| < 100
    if (number.exponent < 0)
        return 1 - number.exponent + number.length <= scientific_length
                   ? write_fraction(to, number)
                   : write_scientific(to, number);
    if (number.exponent < number.length - 1) return write_mixed(to, number);
    return number.exponent + 1 <= scientific_length ? write_integer(to, number)
                                                    : write_scientific(to, number);
}

// Calls the library also where it has this routine but does not announce it, as libc++ 14.
static char *write_by_library(char *to, double magnitude) {
    return std::to_chars(to, to + utl_max_number_chars, magnitude).ptr;
}

static char *write_text(char *to, std::string_view text) {
    return std::copy(text.begin(), text.end(), to);
}

char *utl_WriteShortest(char *to, double value) {
    if (std::isnan(value)) return write_text(to, "nan");
    if (std::signbit(value)) *to++ = '-';
    const double magnitude = std::fabs(value);
    if (magnitude == 0.0) return write_text(to, "0");
    if (std::isinf(magnitude)) return write_text(to, "inf");
    const decimal number = find_decimal(magnitude);
    return number.length > 0 ? write_decimal(to, number) : write_by_library(to, magnitude);
}
