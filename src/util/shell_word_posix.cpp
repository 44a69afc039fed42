// util/shell_word_posix.cpp - quotes words for POSIX shells.
#include "util/shell_word.h"

#include "text/utf8.h"

#include <cstdio>

// These never need quotes. A tilde or an equals sign can mean something at the start of a word.
static constexpr std::string_view harmless = "abcdefghijklmnopqrstuvwxyz"
                                             "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                             "0123456789_-+./:,@%";

static std::string octal(char c) {
    char text[8];
    snprintf(text, sizeof text, "\\%03o", static_cast<unsigned>(static_cast<unsigned char>(c)));
    return text;
}

// Returns true if the character at the start of `text` cannot be shown.
static bool is_hidden(std::string_view character) { return utl_CleanText(character) != character; }

// Appends characters in the quotes of their kind; `open` is the quote that is open, or 0.
static void close_quote(std::string *word, char *open) {
    if (*open != '\0') *word += '\'';
    *open = '\0';
}

static void open_quote(std::string *word, char *open, char kind) {
    if (*open == kind) return;
    close_quote(word, open);
    *word += kind == '$' ? "$'" : "'";
    *open = kind;
}

std::string utl_ShellWord(std::string_view text) {
    if (!text.empty() && text.find_first_not_of(harmless) == text.npos) return std::string(text);
    std::string word;
    char open = '\0'; // ' or $
    while (!text.empty()) {
        const size_t length = utl_Utf8Length(text);
        const std::string_view character = text.substr(0, length > 0 ? length : 1);
        if (character == "'") {
            close_quote(&word, &open);
            word += "\\'";
        } else if (is_hidden(character)) {
            open_quote(&word, &open, '$');
            for (const char c : character) word += octal(c);
        } else {
            open_quote(&word, &open, '\'');
            word += character;
        }
        text.remove_prefix(character.size());
    }
    close_quote(&word, &open);
    return word.empty() ? "''" : word;
}
