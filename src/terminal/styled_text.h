// terminal/styled_text.h - lines of text with colours, and texts of users for the terminal.
#pragma once

#include "terminal/picture.h"

#include <string>
#include <string_view>
#include <vector>

// Text in one colour: the parameter of the escape sequence "select graphic rendition" (ECMA-48,
// 8.3.117), 0 for the terminal's own.
struct crv_span {
    std::string text;
    int color = 0;
};

using crv_styled_line = std::vector<crv_span>;

// Appends text to the line; it joins the last span if that has the same colour.
void crv_AppendSpan(crv_styled_line *line, std::string_view text, int color);

// Returns the number of columns of the line.
int crv_CountColumns(const crv_styled_line &line);

// Returns the line as bytes for the terminal, without blanks at its end, with a line end. All
// colours end with the line.
std::string crv_WriteLine(const crv_styled_line &line);

// Returns a text of a user or a file as this terminal shows it: valid UTF-8 or ASCII without
// control characters and invisible ones, without blanks at both ends, cut to `columns`.
std::string crv_FitText(std::string_view text, const crv_terminal_format &format, int columns);

// Appends the Braille pattern with these dots in UTF-8.
void crv_AppendBraille(std::string *text, unsigned dots);
