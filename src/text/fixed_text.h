// text/fixed_text.h - copies text into character arrays of fixed size, and trims it.
#pragma once

#include <cstddef>
#include <string_view>

// Copies `text` into the array `to` of `size` characters, cut to size - 1 and zero-terminated.
void utl_CopyText(char *to, size_t size, std::string_view text);

template <size_t size> void utl_CopyText(char (&to)[size], std::string_view text) {
    utl_CopyText(to, size, text);
}

// Returns the text without trailing blanks. Other white space stays.
std::string_view utl_TrimEnd(std::string_view text);

// Returns the text without blanks, tabs and line ends at both ends.
std::string_view utl_TrimLine(std::string_view text);
