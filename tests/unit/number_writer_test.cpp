// unit/number_writer_test.cpp - number formatting, compared with printf.
#include "text/number_writer.h"

#include "support.h"

#include <bit>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <random>

namespace {

std::string exp11(double value) {
    char text[utl_max_number_chars];
    return {text, utl_WriteE11_4(text, value)};
}

std::string printed(double value) {
#ifdef _WIN32
    if (std::isnan(value) && std::signbit(value))
        return "       -nan"; // printf of this runtime omits the sign
#endif
    char text[64];
    snprintf(text, sizeof text, "%11.4e", value);
    return text;
}

TEST(NumberText, WritesValuesAbovePowerOfTen) {
    for (const double value : {100000.3, 100000.7, 1000007.0, 10000070.0})
        EXPECT_EQ(exp11(value), printed(value));
}

TEST(NumberText, WritesSpecialValuesLikePrintf) {
    for (const double value : {0.0,
                               -0.0,
                               1.0,
                               -1.0,
                               9.99995,
                               9.999949999,
                               99999.5,
                               1e5,
                               12345.5,
                               12346.5,
                               0.5,
                               2.5,
                               1.00005,
                               1.00015,
                               1e-5,
                               1e15,
                               1e22,
                               1e23,
                               1e26,
                               1e27,
                               1e-18,
                               1e-19,
                               1e100,
                               1e-100,
                               1e308,
                               DBL_MAX,
                               DBL_MIN,
                               4.9e-324,
                               9.9999e-5,
                               static_cast<double>(INFINITY),
                               -static_cast<double>(INFINITY),
                               static_cast<double>(NAN),
                               -static_cast<double>(NAN),
                               0.1,
                               0.2,
                               0.3,
                               123456789.0})
        for (const double near :
             {value, std::nextafter(value, 1e300), std::nextafter(value, -1e300)})
            EXPECT_EQ(exp11(near), printed(near));
}

TEST(NumberText, WritesRandomBitsLikePrintf) {
    std::mt19937_64 random(11);
    for (int round = 0; round < 200000; ++round) {
        const auto value = std::bit_cast<double>(static_cast<uint64_t>(random()));
        ASSERT_EQ(exp11(value), printed(value));
    }
}

TEST(NumberText, WritesOrdinaryValuesLikePrintf) {
    std::mt19937_64 random(12);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    for (int round = 0; round < 200000; ++round) {
        const double value =
            mantissa(random) * std::pow(10.0, static_cast<double>(random() % 60) - 30.0);
        ASSERT_EQ(exp11(value), printed(value));
    }
}

TEST(NumberText, WritesTiesLikePrintf) {
    // Exact ties at the fifth digit, and the values next to them.
    for (int digits = 10000; digits < 100000; digits += 7) {
        for (const double scale : {1e-3, 1.0, 1e3, 0x1p-10, 0x1p20}) {
            const double middle = (digits + 0.5) * scale;
            for (const double value :
                 {middle, std::nextafter(middle, 0.0), std::nextafter(middle, 1e300)})
                ASSERT_EQ(exp11(value), printed(value));
        }
    }
}

TEST(NumberText, WritesUnsignedNumbersLikePrintf) {
    for (const unsigned value :
         {0U, 9U, 10U, 99U, 100U, 735U, 999U, 1000U, 4294967295U, 2147483648U}) {
        char text[utl_max_number_chars];
        EXPECT_EQ(std::string(text, utl_WriteUnsigned(text, value)), std::to_string(value));
    }
}

TEST(NumberWriter, FormatsFixedLikePrintf) {
    for (const double value : {0.0, -0.0, 1.0, -2.345678901, 1e300, -1e-300, 1e15, HUGE_VAL}) {
        for (const int precision : {2, 5, 6}) {
            char wanted[400];
            snprintf(wanted, sizeof wanted, "%7.*f", precision, value);
            EXPECT_STREQ(utl_FormatFixed(value, 7, precision).text, wanted);
        }
    }
    EXPECT_STREQ(utl_FormatFixed(-DBL_MAX, 0, 6).text + 310, ".000000");
}

TEST(NumberWriter, NanKeepsItsSign) {
    EXPECT_STREQ(utl_FormatFixed(NAN, 7, 2).text, "    nan");
    EXPECT_STREQ(utl_FormatFixed(-NAN, 7, 2).text, "   -nan");
    EXPECT_STREQ(utl_FormatFixed(-NAN, 0, 6).text, "-nan");
    char number[utl_max_number_chars];
    *utl_WriteE11_4(number, -NAN) = '\0';
    EXPECT_STREQ(number, "       -nan");
    *utl_WriteE11_4(number, NAN) = '\0';
    EXPECT_STREQ(number, "        nan");
    *utl_WriteE11_4(number, -INFINITY) = '\0';
    EXPECT_STREQ(number, "       -inf");
}

std::string shortest(double value) {
    char text[utl_max_number_chars];
    return {text, utl_WriteShortest(text, value)};
}

TEST(NumberWriter, ShortestTextOfKnownValues) {
    EXPECT_EQ(shortest(0.0), "0");
    EXPECT_EQ(shortest(-0.0), "-0");
    EXPECT_EQ(shortest(0.1), "0.1");
    EXPECT_EQ(shortest(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(shortest(-993.6182), "-993.6182");
    EXPECT_EQ(shortest(1234567.0), "1234567");
    EXPECT_EQ(shortest(120000.0), "120000");
    EXPECT_EQ(shortest(100000.0), "1e+05");
    EXPECT_EQ(shortest(0.00012), "0.00012");
    EXPECT_EQ(shortest(0.0001), "1e-04");
    EXPECT_EQ(shortest(0.000012), "1.2e-05");
    EXPECT_EQ(shortest(2.1e11), "2.1e+11");
    // Integers of 16 digits and more stay integers with all their digits.
    EXPECT_EQ(shortest(1152921504606846976.0), "1152921504606846976");
    EXPECT_EQ(shortest(123456789012345678.0), "123456789012345680");
    EXPECT_EQ(shortest(123456789012300000.0), "123456789012300000");
    EXPECT_EQ(shortest(1.0 / 3), "0.3333333333333333");
    EXPECT_EQ(shortest(DBL_MAX), "1.7976931348623157e+308");
    EXPECT_EQ(shortest(5e-324), "5e-324");
    EXPECT_EQ(shortest(DBL_MIN), "2.2250738585072014e-308");
    EXPECT_EQ(shortest(NAN), "nan");
    EXPECT_EQ(shortest(-NAN), "nan");
    EXPECT_EQ(shortest(HUGE_VAL), "inf");
    EXPECT_EQ(shortest(-HUGE_VAL), "-inf");
}

// A value has the digits and the exponent of a decimal, or is one of its neighbours.
double random_decimal(std::mt19937_64 *random) {
    const int digits = std::uniform_int_distribution(1, 17)(*random);
    const double limit = std::pow(10.0, digits);
    char text[64];
    snprintf(text, sizeof text, "%.0fe%d",
             std::floor(std::uniform_real_distribution(0.0, limit)(*random)),
             std::uniform_int_distribution(-25, 20)(*random));
    const double value = strtod(text, nullptr);
    switch ((*random)() % 4) {
    case 0: return -value;
    case 1: return std::nextafter(value, HUGE_VAL);
    default: return value;
    }
}

void expect_shortest(double value) {
    const std::string text = shortest(value);
    ASSERT_EQ(std::bit_cast<uint64_t>(strtod(text.c_str(), nullptr)),
              std::bit_cast<uint64_t>(value))
        << text;
    char wanted[utl_max_number_chars];
    ASSERT_EQ(text, std::string(wanted, std::to_chars(wanted, wanted + sizeof wanted, value).ptr));
}

TEST(NumberWriter, ShortestTextReadsBackToTheSameBits) {
    std::mt19937_64 random(20260101);
    for (int k = 0; k < 200'000; ++k) {
        expect_shortest(random_decimal(&random));
        const auto value = std::bit_cast<double>(random());
        if (std::isfinite(value)) expect_shortest(value);
    }
    for (int exponent = -323; exponent <= 308; ++exponent) {
        const double power = strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
        expect_shortest(power);
        expect_shortest(std::nextafter(power, 0.0));
        expect_shortest(std::nextafter(power, HUGE_VAL));
    }
}

} // namespace
