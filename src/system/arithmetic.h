// system/arithmetic.h - sums and quotients whose not-a-number results have one sign on all
// machines.
//
// The sign of a not-a-number is printed ("-nan"), and processors set it differently: x86 makes the
// result of an invalid operation (inf - inf, 0 / 0) negative and returns the first operand that is
// not a number otherwise; ARM makes it positive, RISC-V in both cases. These routines follow x86,
// by the same code everywhere.
#pragma once

#include <limits>

// Returns `result` of an operation on `first` and `second` with the sign that x86 gives it.
inline double utl_SignNan(double result, double first, double second) {
    if (result == result) [[likely]]
        return result;
    if (first != first) return first;
    if (second != second) return second;
    return -std::numeric_limits<double>::quiet_NaN();
}

inline double utl_Add(double a, double b) { return utl_SignNan(a + b, a, b); }
inline double utl_Subtract(double a, double b) { return utl_SignNan(a - b, a, b); }
inline double utl_Multiply(double a, double b) { return utl_SignNan(a * b, a, b); }
inline double utl_Divide(double a, double b) { return utl_SignNan(a / b, a, b); }
