// system/memory.h - where the records get their memory.
#pragma once

#include <cstddef>

// Gives `count` times `size` zero-filled bytes, or null with errno set. It is the C library's
// calloc; a test puts an allocator in its place that fails when it is told to.
extern void *(*crv_Calloc)(size_t count, size_t size);

// Tells the system that all of a large block will be used, so that it may map it in large pages.
void crv_AdviseLargePages(void *block, size_t size);
