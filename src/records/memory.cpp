// records/memory.cpp - see memory.h.
#include "records/memory.h"

#include <cstdlib>

void *(*crv_Calloc)(size_t count, size_t size) = calloc;
