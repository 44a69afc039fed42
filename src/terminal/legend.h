// terminal/legend.h - the lines that name the curves.
#pragma once

#include "records/view.h"
#include "terminal/curve_style.h"
#include "terminal/picture.h"
#include "terminal/styled_text.h"

#include <vector>

// Returns the lines of the legend, at most `max_lines` of the width of the format: a sample and the
// label of each curve. With several files, each file begins a line with its name. The last line
// ends with the number of curves for which there is no space.
std::vector<crv_styled_line> crv_MakeLegend(const crv_view &view,
                                            const std::vector<crv_curve_style> &styles,
                                            const crv_terminal_format &format, int max_lines);
