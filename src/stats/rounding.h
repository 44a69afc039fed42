// stats/rounding.h - from the range of the data to the limits of a chart.
#pragma once

// Routine 49. Rounds the pair {low, high} in place to one significant digit times a power of ten,
// the low bound down and the high bound up; a bound that is round already keeps its value. The
// order of the bounds is neither tested nor repaired. Bounds that are infinite or not a number stay
// as they are.
//
// The digit is taken from the number printed with three decimals: 9.9996 counts as 10.
//
// Debug levels 49 and 491 to 494 trace the pair. Deliberate: 491 and 492 replace it by {0.491,
// 491.0} and {0.492, 492.0}, which can then be followed through the chart.
void crv_RMinMax(double *minmax);
