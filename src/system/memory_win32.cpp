// system/memory_win32.cpp - large pages need a privilege on Windows, so that the advice is ignored.
#include "system/memory.h"

void *crv_AdviseLargePages(void *block, size_t /*size*/) { return block; }
