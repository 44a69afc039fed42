// windows/start_as.cpp - starts a program under another name, like a command interpreter.
//
//   start_as NAME [argument ...]    runs the program CRV_PROGRAM, which gets NAME and the unchanged
//                                   arguments as its command line, and ends with its exit status
//
// Wine calls a program by its full path; a user who types crv calls it crv.
#include <windows.h>

#include <cstdio>
#include <cstdlib>

static constexpr int status_failed = 126;

// Skips the first word of a command line, which may be in double quotes, and the blanks after it.
static char *skip_first_word(char *at) {
    bool quoted = false;
    for (; *at != '\0' && (quoted || *at != ' '); ++at)
        if (*at == '"') quoted = !quoted;
    while (*at == ' ') ++at;
    return at;
}

int main() {
    char *line = skip_first_word(GetCommandLineA());
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessA(getenv("CRV_PROGRAM"), line, nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                        &start, &started)) {
        fprintf(stderr, "start_as: error %lu\n", GetLastError());
        return status_failed;
    }
    WaitForSingleObject(started.hProcess, INFINITE);
    DWORD status = status_failed;
    GetExitCodeProcess(started.hProcess, &status);
    return static_cast<int>(status);
}
