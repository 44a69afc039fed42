// terminal/format.h - decides how a stream shows a picture.
#pragma once

#include "terminal/picture.h"

#include <cstdio>

// Returns the format for pictures on the stream.
//
// Size: that of the terminal at the stream, except the last row, where the prompt follows.
// Without a terminal, or where it does not tell its size, the whole numbers in the environment
// variables COLUMNS and LINES, or 80 by 24. Colours: on a terminal that has them, unless the
// variable NO_COLOR is set and not empty. Braille: if output is UTF-8.
crv_terminal_format crv_ChooseFormat(FILE *stream);
