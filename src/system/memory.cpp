// system/memory.cpp - the replaceable allocator.
#include "system/memory.h"

#include <cstdlib>

void *(*crv_Calloc)(size_t count, size_t size) = calloc;
