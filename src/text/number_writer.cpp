// text/number_writer.cpp - number formatting: %11.4e by scaling to an integer of five digits and a
// table of digits, to_chars where the rounding is in doubt or the exponent is large.
#include "text/number_writer.h"

#include "text/powers_of_ten.h"
#include "text/three_digits.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

static constexpr size_t field_width = 11;
static constexpr int decimals = 4;

// The five digits of d.dddde+dd are the value scaled by an exact power of ten to 10,000 to 99,999
// and rounded. Scaling rounds once, by at most half a unit in the last place of numbers below 2^17:
// 2^-37 or 7.3e-12. That can change the digits only if the scaled value is closer than this to a
// tie, the middle between two integers; to_chars then decides. The margin is 100,000 times wider
// than needed and sends two of a million values there.
static constexpr double tie_margin = 1e-6;

// A value as five digits and a decimal exponent.
struct scaled_value {
    int digits; // 10000 to 99999, or 0 if to_chars must decide
    int exponent;
};

// Returns the exponent of two. A subnormal value gives -1023, which is outside the exact powers.
static int binary_exponent(double magnitude) {
    return static_cast<int>(std::bit_cast<uint64_t>(magnitude) >> 52) - 1023;
}

static scaled_value scale(double magnitude) {
    // log10(2) = 0.30103 is 1233/4096 with an error of 5e-6 (S. E. Anderson, Bit Twiddling Hacks).
    // The product is the decimal exponent of 2^e, which is that of the value or one below it.
    int exponent = (binary_exponent(magnitude) * 1233) >> 12;
    if (exponent <= decimals - utl_exact_powers || exponent + 1 >= decimals + utl_exact_powers)
        return {0, 0};
    const auto scaled_by = [magnitude](int power) {
        return power >= 0 ? magnitude * utl_power_of_ten(power)
                          : magnitude / utl_power_of_ten(-power);
    };
    double scaled = scaled_by(decimals - exponent);
    if (scaled >= 100000.0 - tie_margin) scaled = scaled_by(decimals - ++exponent);

    int digits = static_cast<int>(scaled);
    const double rest = scaled - digits;
    if (std::fabs(rest - 0.5) < tie_margin || scaled < 10000.0) return {0, 0};
    digits += rest > 0.5 ? 1 : 0;
    if (digits == 100000) {
        digits = 10000;
        ++exponent;
    }
    return {digits, exponent};
}

static char *write_two_digits(char *to, unsigned value) {
    memcpy(to, &utl_three_digits[size_t{3} * value + 1], 2);
    return to + 2;
}

static char *write_scaled(char *to, bool negative, scaled_value value) {
    const auto digits = static_cast<unsigned>(value.digits);
    *to++ = negative ? '-' : ' ';
    *to++ = static_cast<char>('0' + digits / 10000);
    *to++ = '.';
    to = write_two_digits(to, digits / 100 % 100);
    to = write_two_digits(to, digits % 100);
    *to++ = 'e';
    *to++ = value.exponent < 0 ? '-' : '+';
    return write_two_digits(
        to, static_cast<unsigned>(value.exponent < 0 ? -value.exponent : value.exponent));
}

// Not left to std::to_chars: libraries write a negative not-a-number in different ways.
static char *write_non_finite(char *to, double value) {
    const bool negative = std::signbit(value);
    const char *text = std::isnan(value) ? (negative ? "       -nan" : "        nan")
                                         : (negative ? "       -inf" : "        inf");
    memcpy(to, text, field_width);
    return to + field_width;
}

char *utl_WriteE11_4(char *to, double value) {
    if (!std::isfinite(value)) return write_non_finite(to, value);
    if (value != 0.0) {
        const scaled_value scaled = scale(std::fabs(value));
        if (scaled.digits != 0) return write_scaled(to, value < 0.0, scaled);
    }
    char *end =
        std::to_chars(to, to + utl_max_number_chars, value, std::chars_format::scientific, decimals)
            .ptr;
    const auto length = static_cast<size_t>(end - to);
    if (length >= field_width) return end;
    memmove(to + (field_width - length), to, length);
    memset(to, ' ', field_width - length);
    return to + field_width;
}

char *utl_WriteUnsigned(char *to, unsigned value) {
    if (value < 100 || value > 999) return std::to_chars(to, to + utl_max_number_chars, value).ptr;
    return utl_WriteThreeDigits(to, value);
}

utl_number_text utl_FormatFixed(double value, int width, int precision) {
    utl_number_text number;
    if (std::isnan(value)) {
        const char *name = std::signbit(value) ? "-nan" : "nan";
        snprintf(number.text, sizeof number.text, "%*s", width, name);
    } else {
        snprintf(number.text, sizeof number.text, "%*.*f", width, precision, value);
    }
    return number;
}
