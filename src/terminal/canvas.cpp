// terminal/canvas.cpp - dots as bits of Braille patterns.
#include "terminal/canvas.h"

// Bits of the dots of a pattern by row and column (The Unicode Standard, Braille Patterns).
static constexpr uint8_t braille_bits[4][2] = {
    {0x01, 0x08}, {0x02, 0x10}, {0x04, 0x20}, {0x40, 0x80}};

crv_canvas crv_MakeCanvas(int columns, int rows, bool braille) {
    const size_t cells = static_cast<size_t>(columns) * static_cast<size_t>(rows);
    return {columns, rows, braille ? 2 : 1, braille ? 4 : 1, std::vector<crv_cell>(cells)};
}

void crv_SetDot(crv_canvas *canvas, int x, int y, int curve) {
    crv_cell *cell = crv_CellAt(canvas, x / canvas->dots_per_column, y / canvas->dots_per_row);
    cell->dots |= braille_bits[y % canvas->dots_per_row][x % canvas->dots_per_column];
    cell->is_shared |= cell->curve != 0 && cell->curve != curve;
    cell->curve = curve;
}
