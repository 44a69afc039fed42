// postscript/page.h - converts whole coordinates for the %u formats of the chart file.
#pragma once

// A negative number wraps modulo 2^32.
inline unsigned crv_ToUnsigned(int number) { return static_cast<unsigned>(number); }
