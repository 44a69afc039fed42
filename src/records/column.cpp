// records/column.cpp - see column.h.
#include "records/column.h"

#include "records/memory.h"

static_assert(sizeof(crv_value) == 16);

static constexpr int block_values = 4096; // 64 KiB a block

crv_column *crv_columns[CRV_MAXCOLS];

// The node just allocated, and the last one of its block. Both null before the first block.
static crv_value *value_new;
static crv_value *value_last;

crv_column *crv_AllocColumn(int slot) {
    auto *column = static_cast<crv_column *>(crv_Calloc(1, sizeof(crv_column)));
    if (column) crv_columns[slot] = column;
    return column;
}

crv_value *crv_AllocValue() {
    if (value_new != value_last) return ++value_new;

    auto *block = static_cast<crv_value *>(crv_Calloc(block_values, sizeof(crv_value)));
    if (!block) return nullptr;
    value_new = block;
    value_last = block + (block_values - 1);
    return value_new;
}

void crv_ClearColumns() {
    for (crv_column *&column : crv_columns) column = nullptr;
}
