// app/options.h - the options of the command line.
#pragma once

#include "app/run.h"

// Looks at the arguments from left to right, once. An option changes a setting or reads a file when
// it is met. Values are not removed from the scan: an argument that is no option is passed over
// without a word.
//
// An option is chosen by its second character; some look at the third and fourth, and -abs and -all
// at the whole word. What comes after that is ignored.
void crv_ScanOptions(crv_driver *run);
