// stats/conditional.h - the conditional value report: the value of one column where another meets a
// condition.
#pragma once

// Prints one line about the first two columns of the column table, which must be there. The
// condition is lower-cased:
//
//   m.a.., m.i..   (max, min)     value of the first column at the maximum, minimum,
//   a?a.., a?i..   (amax, amin)   absolute maximum or minimum of the second, by its point number
//   m..., a...     otherwise: an empty line
//   a number       value of the second column where the first crosses it, by linear interpolation
//   between points
//
// A point that is not there gives the "NOT!" line. The debug level is not used.
//
// Deliberate: a number is looked for in the first column and the value taken from the second, the
// reverse of the extremes, while the line names the columns in the same order. On an exact hit the
// value is that of the point before.
void crv_ReportValue(const char *condition, int debug_level);
