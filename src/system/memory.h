// system/memory.h - allocation of zero-filled memory, replaceable by tests.
#pragma once

#include <cstddef>

// Returns `count` times `size` zero-filled bytes, or null with errno set. This is the C library's
// calloc; tests replace it by an allocator that fails on demand.
extern void *(*crv_Calloc)(size_t count, size_t size);

constexpr size_t crv_large_page = 2 * 1024 * 1024;

// Advises the system that `size` bytes will be used from the first large page in `block` on, so
// that it can map large pages. Returns the begin of that page; the block must have crv_large_page
// bytes more. On Windows, where large pages need a privilege, it does nothing and returns `block`,
// which need not begin a large page.
void *crv_AdviseLargePages(void *block, size_t size);
