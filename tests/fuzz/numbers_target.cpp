// fuzz/numbers_target.cpp - numbers out of text and into text are what the C library makes of them.
#include "harness.h"

#include "text/fields.h"
#include "text/number_reader.h"
#include "text/number_writer.h"

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <cstring>

static bool same(double one, double other) {
    return std::bit_cast<uint64_t>(one) == std::bit_cast<uint64_t>(other);
}

static void check_printed(double value) {
    char wanted[64];
    snprintf(wanted, sizeof wanted, "%11.4e", value);
    char text[utl_max_number_chars];
    require(std::string(text, utl_WriteE11_4(text, value)) == wanted,
            "a number is written as by printf");
}

static void check_unsigned(unsigned value) {
    char text[utl_max_number_chars];
    require(std::string(text, utl_WriteUnsigned(text, value)) == std::to_string(value),
            "a whole number is written as by printf");
}

static void check_fields(const std::string &line) {
    const std::string padded = line + std::string(utl_padding, '1');
    utl_line_fields fields = utl_SplitLine(std::string_view(padded).substr(0, line.size()));
    utl_line_fields numbers = fields;
    std::string_view rest = line;
    std::string_view field;
    std::string copy = line;
    for (char *token = strtok(copy.data(), " ,"); token; token = strtok(nullptr, " ,")) {
        require(utl_NextField(&rest, &field) && field == token, "fields are those of strtok");
        require(utl_TakeField(&fields) == field, "the vector form finds the same fields");
        double number = -1;
        require(utl_TakeNumber(&numbers, &number) && same(number, atof(token)),
                "the numbers of a line are its fields as atof reads them");
    }
    require(!utl_NextField(&rest, &field) && field.empty(), "no field is left");
    require(utl_TakeField(&fields).empty(), "the vector form finds no other field");
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string_view rest(reinterpret_cast<const char *>(data), size);
    const std::string line = take_text(&rest, '\n');
    if (line.size() < 2000) // beyond that the reader cuts a number
        require(same(utl_ToDouble(line), atof(line.c_str())), "a number is read as by atof");
    require(utl_ToInt(line) == atoi(line.c_str()), "a whole number is read as by atoi");
    if (line.size() < 2000) check_fields(line);
    check_printed(atof(line.c_str()));
    uint64_t bits = 0;
    memcpy(&bits, data, size < sizeof bits ? size : sizeof bits);
    check_printed(std::bit_cast<double>(bits));
    check_unsigned(static_cast<unsigned>(bits));
    return 0;
}
