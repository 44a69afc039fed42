// terminal/picture.h - draws the curves of a view as text: a chart of Braille dots or ASCII
// characters with frame, axis numbers, titles, X label and legend.
#pragma once

#include "records/view.h"

#include <string>

// What the terminal shows. `braille` means UTF-8 with Braille patterns (2 by 4 dots in a
// character) and box drawing; otherwise the picture is plain ASCII. `colors` means the escape
// sequences of ECMA-48 for the eight colours that a terminal's user has chosen.
struct crv_terminal_format {
    int columns = 80;
    int rows = 24;
    bool braille = false;
    bool colors = false;
};

// The smallest picture. A smaller format gives an empty text.
constexpr int crv_min_picture_columns = 20;
constexpr int crv_min_picture_rows = 6;

// The largest picture; a larger format gives a picture of this size.
constexpr int crv_max_picture_size = 1000;

// Returns the picture of all curves: at most `rows` lines of at most `columns` columns, each with a
// line end. Lines have no blanks at the end.
//
// The picture shows the view's ranges. A range that is not set, or not finite, is that of the
// finite points: of Y, of those in the X range. A range without extent is widened by a tenth of its
// value, or by 1 around 0. Consecutive points are joined, also across the border; a pair with a
// value that is not finite interrupts the curve. A point without neighbors is a cross of five dots.
//
// With colours, each series (the position of a curve in its file) has a colour, and each file a
// dash pattern or, in ASCII, a character. Without colours, or when these do not suffice, each curve
// has its own letter or character.
std::string crv_DrawPicture(const crv_view &view, const crv_terminal_format &format);
