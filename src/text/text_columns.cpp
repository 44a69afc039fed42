// text/text_columns.cpp - width of characters by a table of code point ranges.
#include "text/text_columns.h"

#include "text/utf8.h"

#include <cstdint>

namespace {

struct code_range {
    uint32_t first, last;
};

} // namespace

static constexpr code_range wide_ranges[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xA960, 0xA97C},
    {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},
    {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF},
    {0x20000, 0x2FFFD}, {0x30000, 0x3FFFD},
};
static constexpr code_range combining_ranges[] = {
    {0x0300, 0x036F}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}};
static constexpr code_range invisible_ranges[] = {
    {0x200B, 0x200F}, {0x2028, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF}};

template <size_t size> static bool is_in(const code_range (&ranges)[size], uint32_t code) {
    for (const code_range &range : ranges)
        if (range.first <= code && code <= range.last) return true;
    return false;
}

// Returns the code point of one character of UTF-8.
static uint32_t decode(std::string_view character) {
    const auto first = static_cast<uint8_t>(character[0]);
    if (character.size() == 1) return first;
    uint32_t code = first & (0x7FU >> character.size());
    for (const char next : character.substr(1)) code = code << 6 | (next & 0x3F);
    return code;
}

static int columns_of(uint32_t code) {
    if (is_in(combining_ranges, code) || is_in(invisible_ranges, code)) return 0;
    return is_in(wide_ranges, code) ? 2 : 1;
}

// Removes the first character of the text and returns it. A byte that is part of no character
// counts as one.
static std::string_view take_character(std::string_view *text) {
    const size_t length = utl_Utf8Length(*text);
    const std::string_view character = text->substr(0, length > 0 ? length : 1);
    text->remove_prefix(character.size());
    return character;
}

int utl_CountColumns(std::string_view text) {
    int columns = 0;
    while (!text.empty()) columns += columns_of(decode(take_character(&text)));
    return columns;
}

// Returns the longest start of the text that has at most `columns` columns.
static std::string_view start_of(std::string_view text, int columns) {
    std::string_view rest = text;
    size_t length = 0;
    while (!rest.empty()) {
        columns -= columns_of(decode(take_character(&rest)));
        if (columns < 0) break;
        length = text.size() - rest.size();
    }
    return text.substr(0, length);
}

std::string utl_CutToColumns(std::string_view text, int columns, std::string_view ellipsis) {
    if (utl_CountColumns(text) <= columns) return std::string(text);
    const int space = columns - utl_CountColumns(ellipsis);
    if (space < 0) return std::string(start_of(text, columns));
    return std::string(start_of(text, space)) + std::string(ellipsis);
}

std::string utl_DropInvisible(std::string_view text) {
    std::string visible;
    while (!text.empty()) {
        const std::string_view character = take_character(&text);
        if (!is_in(invisible_ranges, decode(character))) visible += character;
    }
    return visible;
}

std::string utl_ToAscii(std::string_view text) {
    std::string ascii;
    while (!text.empty()) {
        const std::string_view character = take_character(&text);
        ascii += static_cast<uint8_t>(character[0]) < 0x80 ? character[0] : '?';
    }
    return ascii;
}
