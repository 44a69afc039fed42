// windows/start_as.cpp - starts a program with a given argv[0], as a command interpreter does.
//
//   start_as NAME [argument ...]    runs the program at CRV_PROGRAM and returns its exit status;
//                                   the program gets NAME and the arguments unchanged
//
// Wine itself passes the full path of a program as argv[0]; a user types "crv".
#include <windows.h>

#include <cstdio>
#include <cstdlib>

static constexpr int status_failed = 126;

// Returns the position after the first word of a command line and the blanks that follow it. Blanks
// in double quotes belong to the word.
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
