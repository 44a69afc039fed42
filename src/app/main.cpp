// app/main.cpp - program entry: handlers for lost output and lack of memory, then one run.
#include "app/setup.h"
#include "records/settings.h"
#include "system/console.h"
#include "system/stdio_init.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

static void report_stdout_error() {
    if (utl_FlushOutput()) return;
    fprintf(stderr, "%%crv_01-e-out, Standard output could not be written, messages are lost\n");
}

static void on_out_of_memory() {
    utl_ReportError("    _01-e-new");
    utl_Fail(0);
}

// Reads CRV_STATUS. An empty value counts as none.
static void choose_statuses() {
    const char *wanted = getenv("CRV_STATUS");
    if (!wanted || *wanted == '\0') return;
    if (strcmp(wanted, "conventional") == 0) {
        utl_UseConventionalStatuses();
    } else {
        fprintf(utl_ErrorStream(),
                "%%crv_01-w-sta, CRV_STATUS is \"%s\", which has no effect; \"conventional\" has\n",
                wanted);
    }
}

int main(int argc, char **argv, char **envp) {
    std::set_new_handler(on_out_of_memory);
    utl_SetUpRuntime();
    atexit(report_stdout_error);
    choose_statuses();
    crv_settings.print_flag = 0;
    crv_settings.columnize_flags = 0;
    crv_DBG = 0;
    crv_SetUp(argc, argv, envp);
    printf("%%crv_01-i-fin, voila\n");
    utl_Finish(0);
}
