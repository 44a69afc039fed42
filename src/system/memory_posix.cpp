// system/memory_posix.cpp - large pages by madvise, where the system knows the advice.
#include "system/memory.h"

#include <cstdint>
#include <sys/mman.h>

#ifdef MADV_HUGEPAGE
static constexpr int large_page_advice = MADV_HUGEPAGE;
#else
static constexpr int large_page_advice = MADV_NORMAL;
#endif

void *crv_AdviseLargePages(void *block, size_t size) {
    const auto address = reinterpret_cast<uintptr_t>(block);
    char *const page = static_cast<char *>(block) + (0 - address) % crv_large_page;
    madvise(page, size, large_page_advice);
    return page;
}
