// terminal/curve_path.h - draws a curve on the canvas: joined points, clipped at the border.
#pragma once

#include "records/view.h"
#include "terminal/axis.h"
#include "terminal/canvas.h"

#include <cstdint>

// Draws all points of the curve as curve `number` of the canvas, counted from 1, in the dash
// pattern of curve_style.h; on a canvas without Braille patterns the line is solid. The time grows
// with the number of points, and with the dots of lines that lead to another column of dots.
void crv_DrawCurve(crv_canvas *canvas, const crv_axes &axes, const crv_view_curve &curve,
                   int number, uint16_t dash);
