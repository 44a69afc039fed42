// text/fields.cpp - see fields.h.
#include "text/fields.h"

#include "text/fixed_text.h"
#include "text/number_reader.h"

int crv_ReadNumbers(std::string_view line, std::span<double> numbers) {
    int found = 0;
    for (double &number : numbers) found += utl_NextNumber(&line, &number);
    return found;
}

int crv_ReadIntegers(std::string_view line, std::span<int> numbers) {
    int found = 0;
    std::string_view field;
    for (int &number : numbers) {
        const bool there = utl_NextField(&line, &field);
        number = there ? utl_ToInt(field) : 0;
        found += there;
    }
    return found;
}

bool crv_ReadNumberAt(std::string_view line, unsigned ordinal, double *number) {
    *number = 0.0;
    return utl_SkipFields(&line, ordinal - 1) && utl_NextNumber(&line, number);
}
