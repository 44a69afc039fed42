// system/console_posix.cpp - prints a text file by copying it to standard output.
#include "system/console.h"

bool utl_PrintFile(const char *path) {
    FILE *in = fopen(path, "r");
    if (!in) return false;
    for (int c = getc(in); c != EOF; c = getc(in)) putchar(c);
    fclose(in);
    return true;
}
