// system/terminal_posix.cpp - terminal size by ioctl, the rest by the environment.
#include "system/terminal.h"

#include <cstdlib>
#include <cstring>

#include <strings.h>
#include <sys/ioctl.h>
#include <unistd.h>

bool utl_IsTerminal(FILE *stream) { return isatty(fileno(stream)) == 1; }

utl_terminal_size utl_ReadTerminalSize(FILE *stream) {
    struct winsize size = {};
    if (ioctl(fileno(stream), TIOCGWINSZ, &size) != 0) return {0, 0};
    return {size.ws_col, size.ws_row};
}

bool utl_EnableColors(FILE *stream) {
    const char *term = getenv("TERM");
    return utl_IsTerminal(stream) && !(term && strcmp(term, "dumb") == 0);
}

// A locale is language_territory.charset@modifier; names of the charset differ in case and hyphen.
static bool has_utf8_charset(const char *locale) {
    const char *charset = strchr(locale, '.');
    if (!charset) return false;
    const char *name = charset + 1;
    const size_t length = strcspn(name, "@");
    return (length == 5 && strncasecmp(name, "UTF-8", length) == 0) ||
           (length == 4 && strncasecmp(name, "UTF8", length) == 0);
}

bool utl_IsOutputUtf8() {
    static constexpr const char *variables[] = {"LC_ALL", "LC_CTYPE", "LANG"};
    for (const char *name : variables) {
        const char *locale = getenv(name);
        if (locale && *locale) return has_utf8_charset(locale);
    }
    return false;
}
