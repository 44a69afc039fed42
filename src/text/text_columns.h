// text/text_columns.h - columns that text occupies in a terminal, and text cut to a number of them.
//
// All texts are valid UTF-8 without control characters, as by utl_CleanText.
//
// A character of a script that terminals draw double takes two columns: Hangul, kana, ideographs,
// their full-width forms and most pictographs. A combining mark (U+0300 to U+036F, U+20D0 to
// U+20FF, U+FE00 to U+FE0F, U+FE20 to U+FE2F) takes none, and neither does an invisible character:
// U+200B to U+200F, U+2028 to U+202E, U+2060 to U+206F and U+FEFF. All others take one. This is a
// short form of the East Asian width of Unicode (annex 11).
#pragma once

#include <string>
#include <string_view>

// Returns the number of columns of the text.
int utl_CountColumns(std::string_view text);

// Returns the text if it has at most `columns` columns. Otherwise cuts it at the end, with
// `ellipsis` there, which takes one column per character and is left out if there is not enough
// space for it.
std::string utl_CutToColumns(std::string_view text, int columns, std::string_view ellipsis);

// Returns the text without its invisible characters, which include those that reverse the order of
// the text that follows.
std::string utl_DropInvisible(std::string_view text);

// Returns the text with a question mark for each character that is not ASCII.
std::string utl_ToAscii(std::string_view text);
