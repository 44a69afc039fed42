// system/status_line_posix.cpp - waits by poll; erases the status line in a signal handler.
#include "system/status_line.h"

#include <csignal>
#include <cstdio>
#include <poll.h>
#include <unistd.h>

static constexpr int interrupts[] = {SIGHUP, SIGINT, SIGTERM};

static struct {
    const char *volatile text;
    volatile size_t length;
} on_interrupt;

// A terminal that does not control this process has no foreground for it.
bool utl_IsInForeground() {
    const pid_t foreground = tcgetpgrp(fileno(stderr));
    return foreground == -1 || foreground == getpgrp();
}

bool utl_AwaitInput(int file, int milliseconds) {
    struct pollfd input = {.fd = file, .events = POLLIN, .revents = 0};
    return poll(&input, 1, milliseconds) != 0;
}

// The signal's own effect follows when the handler returns.
static void write_and_end(int number) {
    if (on_interrupt.text) {
        const ssize_t written = write(STDERR_FILENO, on_interrupt.text, on_interrupt.length);
        static_cast<void>(written);
    }
    signal(number, SIG_DFL);
    raise(number);
}

// Leaves a signal alone that is ignored, as by nohup.
static void exchange_handler(int number, void (*from)(int), void (*to)(int)) {
    struct sigaction action = {};
    if (sigaction(number, nullptr, &action) != 0 || action.sa_handler != from) return;
    action.sa_handler = to;
    sigaction(number, &action, nullptr);
}

void utl_WriteOnInterrupt(const char *text, size_t length) {
    on_interrupt.length = length;
    on_interrupt.text = text;
    for (const int number : interrupts) {
        if (text) {
            exchange_handler(number, SIG_DFL, write_and_end);
        } else {
            exchange_handler(number, write_and_end, SIG_DFL);
        }
    }
}
