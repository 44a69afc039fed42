// records/column.h - one selected series with its values and statistics, and the table of all of
// them.
#pragma once

#include <cstdint>

// One node of a column's value list, in reading order.
struct crv_value {
    double val;
    crv_value *next; // null at the end
};

// A statistic that a reader does not keep stays 0. A step counts from 1; a time is in the unit of
// the file.
struct crv_column {
    char coltitle[128];  // title of the series, for a request file that of the run
    char colname[32];    // label of the series
    crv_value *val_list; // first node, null while empty
    crv_value *val_cur;  // the last node while a reader appends, else the cursor of a loop
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
    double stddev; // Deliberate: no routine computes it, it stays 0.0 and is dumped so.
    double var1;   // abscissa of the minimum
    double var2;   // abscissa of the maximum
};

constexpr int CRV_MAXCOLS = 31;

// The column table, filled from slot 0 upwards; the first null slot ends it, or its size does. A
// slot that is filled again gets a new record. Records and values live until the program ends.
extern crv_column *crv_columns[CRV_MAXCOLS];

// Puts a new zero-filled column into `slot` of the table. Returns it, or null with errno set when
// memory runs out (the slot then keeps what it had).
crv_column *crv_AllocColumn(int slot);

// Gives a new zero-filled value node, or null with errno set. Nodes come from blocks, 16 bytes
// each.
crv_value *crv_AllocValue();

// Appends `value` to the column's list and makes it the current one. Returns false with errno set
// if memory runs out. Update the statistics of the value before it is appended.
bool crv_AppendValue(crv_column *column, double value);

// Empties the column table. The records stay where they are.
void crv_ClearColumns();
