// system/stdio_init_posix.cpp - standard streams on POSIX systems. %n is always accepted there.
#include "system/stdio_init.h"

#include "system/console.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

static void reopen_closed_std_fds() {
    int file = 0;
    while (file >= 0 && file <= STDERR_FILENO) file = open("/dev/null", O_RDWR);
    if (file > STDERR_FILENO) close(file);
}

void utl_SetUpRuntime() {
    if (fcntl(STDOUT_FILENO, F_GETFD) < 0) utl_NoteClosedOutput();
    reopen_closed_std_fds();
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}
