// util/console.cpp - see console.h.
#include "util/console.h"

#include <cstdio>
#include <cstdlib>

void utl_Quit(int status) { exit(status); }

void utl_QuitWithError(const char *report, int status) {
    perror(report);
    utl_Quit(status);
}

void utl_ReadAnswer(char *answer, size_t size) {
    fflush(stdout);
    size_t length = 0;
    int held = '\0'; // a CR, which belongs to the answer only when no line end follows it
    int c = getchar();
    for (; c != EOF && c != '\n'; c = getchar()) {
        if (held && length + 1 < size) answer[length++] = '\r';
        held = c == '\r' ? c : '\0';
        if (!held && length + 1 < size) answer[length++] = static_cast<char>(c);
    }
    if (held && c == EOF && length + 1 < size) answer[length++] = '\r';
    answer[length] = '\0';
}

bool utl_RunCommand(const char *command) {
    fflush(nullptr);
    return system(command) != -1;
}
