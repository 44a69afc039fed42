// page/page_file.h - writes a view as a page: one HTML file that shows its curves in a browser.
//
// Layout of the page: the texts of page_text.h, and between them
//
//   the title, as text
//   <script type="application/json" id="view">     texts and curves, see below
//   <script type="text/plain" data-column="0">     values of the first column
//   ...
//
// A browser does not run scripts of these types; it keeps their text. The view is the object
//
//   title, subtitle   texts
//   files             their names, without directories
//   columns           their names; a column that several curves share stands once
//   curves            [column of X, column of Y, file, series, label] each; curve_labels.h
//   x_range, y_range  [low, high], or null if not set
//
// The values of a column are doubles of 8 bytes, low byte first, in base64: 32 characters for three
// values. A column with more than crv_page_block_values values continues in further blocks of its
// number, as the text that a browser keeps in one piece is limited.
#pragma once

#include "records/view.h"

#include <cstddef>
#include <cstdio>

constexpr size_t crv_page_block_values = size_t{3} << 20;

// Writes `view` as a page to `stream`, whose failures the caller finds. Bytes of texts that are no
// UTF-8 and control characters become the replacement character, and no text can end its place in
// the page. Returns true.
bool crv_WritePage(const crv_view &view, FILE *stream);
