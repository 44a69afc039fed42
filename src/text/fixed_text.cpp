// text/fixed_text.cpp - bounded copy and removal of trailing blanks.
#include "text/fixed_text.h"

#include <cstring>

void utl_CopyText(char *to, size_t size, std::string_view text) {
    const size_t length = text.size() < size ? text.size() : size - 1;
    if (length > 0) memcpy(to, text.data(), length);
    to[length] = '\0';
}

std::string_view utl_TrimEnd(std::string_view text) {
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

std::string_view utl_TrimLine(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const size_t begin = text.find_first_not_of(blanks);
    if (begin == text.npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}
