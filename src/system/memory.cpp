// system/memory.cpp - see memory.h.
#include "system/memory.h"

#include <cstdlib>

#ifdef __linux__
#include <cstdint>
#include <sys/mman.h>

static constexpr uintptr_t large_page = 2 * 1024 * 1024;

void crv_AdviseLargePages(void *block, size_t size) {
    const auto address = reinterpret_cast<uintptr_t>(block);
    const size_t before = (large_page - address % large_page) % large_page; // the first large page
    if (size < before + large_page) return;
    madvise(static_cast<char *>(block) + before, (size - before) / large_page * large_page,
            MADV_HUGEPAGE);
}

#else

void crv_AdviseLargePages(void * /*block*/, size_t /*size*/) {}

#endif

void *(*crv_Calloc)(size_t count, size_t size) = calloc;
