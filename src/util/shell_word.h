// util/shell_word.h - quotes a text as one word of a command line.
#pragma once

#include <string>
#include <string_view>

// Returns `text` as one word for the shell of the system: unchanged if no character needs quotes.
// The result can be shown on a terminal: it is UTF-8 without control characters.
//
// On POSIX systems: 'my run.req', 'it'\''s.req'; bytes that cannot be shown are octal escapes in
// the form $'\033' of bash, zsh and POSIX 2024, as ls prints them. On Windows: "my run.req"; such
// bytes do not occur in the names of files and are replaced.
std::string utl_ShellWord(std::string_view text);
