// app/not_yet.h - stands in for what the program cannot do yet.
#pragma once

#include "util/console.h"

#include <cstdio>

[[noreturn]] inline void crv_NotYet(const char *what) {
    fprintf(stderr, "%%crv_05-f-not, This version cannot %s yet\n", what);
    utl_Quit(0);
}
