// readers/request_item.h - the value that an item number selects on the line of a request.
//
//   item    value                             label
//   0, 1    first number                      "T ", "X "
//   2, 3    second and third                  "Y ", "Z "
//   4 to 6  fourth to sixth                   "A1" .. "A3"
//   7       magnitude of the first three      "M "
//   8       magnitude of the fourth to sixth  "AM"
//   other   -999.999                          "??"
#pragma once

#include "text/fields.h"

#include <cstdint>

// Returns the value of `item` on the line of a request. A missing number is read as 0.0 and sets
// *complete to false; otherwise *complete is unchanged. Items in ascending order are fastest.
double crv_ReadItem(utl_line_fields *line, uint32_t item, bool *complete);
