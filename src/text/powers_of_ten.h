// text/powers_of_ten.h - the powers of ten that a double represents exactly. IEEE arithmetic rounds
// a product or quotient with one of them once.
#pragma once

// 10^0 to 10^22: 5^22 is below 2^53, 5^23 is not.
constexpr int utl_exact_powers = 23;

inline constexpr double utl_powers_of_ten[utl_exact_powers] = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22,
};

// Returns 10 to the power `exponent`, 0 <= exponent < utl_exact_powers.
constexpr double utl_power_of_ten(int exponent) { return utl_powers_of_ten[exponent]; }
