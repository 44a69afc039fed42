// readers/fields.cpp - see fields.h.
#include "readers/fields.h"

#include "util/text.h"

int crv_ReadNumbers(std::string_view line, std::span<double> numbers) {
    int found = 0;
    std::string_view field;
    for (double &number : numbers) {
        const bool there = utl_NextField(&line, &field);
        number = there ? utl_ToDouble(field) : 0.0;
        found += there;
    }
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
    std::string_view field;
    bool there = true;
    for (unsigned k = 0; k < ordinal && there; ++k) there = utl_NextField(&line, &field);
    *number = there ? utl_ToDouble(field) : 0.0;
    return there;
}
