// app/main.cpp - the program.
#include "app/setup.h"
#include "records/settings.h"
#include "util/console.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <new>
#include <unistd.h>

// A standard stream that is closed would give its number to the next file that is opened, and messages would go into a
// chart or a table.
static void fill_standard_streams() {
    int file = 0;
    while (file >= 0 && file <= STDERR_FILENO) file = open("/dev/null", O_RDWR);
    if (file > STDERR_FILENO) close(file);
}

static void tell_lost_output() {
    if (fflush(stdout) == 0 && !ferror(stdout)) return;
    fprintf(stderr, "%%crv_01-e-out, Standard output could not be written, messages are lost\n");
}

static void end_without_memory() {
    perror("    _01-e-new");
    utl_Quit(0);
}

int main(int argc, char **argv, char **envp) {
    std::set_new_handler(end_without_memory);
    fill_standard_streams();
    atexit(tell_lost_output);
    // Messages on standard output and standard error keep their order, also when both go to one file.
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
#ifdef _WIN32
    _set_printf_count_output(1); // elsewhere the %n conversion is always on
#endif
    crv_settings.print_flag = 0;
    crv_settings.columnize_flags = 0;
    crv_DBG = 0;
    crv_SetUp(argc, argv, envp);
    printf("%%crv_01-i-fin, voila\n");
    return 0;
}
