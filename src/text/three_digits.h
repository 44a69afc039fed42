// text/three_digits.h - the numbers 0 to 999 as text, three digits each: one copy replaces the
// divisions that separate the digits.
#pragma once

#include <array>
#include <cstddef>
#include <cstring>

// 3,000 characters.
inline constexpr auto utl_three_digits = [] {
    std::array<char, 3 * 1000> text = {};
    for (size_t k = 0; k < 1000; ++k) {
        text[3 * k] = static_cast<char>('0' + k / 100);
        text[3 * k + 1] = static_cast<char>('0' + k / 10 % 10);
        text[3 * k + 2] = static_cast<char>('0' + k % 10);
    }
    return text;
}();

// Writes `value`, 0 to 999, with leading zeros. Returns the end of the text.
inline char *utl_WriteThreeDigits(char *to, unsigned value) {
    memcpy(to, &utl_three_digits[size_t{3} * value], 3);
    return to + 3;
}
