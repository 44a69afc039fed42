// text/fields.cpp - fields in order of the line, each search from where the last one ended.
#include "text/fields.h"

#include "text/number_reader.h"

bool utl_NextField(std::string_view *rest, std::string_view *field) {
    const char *const end = rest->data() + rest->size();
    const char *const begin = utl_FindField(rest->data(), end);
    const char *const at = utl_FindSeparator(begin, end);
    *field = {begin, static_cast<size_t>(at - begin)};
    *rest = {at, static_cast<size_t>(end - at)};
    return !field->empty();
}

bool utl_NextNumber(std::string_view *rest, double *number) {
    const char *const end = rest->data() + rest->size();
    if (const char *const stop = utl_ParseDecimalField(rest->data(), end, number)) {
        *rest = {stop, static_cast<size_t>(end - stop)};
        return true;
    }
    std::string_view field;
    *number = utl_NextField(rest, &field) ? utl_ToDouble(field) : 0.0;
    return !field.empty();
}

bool utl_SkipFields(std::string_view *rest, unsigned count) {
    const char *at = rest->data();
    const char *const end = at + rest->size();
    for (; count > 0; --count) {
        at = utl_FindField(at, end);
        if (at == end) break;
        at = utl_FindSeparator(at, end);
    }
    *rest = {at, static_cast<size_t>(end - at)};
    return count == 0;
}

size_t utl_CountFields(std::string_view line) {
    size_t count = 0;
    std::string_view field;
    while (utl_NextField(&line, &field)) ++count;
    return count;
}

int utl_ReadNumbers(std::string_view line, std::span<double> numbers) {
    int found = 0;
    for (double &number : numbers) found += utl_NextNumber(&line, &number);
    return found;
}

int utl_ReadIntegers(std::string_view line, std::span<int> numbers) {
    int found = 0;
    std::string_view field;
    for (int &number : numbers) {
        const bool present = utl_NextField(&line, &field);
        number = present ? utl_ToInt(field) : 0;
        found += present;
    }
    return found;
}

bool utl_ReadNumberAt(std::string_view line, unsigned ordinal, double *number) {
    *number = 0.0;
    return utl_SkipFields(&line, ordinal - 1) && utl_NextNumber(&line, number);
}
