// stats/rounding.h - rounds a range of data to chart limits of one significant digit.
#pragma once

// Routine 49. Rounds the pair {low, high} in place to one significant digit times a power of ten,
// the low bound down and the high bound up. A bound that is round already, infinite or not a number
// is unchanged. The order of the bounds is not checked.
//
// The digit is that of the number printed with three decimals: 9.9996 is treated as 10.
//
// Debug levels 49 and 491 to 494 trace the pair. Deliberate: 491 and 492 replace it by the markers
// {0.491, 491.0} and {0.492, 492.0}, which are easy to find in the chart.
void crv_RMinMax(double *minmax);
