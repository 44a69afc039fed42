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
