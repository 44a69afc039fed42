// windows/start_as.cpp - starts a program under a name of its own, as a command interpreter does.
//
//   start_as NAME [argument ...]    runs the program that CRV_PROGRAM names and ends with its
//   status; the program sees NAME and
//                                   the arguments as they were typed
//
// Wine calls a program by its full path; somebody who types crv calls it crv.
#include <windows.h>

#include <cstdio>
#include <cstdlib>

static constexpr int status_failed = 126;

// Behind the first word of a command line and the blanks after it; a word can stand in double
// quotes.
static char *behind_first_word(char *at) {
    bool quoted = false;
    for (; *at != '\0' && (quoted || *at != ' '); ++at)
        if (*at == '"') quoted = !quoted;
    while (*at == ' ') ++at;
    return at;
}

int main() {
    char *line = behind_first_word(GetCommandLineA());
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
