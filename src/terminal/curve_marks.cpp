// terminal/curve_marks.cpp - looks for a free cell of the curve around each target column.
#include "terminal/curve_marks.h"

#include <algorithm>
#include <initializer_list>

static constexpr int columns_per_mark = 30;
static constexpr int max_marks = 24; // of all curves, but two of each are allowed

// Returns the cell of the curve in the middle of those in a column, or null if there is none.
static crv_cell *find_cell(crv_canvas *canvas, int column, int curve, bool is_shared) {
    std::vector<crv_cell *> found;
    for (int row = 0; row < canvas->rows; ++row) {
        crv_cell *cell = crv_CellAt(canvas, column, row);
        if (cell->curve == curve && cell->is_shared == is_shared && !cell->mark)
            found.push_back(cell);
    }
    return found.empty() ? nullptr : found[found.size() / 2];
}

// Looks at columns in the order of their distance from `target`.
static crv_cell *find_nearest_cell(crv_canvas *canvas, int target, int max_distance, int curve,
                                   bool is_shared) {
    for (int distance = 0; distance <= max_distance; ++distance)
        for (const int sign : {1, -1}) {
            const int column = target + sign * distance;
            if (column < 0 || column >= canvas->columns) continue;
            if (crv_cell *cell = find_cell(canvas, column, curve, is_shared)) return cell;
        }
    return nullptr;
}

static void place_marks_of(crv_canvas *canvas, int curve, int curves, char letter) {
    const int allowed = std::max(2, max_marks / curves);
    const int marks = std::clamp(canvas->columns / columns_per_mark, 1, allowed);
    for (int k = 0; k < marks; ++k) {
        const double part = (k + (curve - 0.5) / curves) / marks;
        const int target = static_cast<int>(part * canvas->columns);
        const int distance = canvas->columns / (2 * marks);
        crv_cell *cell = find_nearest_cell(canvas, target, distance, curve, false);
        if (!cell) cell = find_nearest_cell(canvas, target, distance, curve, true);
        if (cell) cell->mark = letter;
    }
}

void crv_PlaceMarks(crv_canvas *canvas, const std::vector<crv_curve_style> &styles) {
    const int curves = static_cast<int>(styles.size());
    for (int k = 0; k < curves; ++k) {
        const char letter = styles[static_cast<size_t>(k)].mark;
        if (letter) place_marks_of(canvas, k + 1, curves, letter);
    }
}
