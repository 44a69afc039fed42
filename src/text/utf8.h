// text/utf8.h - text of users and files in a form that is safe to show: UTF-8 without control
// characters.
#pragma once

#include <string>
#include <string_view>

// Returns the length in bytes of the UTF-8 character at the start of `text`, 1 to 4, or 0 if there
// is none: the text is empty, or its first byte begins no complete character. Overlong forms,
// surrogates and numbers above U+10FFFF are no characters (The Unicode Standard, table 3-7).
size_t utl_Utf8Length(std::string_view text);

// Returns a copy of `text` as valid UTF-8: each byte that is part of no character and each control
// character (U+0000 to U+001F, U+007F to U+009F, so also tabs and line ends) becomes U+FFFD, the
// replacement character.
std::string utl_CleanText(std::string_view text);
