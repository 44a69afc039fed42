// system/run_status.cpp - exit status of a run: the traditional or the conventional one.
#include "system/console.h"

static constexpr int status_success = 0;
static constexpr int status_failure = 1;
static constexpr int status_unreached = 3;

static struct {
    bool is_conventional;
    bool has_failure;
    bool is_output_closed;
} run_status;

void utl_UseConventionalStatuses() { run_status.is_conventional = true; }

bool utl_NoteFailure() {
    run_status.has_failure = true;
    return run_status.is_conventional;
}

void utl_NoteClosedOutput() { run_status.is_output_closed = true; }

bool utl_IsOutputClosed() { return run_status.is_output_closed; }

bool utl_FlushOutput() { return fflush(stdout) == 0 && !ferror(stdout); }

[[noreturn]] static void finish(int traditional, int conventional) {
    if (!run_status.is_conventional) utl_Quit(traditional);
    const bool is_complete = utl_FlushOutput() && !run_status.has_failure;
    utl_Quit(is_complete ? conventional : status_failure);
}

void utl_Finish(int status) { finish(status, status_success); }

void utl_FinishUnreached(int status) { finish(status, status_unreached); }

void utl_Fail(int status) { utl_Quit(run_status.is_conventional ? status_failure : status); }
