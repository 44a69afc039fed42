// terminal/styled_text.cpp - spans to bytes.
#include "terminal/styled_text.h"

#include "text/fixed_text.h"
#include "text/text_columns.h"
#include "text/utf8.h"

void crv_AppendSpan(crv_styled_line *line, std::string_view text, int color) {
    if (line->empty() || line->back().color != color) line->push_back({{}, color});
    line->back().text += text;
}

int crv_CountColumns(const crv_styled_line &line) {
    int columns = 0;
    for (const crv_span &span : line) columns += utl_CountColumns(span.text);
    return columns;
}

std::string crv_WriteLine(const crv_styled_line &line) {
    std::string bytes;
    std::string gap; // blanks that are written if something follows
    for (const crv_span &span : line) {
        const std::string_view shown = utl_TrimEnd(span.text);
        if (!shown.empty()) {
            bytes += gap;
            gap.clear();
            if (span.color) bytes.append("\033[").append(std::to_string(span.color)).append("m");
            bytes += shown;
            if (span.color) bytes += "\033[0m";
        }
        gap.append(span.text.size() - shown.size(), ' ');
    }
    bytes += '\n';
    return bytes;
}

std::string crv_FitText(std::string_view text, const crv_terminal_format &format, int columns) {
    std::string_view trimmed = utl_TrimEnd(text);
    while (!trimmed.empty() && trimmed.front() == ' ') trimmed.remove_prefix(1);
    const std::string clean = utl_DropInvisible(utl_CleanText(trimmed));
    if (format.braille) return utl_CutToColumns(clean, columns, "\u2026");
    return utl_CutToColumns(utl_ToAscii(clean), columns, "...");
}

// U+2800 plus the dots has the bytes E2, A0 plus the upper two bits, 80 plus the lower six.
void crv_AppendBraille(std::string *text, unsigned dots) {
    *text += '\xE2';
    *text += static_cast<char>(0xA0 + (dots >> 6));
    *text += static_cast<char>(0x80 + (dots & 0x3F));
}
