// app/info_text.h - texts that the outputs of crv-info have in common.
#pragma once

#include "app/info.h"

#include <string>
#include <vector>

// Returns a number with as many digits as it takes to read back the same number, at least 15 where
// it has them: "0.1", "100000".
std::string crv_NumberText(double value);

// Returns "request file" or the like.
const char *crv_FormatText(crv_format format);

// Returns the label of a request type without trailing blanks: "Displ", or "?????" for an unknown
// type.
std::string crv_TypeText(uint32_t type);

// Returns the labels of items 1 to 8 of a request file, without trailing blanks.
std::vector<std::string> crv_ItemTexts();

// Returns true if the file has more points than a signed 16-bit count represents.
bool crv_CountWraps(const crv_info &info);
