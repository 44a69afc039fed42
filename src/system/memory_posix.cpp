// system/memory_posix.cpp - large pages by madvise, where the system knows the advice.
#include "system/memory.h"

#include <cstdint>
#include <sys/mman.h>

#ifdef MADV_HUGEPAGE
static constexpr int large_page_advice = MADV_HUGEPAGE;
#else
static constexpr int large_page_advice = MADV_NORMAL;
#endif

static constexpr uintptr_t large_page = 2 * 1024 * 1024;

void crv_AdviseLargePages(void *block, size_t size) {
    const auto address = reinterpret_cast<uintptr_t>(block);
    const size_t before = (large_page - address % large_page) % large_page; // the first large page
    if (size < before + large_page) return;
    const size_t whole_pages = (size - before) / large_page * large_page;
    madvise(static_cast<char *>(block) + before, whole_pages, large_page_advice);
}
