// page/curve_labels.h - labels of curves, made distinct, and the series that they belong to.
#pragma once

#include "records/view.h"

#include <string>
#include <vector>

// The label of a curve, as shown text (text/utf8.h), and its series, counted from 0. Curves of
// different files have the same series if they have the same name; of equal names of one file,
// each is a series of its own.
struct crv_curve_label {
    std::string text;
    size_t series;
};

// Returns the labels of the curves of a view, in their order: the name of the curve, with the name
// of its file if a curve of another file has the same name, and with a number from the second on
// if that is still equal to an earlier one.
std::vector<crv_curve_label> crv_LabelCurves(const crv_view &view);

// Returns a path without its directories, as shown text.
std::string crv_ShownFileName(std::string_view path);
