// terminal/format.cpp - the terminal's answers, then the environment, then the defaults.
#include "terminal/format.h"

#include "system/terminal.h"

#include <algorithm>
#include <cstdlib>

// Returns the positive whole number in the variable, or `otherwise`.
static int read_variable(const char *name, int otherwise) {
    const char *text = getenv(name);
    if (!text || *text < '0' || *text > '9') return otherwise;
    char *end = nullptr;
    const long value = strtol(text, &end, 10);
    if (*end != '\0' || value == 0) return otherwise;
    return static_cast<int>(std::min<long>(value, crv_max_picture_size));
}

static bool is_set(const char *name) {
    const char *text = getenv(name);
    return text && *text;
}

crv_terminal_format crv_ChooseFormat(FILE *stream) {
    const utl_terminal_size size = utl_ReadTerminalSize(stream);
    crv_terminal_format format;
    format.columns = size.columns > 0 ? size.columns : read_variable("COLUMNS", format.columns);
    format.rows = size.rows > 0 ? size.rows - 1 : read_variable("LINES", format.rows);
    format.braille = utl_IsOutputUtf8();
    format.colors = !is_set("NO_COLOR") && utl_EnableColors(stream);
    return format;
}
