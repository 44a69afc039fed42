// terminal/curve_style.h - colours, dash patterns and characters that distinguish curves.
#pragma once

#include "records/view.h"
#include "terminal/picture.h"

#include <cstdint>
#include <vector>

struct crv_curve_style {
    int color;     // parameter of the escape sequence "select graphic rendition", 0 for none
    uint16_t dash; // 16 dots along the curve, drawn where a bit is set, from the lowest bit
    char mark;     // ASCII: character of the curve; Braille: letter on the curve, 0 for none
};

// Returns one style for each curve of the view.
std::vector<crv_curve_style> crv_StyleCurves(const crv_view &view,
                                             const crv_terminal_format &format);
