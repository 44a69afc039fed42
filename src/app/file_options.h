// app/file_options.h - the file options: each reads its file, or columnizes its files, at the
// moment it is met.
#pragma once

#include "app/driver.h"
#include "app/option_table.h"

// Handles the file option at argument `index`. A selection must have been given before; from the
// second file option on, a leading "0," is cut off it for good, so that time is taken from the
// first file only.
//
// A reader that fails ends the run: with status 1 for a request file, 0 for the others. A
// columnizing option always ends it, with status 0.
void crv_HandleFileOption(crv_driver *driver, int index, crv_option option);

// Lets the user pick a request file after the last argument and reads it.
void crv_ReadPickedRequestFile(crv_driver *driver);
