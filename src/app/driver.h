// app/driver.h - state of the driver during the argument scan, and access to the arguments.
#pragma once

#include "records/chart.h"
#include "system/console.h"

#include <cstdint>
#include <string>
#include <vector>

// Values of the run request, the action after the last argument. The last option that sets it wins.
// Deliberate: its initial value is the number of arguments.
constexpr int crv_request_help = 10;
constexpr int crv_request_status = 11;
constexpr int crv_request_debug_help = 12;
constexpr int crv_request_examples = 13;
constexpr int crv_request_bugs = 14;
constexpr int crv_request_write = 15;
constexpr int crv_request_chart = 50;
constexpr int crv_request_requests = 91;

struct crv_driver {
    int argc = 0;
    char **argv = nullptr;
    int request = 0;
    const char *selection = nullptr; // points into argv
    std::string value;               // condition of the conditional value report, lower-cased
    const char *ps_path = "crv.ps";
    const char *init_path = ""; // stored and printed, not used
    int plots_per_page = 0;     // printed, not used
    int file_option_count = 0;
    std::string file_path;
    std::vector<std::string> paths_read;
    uint16_t columns_read = 0;
    double x_range[2] = {100.0, -100.0}; // Deliberate: low above high means no range.
    double y_range[2] = {100.0, -100.0};
    crv_chart *chart = nullptr;
};

// Returns chart 0. Ends the program with status 0 if it could not be allocated, which has been
// reported.
inline crv_chart *crv_RequireChart(crv_driver *driver) {
    if (!driver->chart) utl_Fail(0);
    return driver->chart;
}

// Returns the argument after argument `index`, or null if `index` is the last.
inline char *crv_NextArgument(const crv_driver *driver, int index) {
    return index + 1 < driver->argc ? driver->argv[index + 1] : nullptr;
}

// Does the same, but returns null also if the argument begins with '-'.
inline char *crv_NextValue(const crv_driver *driver, int index) {
    char *next = crv_NextArgument(driver, index);
    return next && next[0] != '-' ? next : nullptr;
}
