// postscript/page.h - numbers as the chart file writes them.
#pragma once

// Whole numbers are written by %u; a negative one wraps.
inline unsigned crv_ToUnsigned(int number) { return static_cast<unsigned>(number); }
