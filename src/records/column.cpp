// records/column.cpp - allocates values from blocks, in order; blocks are never freed.
#include "records/column.h"

#include "system/memory.h"

static_assert(sizeof(crv_value) <= 16);

// The first block is small, so that short runs use little memory. The others are large: pages that
// are not used take no memory, and large pages save a third of the system time of a run that stores
// ten million values.
static constexpr size_t first_block_values = 4096;       // 64 KiB
static constexpr size_t large_block_values = 512 * 1024; // 8 MiB

crv_column *crv_columns[CRV_MAXCOLS];

// The last allocated node and the last node of its block, both null before the first block.
static crv_value *last_allocated;
static crv_value *block_end;
static size_t block_values = first_block_values; // of the next block

crv_column *crv_AllocColumn(int slot) {
    auto *column = static_cast<crv_column *>(crv_Calloc(1, sizeof(crv_column)));
    if (column) crv_columns[slot] = column;
    return column;
}

crv_value *crv_AllocValue() {
    if (last_allocated != block_end) return ++last_allocated;

    auto *block = static_cast<crv_value *>(crv_Calloc(block_values, sizeof(crv_value)));
    if (!block) return nullptr;
    crv_AdviseLargePages(block, block_values * sizeof(crv_value));
    last_allocated = block;
    block_end = block + (block_values - 1);
    block_values = large_block_values;
    return last_allocated;
}

bool crv_AppendValue(crv_column *column, double value) {
    crv_value *node = crv_AllocValue();
    if (!node) return false;
    node->val = value;
    if (column->val_list) {
        column->val_cur->next = node;
    } else {
        column->val_list = node;
    }
    column->val_cur = node;
    return true;
}

void crv_ClearColumns() {
    for (crv_column *&column : crv_columns) column = nullptr;
}
