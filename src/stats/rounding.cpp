// stats/rounding.cpp - rounds bounds by way of their printed digits and exponent.
#include "stats/rounding.h"

#include "records/range.h"
#include "records/settings.h"
#include "text/number_reader.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

// A number truncated to one signed digit times a power of ten.
struct leading_digit {
    int digit;
    double power;
};

// Returns 10 to the power of the exponent text, as the double nearest to it. The pow of C libraries
// is off in the last bit for some exponents: glibc's for 23 and 210.
static double power_of_ten(const char *exponent) {
    return utl_ToDouble(std::string("1e") + exponent);
}

// Uses the printed text, so that the mantissa is rounded to three decimals before its first digit
// is taken.
static leading_digit leading_digit_of(double value) {
    char text[16];
    snprintf(text, sizeof text, "%10.3e", value);
    return {utl_ToInt({text, 2}), power_of_ten(strchr(text, 'e') + 1)};
}

// Compares in single precision, so that values without an exact binary form, such as 0.1, are
// round.
static bool is_round(double value, leading_digit lead) {
    return static_cast<float>(value) == static_cast<float>(lead.digit * lead.power);
}

static double round_down(double value) {
    if (!std::isfinite(value)) return value;
    leading_digit lead = leading_digit_of(value);
    if (is_round(value, lead)) return value;
    if (lead.digit < 0) --lead.digit;
    return lead.digit * lead.power;
}

static double round_up(double value) {
    if (!std::isfinite(value)) return value;
    leading_digit lead = leading_digit_of(value);
    if (is_round(value, lead)) return value;
    if (lead.digit >= 0) ++lead.digit;
    return lead.digit * lead.power;
}

void crv_RMinMax(double *minmax) {
    if (crv_DBG == 49) {
        printf("    _49-i-val, \n");
        printf("    _49-i-val, Before: minmax[0] = %f, minmax[1] = %f\n", minmax[0], minmax[1]);
    }

    if (crv_DBG == 491) {
        crv_SetRange(minmax, 0.491, 491.0);
    } else {
        crv_SetRange(minmax, round_down(minmax[0]), round_up(minmax[1]));
    }
    if (crv_DBG == 492) crv_SetRange(minmax, 0.492, 492.0);

    if (crv_DBG == 49 || (crv_DBG >= 491 && crv_DBG <= 494))
        printf("    _49-i-val, After : minmax[0] = %f, minmax[1] = %f\n", minmax[0], minmax[1]);
}
