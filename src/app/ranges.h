// app/ranges.h - parses the ranges low:high of the options -tm, -x and -y.
//
// Each routine parses `value`, stores the range and prints it or a warning. A value without ':' is
// the low bound; the high bound is then 0. A null value, for an option without one, does nothing.
#pragma once

// -tm: sets the time window of the settings. An empty value sets {10.0, -10.0}, which excludes all
// points. Deliberate: a window with low above high is stored, although the warning says that the
// default is used.
void crv_SetTimeWindow(const char *value);

// Prints the warning of a time window with low above high.
void crv_ReportImproperTimeWindow();

// -x and -y: set `range` to {low, high}. Low above high, and a value that begins with 'a', set
// {10.0, -10.0}, which means no range.
void crv_SetXRange(const char *value, double (&range)[2]);
void crv_SetYRange(const char *value, double (&range)[2]);
