// records/column.h - the column record, a selected series with values and statistics; the column
// table.
#pragma once

#include <cstdint>

// One node of a column's value list, in reading order: 16 bytes, or 12 where a double is aligned to
// 4 bytes as on 32-bit x86.
struct crv_value {
    double val;
    crv_value *next; // null at the end
};

// Statistics that a reader does not compute stay 0. Steps are counted from 1; times have the unit
// of the file.
struct crv_column {
    char coltitle[128];  // title of the series; in a request file, of the run
    char colname[32];    // label of the series
    crv_value *val_list; // first node, null while empty
    crv_value *val_cur;  // last node while a reader appends, otherwise a cursor
    int16_t numpts;      // number of values as the reader counts them; wraps above 32,767
    double min;
    uint32_t min_step;
    double min_time;
    double max;
    uint32_t max_step;
    double max_time;
    double mean;
    double sum;
    double absmin; // smallest magnitude
    uint32_t absmin_step;
    double absmin_time;
    double absmax; // largest magnitude
    uint32_t absmax_step;
    double absmax_time;
    double begin_val; // first value
    uint32_t begin_step;
    double begin_time;
    double end_val; // last value
    uint32_t end_step;
    double end_time;
    double stddev;       // Deliberate: never computed, dumped as 0.0.
    double var1;         // abscissa of the minimum
    double var2;         // abscissa of the maximum
    uint64_t num_values; // number of values as the reader counts them, without wrapping
};

constexpr int CRV_MAXCOLS = 31;

// The column table, filled from slot 0; it ends at the first null slot or at its size. A slot that
// is filled again gets a new record. Records and values are never freed.
extern crv_column *crv_columns[CRV_MAXCOLS];

// Stores a new zero-filled column in `slot` of the table and returns it. Returns null with errno
// set if memory runs out; the slot is then unchanged.
crv_column *crv_AllocColumn(int slot);

// The free nodes of the last block of values; both null before the first.
struct crv_value_block {
    crv_value *next;
    crv_value *end;
};
extern crv_value_block crv_free_values;

// Returns the first node of a new block, or null with errno set if memory runs out.
crv_value *crv_AllocValueBlock();

// Returns a new zero-filled value node, or null with errno set if memory runs out.
inline crv_value *crv_AllocValue() {
    return crv_free_values.next != crv_free_values.end ? crv_free_values.next++
                                                       : crv_AllocValueBlock();
}

// Appends `value` to the list of the column and sets val_cur to it. Returns false with errno set if
// memory runs out. Call it after the routines of column_stats.h, which need the old list.
inline bool crv_AppendValue(crv_column *column, double value) {
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

// Counts one value of the column, in both counts.
inline void crv_CountValue(crv_column *column) {
    column->numpts = static_cast<int16_t>(++column->num_values);
}

// Sets all slots of the column table to null. The records are not freed.
void crv_ClearColumns();
