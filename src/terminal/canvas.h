// terminal/canvas.h - the plot area as a grid of dots: lines, crosses and marks of curves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// A character of the plot area.
struct crv_cell {
    uint8_t dots;   // bits of the Braille pattern, which is U+2800 plus them; in ASCII 1 if set
    bool is_shared; // by several curves
    char mark;      // letter of a curve in place of the dots, 0 for none
    int curve;      // the last one drawn here, counted from 1; 0 for none
};

// Dots are counted from the upper left corner, to the right and downward.
struct crv_canvas {
    int columns, rows;                 // characters
    int dots_per_column, dots_per_row; // 2 and 4 with Braille patterns, otherwise 1 and 1
    std::vector<crv_cell> cells;       // row by row
};

crv_canvas crv_MakeCanvas(int columns, int rows, bool braille);

inline int crv_CountDotsAcross(const crv_canvas &canvas) {
    return canvas.columns * canvas.dots_per_column;
}

inline int crv_CountDotsDown(const crv_canvas &canvas) { return canvas.rows * canvas.dots_per_row; }

inline crv_cell *crv_CellAt(crv_canvas *canvas, int column, int row) {
    const auto index = static_cast<size_t>(row) * static_cast<size_t>(canvas->columns);
    return &canvas->cells[index + static_cast<size_t>(column)];
}

// Sets the dot (x, y), which is on the canvas, for a curve.
void crv_SetDot(crv_canvas *canvas, int x, int y, int curve);
