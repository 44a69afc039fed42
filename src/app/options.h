// app/options.h - scan of the command-line options.
#pragma once

#include "app/driver.h"

// Handles the arguments once, from left to right. An option changes a setting, or reads a file,
// when the scan reaches it. option_table.h says which arguments are options; others are ignored. A
// value is not removed from the scan: one that has the form of an option is handled as an option
// too.
void crv_ScanOptions(crv_driver *driver);
