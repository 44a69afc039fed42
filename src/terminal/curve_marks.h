// terminal/curve_marks.h - puts the letters of curves on the canvas.
#pragma once

#include "terminal/canvas.h"
#include "terminal/curve_style.h"

#include <vector>

// Replaces dots of each curve by its letter, once for about 30 columns, at columns that differ
// between the curves. Prefers cells that no other curve shares. A curve that others hide gets none.
void crv_PlaceMarks(crv_canvas *canvas, const std::vector<crv_curve_style> &styles);
