// readers/request_item.cpp - components and magnitudes of the numbers of a request line.
#include "readers/request_item.h"

#include "system/arithmetic.h"

#include <cmath>

static constexpr double unknown_item = -999.999;

// The order of the sum decides its last bit: second square plus first, then the third.
static double magnitude(double x, double y, double z) {
    const double sum = utl_Add(utl_Add(utl_Multiply(y, y), utl_Multiply(x, x)), utl_Multiply(z, z));
    return utl_SignNan(sqrt(sum), sum, sum);
}

double crv_ReadItem(utl_line_fields *line, uint32_t item, bool *complete) {
    double numbers[6];
    if (item <= 6) {
        if (!utl_TakeNumberAt(line, item == 0 ? 1 : item, &numbers[0])) *complete = false;
        return numbers[0];
    }
    if (item == 7) {
        if (utl_TakeNumbers(line, {numbers, 3}) < 3) *complete = false;
        return magnitude(numbers[0], numbers[1], numbers[2]);
    }
    if (item == 8) {
        if (utl_TakeNumbers(line, {numbers, 6}) < 6) *complete = false;
        return magnitude(numbers[3], numbers[4], numbers[5]);
    }
    return unknown_item;
}
