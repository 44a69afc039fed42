// records/column.cpp - allocates values from blocks, in order; blocks are never freed.
#include "records/column.h"

#include "system/memory.h"

static_assert(sizeof(crv_value) <= 16);

// The first block is small, so that short runs use little memory. The others are large and begin on
// a large page: pages that are not used take no memory, and large pages save a third of the system
// time of a run that stores ten million values.
static constexpr size_t first_block_values = 4096;       // 64 KiB
static constexpr size_t large_block_values = 512 * 1024; // 8 MiB
static constexpr size_t large_page_values = (crv_large_page - 1) / sizeof(crv_value) + 1;

crv_column *crv_columns[CRV_MAXCOLS];

crv_value_block crv_free_values;

crv_column *crv_AllocColumn(int slot) {
    auto *column = static_cast<crv_column *>(crv_Calloc(1, sizeof(crv_column)));
    if (column) crv_columns[slot] = column;
    return column;
}

static crv_value *allocate_large_block() {
    void *block = crv_Calloc(large_block_values + large_page_values, sizeof(crv_value));
    if (!block) return nullptr;
    return static_cast<crv_value *>(
        crv_AdviseLargePages(block, large_block_values * sizeof(crv_value)));
}

crv_value *crv_AllocValueBlock() {
    const bool is_first = !crv_free_values.end;
    auto *block = is_first
                      ? static_cast<crv_value *>(crv_Calloc(first_block_values, sizeof(crv_value)))
                      : allocate_large_block();
    if (!block) return nullptr;
    crv_free_values = {block + 1, block + (is_first ? first_block_values : large_block_values)};
    return block;
}

void crv_ClearColumns() {
    for (crv_column *&column : crv_columns) column = nullptr;
}
