// records/memory.cpp - see memory.h.
#include "records/memory.h"

#include <cstdlib>

#ifdef __linux__
#include <cstdint>
#include <sys/mman.h>

static constexpr uintptr_t large_page = 2 * 1024 * 1024;

void crv_AdviseLargePages(void *block, size_t size) {
    const auto begin = (reinterpret_cast<uintptr_t>(block) + large_page - 1) & ~(large_page - 1);
    const auto end = (reinterpret_cast<uintptr_t>(block) + size) & ~(large_page - 1);
    if (begin < end) madvise(reinterpret_cast<void *>(begin), end - begin, MADV_HUGEPAGE);
}

#else

void crv_AdviseLargePages(void * /*block*/, size_t /*size*/) {}

#endif

void *(*crv_Calloc)(size_t count, size_t size) = calloc;
