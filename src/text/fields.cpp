// text/fields.cpp - fields in order of the line, each search from where the last one ended.
#include "text/fields.h"

bool utl_NextField(std::string_view *rest, std::string_view *field) {
    size_t begin = 0;
    while (begin < rest->size() && utl_IsSeparator((*rest)[begin])) ++begin;
    size_t end = begin;
    while (end < rest->size() && !utl_IsSeparator((*rest)[end])) ++end;
    *field = rest->substr(begin, end - begin);
    rest->remove_prefix(end);
    return !field->empty();
}

static uint64_t field_bits(const char *at) {
    return ~utl_Bits64(at, [](utl_vector text) {
        return utl_CompareEqual(text, ' ') | utl_CompareEqual(text, ',');
    });
}

// Sets the bits to those of the fields from `at` on.
static void look_at(utl_line_fields *fields, const char *at) {
    const ptrdiff_t left = fields->end - at;
    fields->base = at;
    fields->bits = field_bits(at);
    if (left < 64) fields->bits &= (uint64_t{1} << left) - 1;
}

utl_line_fields utl_SplitLine(std::string_view line) {
    utl_line_fields fields = {line.data(), line.data() + line.size(), line.data(), 0, 0};
    look_at(&fields, fields.begin);
    return fields;
}

std::string_view utl_TakeFurtherField(utl_line_fields *fields) {
    const ptrdiff_t passed = fields->bits != 0 ? std::countr_zero(fields->bits) : 64;
    if (fields->end - fields->base <= passed) return {};
    const char *const at = fields->base + passed;
    if (passed > 0) {
        look_at(fields, at);
        return utl_TakeField(fields);
    }
    // The field is longer than the characters that are looked at.
    std::string_view rest(at, static_cast<size_t>(fields->end - at));
    std::string_view field;
    utl_NextField(&rest, &field);
    look_at(fields, rest.data());
    ++fields->taken;
    return field;
}

bool utl_TakeNumberAt(utl_line_fields *fields, unsigned ordinal, double *number) {
    *number = 0.0;
    if (ordinal <= fields->taken) *fields = utl_SplitLine({fields->begin, fields->end});
    while (fields->taken + 1 < ordinal)
        if (utl_TakeField(fields).empty()) return false;
    return utl_TakeNumber(fields, number);
}

size_t utl_CountFields(std::string_view line) {
    if (line.empty()) return 0;
    utl_line_fields fields = utl_SplitLine(line);
    while (!utl_TakeField(&fields).empty()) {
    }
    return fields.taken;
}

int utl_TakeNumbers(utl_line_fields *fields, std::span<double> numbers) {
    int found = 0;
    if (fields->taken > 0) *fields = utl_SplitLine({fields->begin, fields->end});
    for (double &number : numbers) found += utl_TakeNumber(fields, &number);
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
