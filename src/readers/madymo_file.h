// readers/madymo_file.h - reads Madymo post-processed files (.mad).
//
//   line 1       title of the run
//   line 2       anything, skipped
//   line 3       N and M, the number of requests and of column descriptions
//   then         N request lines: the first ten characters are the request's name
//   then         M column descriptions, skipped
//   to the end   steps of N + 1 lines: the time line, then one line per request
//
// Line 1 holds at most 125 characters, the others 509. Numbers are separated by blanks and commas,
// at most 31 of a line are used. A request is named by its place in the list, counted from 1; its
// item is the place of the number on its line, and item 0 is the time.
#pragma once

#include "readers/selection.h"

// Routine 88. Makes one column per pair of `selection`: pair k fills slot first_slot + k of the
// column table with the values that pass the time window of the settings, and keeps their
// statistics but for steps and times. Pairs for which the table has no slot are left out; the
// caller refuses such a selection.
//
// Returns the number of columns made, or 0 when a selected request is not in the file (no column is
// made then). A file that cannot be read, a data line without its line end, an item above 31 and
// memory that runs out end the program with status 0.
//
// Deliberate: a third line without two numbers is complained of, and reading goes on with what it
// gives.
int crv_ReadMad(const char *path, const crv_selection &selection);
