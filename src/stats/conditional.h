// stats/conditional.h - conditional value report: the value of one column where another meets a
// condition.
#pragma once

enum class crv_value_report {
    printed,
    not_reached,  // the "NOT!" line
    unknown_word, // the empty line
};

// Prints one line about the first two columns of the column table, which must exist. `condition` is
// in lower case. The debug level is not used.
//
//   ma..., mi...       (max, min) first column at the maximum or minimum of the second
//   a.a..., a.i...     (amax, amin) first column at the largest or smallest magnitude of the second
//   other m..., a...   an empty line
//   other text         a number: second column where the first crosses it, interpolated linearly
//                      between points
//
// A missing point or crossing prints the "NOT!" line. Returns what the line is.
//
// Deliberate: a number is searched for in the first column and the value is taken from the second,
// the reverse of the extremes, while the line names the columns in the same order. On an exact hit
// the value is that of the previous point.
crv_value_report crv_ReportValue(const char *condition, int debug_level);
