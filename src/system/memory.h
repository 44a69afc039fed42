// system/memory.h - allocation of zero-filled memory, replaceable by tests.
#pragma once

#include <cstddef>

// Returns `count` times `size` zero-filled bytes, or null with errno set. This is the C library's
// calloc; tests replace it by an allocator that fails on demand.
extern void *(*crv_Calloc)(size_t count, size_t size);

// Advises the system that all of a large block will be used, so that it can map large pages.
void crv_AdviseLargePages(void *block, size_t size);
