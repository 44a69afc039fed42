// util/shell_word_win32.cpp - quotes words for the command interpreter of Windows.
#include "util/shell_word.h"

#include "text/utf8.h"

static constexpr std::string_view harmless = "abcdefghijklmnopqrstuvwxyz"
                                             "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                             "0123456789_-+./\\:@";

// Names of files contain no quotes. A percent sign has no quote that works in all places.
std::string utl_ShellWord(std::string_view text) {
    if (!text.empty() && text.find_first_not_of(harmless) == text.npos) return std::string(text);
    return '"' + utl_CleanText(text) + '"';
}
