// text/fields.h - splits lines into fields, and reads fields as numbers.
//
// A field is a run of characters between separators; separators are blanks and commas.
#pragma once

#include "text/number_reader.h"
#include "text/simd.h"

#include <cstdint>
#include <span>
#include <string_view>

inline bool utl_IsSeparator(char c) { return c == ' ' || c == ','; }

// Removes the next field from the front of `rest` and stores it in `field`. Returns false, with an
// empty field, if no field is left.
bool utl_NextField(std::string_view *rest, std::string_view *field);

// A line whose fields are taken from left to right.
//
// Fields and runs of separators have all lengths, so that a branch per character is often
// mispredicted. Instead, one mask shows where the fields of 64 characters are, and a field is found
// by arithmetic on it.
struct utl_line_fields {
    const char *begin; // of the line
    const char *end;
    const char *base; // the 64 characters of `bits`
    uint64_t bits;    // a bit for each of them that belongs to a field not yet taken
    unsigned taken;   // fields taken
};

// Begins at the first field of `line`, which must be followed by utl_padding readable characters,
// as lines of the line reader are.
utl_line_fields utl_SplitLine(std::string_view line);

// Removes the next field if `bits` does not show the whole of it.
std::string_view utl_TakeFurtherField(utl_line_fields *fields);

// Removes the next field. Returns it, or an empty text if none is left.
//
// The addition carries through the lowest run of bits and sets the bit after it. A carry out, or no
// bit at all, leaves 0.
inline std::string_view utl_TakeField(utl_line_fields *fields) {
    const uint64_t after = fields->bits + (fields->bits & (0 - fields->bits));
    if (after == 0) [[unlikely]]
        return utl_TakeFurtherField(fields);
    const int begin = std::countr_zero(fields->bits);
    const int end = std::countr_zero(after);
    fields->bits &= after;
    ++fields->taken;
    return {fields->base + begin, static_cast<size_t>(end - begin)};
}

// Removes the next field and reads it as utl_ToDouble does. Returns false, with 0.0, if none is
// left.
inline bool utl_TakeNumber(utl_line_fields *fields, double *number) {
    const std::string_view field = utl_TakeField(fields);
    *number = field.empty() ? 0.0 : utl_ReadField(field);
    return !field.empty();
}

// Returns the number of fields of a line of the line reader.
size_t utl_CountFields(std::string_view line);

// Reads field `ordinal` of the line, counted from 1, and nothing after it. Continues after the
// fields that are taken if it can. Returns false, with 0.0, if the line has fewer fields.
bool utl_TakeNumberAt(utl_line_fields *fields, unsigned ordinal, double *number);

// Reads the first fields of the line into `numbers`, as many as it has elements. Returns the number
// of fields found; the elements without a field are 0.
int utl_TakeNumbers(utl_line_fields *fields, std::span<double> numbers);

// Does the same for any text.
int utl_ReadIntegers(std::string_view line, std::span<int> numbers);
