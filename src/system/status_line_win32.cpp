// system/status_line_win32.cpp - a console has no background, and its input is read without a wait
// before it; an interrupt leaves the line.
#include "system/status_line.h"

bool utl_IsInForeground() { return true; }

bool utl_AwaitInput(int /*file*/, int /*milliseconds*/) { return true; }

void utl_WriteOnInterrupt(const char * /*text*/, size_t /*length*/) {}
