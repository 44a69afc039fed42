// app/ranges.h - values of the form low:high, of the options -tm, -x and -y.
//
// A value without ':' is the low bound, and the high one is 0. Each routine takes the value as the
// command line has it, null when there is none, which changes nothing, and prints what it made of
// it.
#pragma once

// -tm: the time window of the settings. Deliberate: with low above high the window takes the values
// all the same, although the warning says that the default is used.
void crv_SetTimeWindow(const char *value);

// -x and -y: the range {low, high}, which becomes {10.0, -10.0}, no range, for a word that begins
// with 'a' and for low above high.
void crv_SetXRange(const char *value, double (&range)[2]);
void crv_SetYRange(const char *value, double (&range)[2]);
