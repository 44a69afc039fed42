// text/utf8.cpp - UTF-8 characters by the range of their second byte.
#include "text/utf8.h"

#include <cstdint>

static constexpr const char *replacement = "\xEF\xBF\xBD"; // U+FFFD

namespace {

// The first bytes of a length, and the second bytes that may follow them. Further bytes are 80 to
// BF.
struct utf8_form {
    uint8_t first_low, first_high;
    uint8_t second_low, second_high;
    size_t length;
};

} // namespace

static constexpr utf8_form forms[] = {
    {0x00, 0x7F, 0x00, 0x00, 1}, {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

static bool is_in(char c, uint8_t low, uint8_t high) {
    const auto byte = static_cast<uint8_t>(c);
    return low <= byte && byte <= high;
}

static bool has_form(std::string_view text, const utf8_form &form) {
    if (text.size() < form.length || !is_in(text[0], form.first_low, form.first_high)) return false;
    if (form.length > 1 && !is_in(text[1], form.second_low, form.second_high)) return false;
    for (size_t k = 2; k < form.length; ++k)
        if (!is_in(text[k], 0x80, 0xBF)) return false;
    return true;
}

size_t utl_Utf8Length(std::string_view text) {
    for (const utf8_form &form : forms)
        if (has_form(text, form)) return form.length;
    return 0;
}

// U+0080 to U+009F are C2 80 to C2 9F.
static bool is_control(std::string_view character) {
    if (character.size() == 1) return is_in(character[0], 0x00, 0x1F) || character[0] == 0x7F;
    return character.size() == 2 && is_in(character[0], 0xC2, 0xC2) &&
           is_in(character[1], 0x80, 0x9F);
}

std::string utl_CleanText(std::string_view text) {
    std::string clean;
    while (!text.empty()) {
        const size_t length = utl_Utf8Length(text);
        const std::string_view character = text.substr(0, length > 0 ? length : 1);
        if (length == 0 || is_control(character)) {
            clean += replacement;
        } else {
            clean += character;
        }
        text.remove_prefix(character.size());
    }
    return clean;
}
