// readers/selection.h - the request selection: which series of a file become which columns.
//
//   1052:3,1090:2    item 3 of request 1052 and item 2 of request 1090
//   0,38:3           time, and item 3 of request 38
//   1,3              columns 1 and 3 of a column file
//
// Pair k fills slot first_slot + k of the column table.
#pragma once

#include "records/column.h"

#include <cstddef>
#include <cstdint>
#include <span>

// One pair of the selection. The labels are not zero-terminated.
struct crv_reqsel {
    uint32_t req;       // request identifier or column number; 0 is time
    uint32_t item;      // which value of the request; 0 for time
    char comp_label[2]; // label of the item, set when the file has been read
    int32_t block;      // line of the request within a step, from 1; 0 for time, -1 if missing
    uint32_t type;      // type of the request as the header gives it
    char type_label[5]; // label of the type, set when the file has been read
};

struct crv_selection {
    int first_slot; // column slot of entry 0
    int num_pairs;  // pairs of the text
    size_t count;   // entries: the pairs for which the column table has a slot
    crv_reqsel table[CRV_MAXCOLS];
    uint8_t order[CRV_MAXCOLS]; // indices of the entries, see crv_SortByBlock
};

// Parses the selection `text` for the columns from `first_slot` on, 0 to CRV_MAXCOLS. Never fails:
// text that is not a number reads as 0, which is time. A null text has no pairs.
//
// Pairs are separated by blanks and commas. Without a ':' the item is 1.
crv_selection crv_ParseSel(const char *text, int first_slot);

inline std::span<crv_reqsel> crv_Entries(crv_selection *selection) {
    return {selection->table, selection->count};
}
inline std::span<const crv_reqsel> crv_Entries(const crv_selection &selection) {
    return {selection.table, selection.count};
}

// Returns the columns of the entries, in the same order.
inline std::span<crv_column *const> crv_SelectedColumns(const crv_selection &selection) {
    return {crv_columns + selection.first_slot, selection.count};
}

// Returns true if entry `index` exists and is time.
bool crv_IsTime(const crv_selection &selection, int index);

// Returns the first entry whose request the file does not contain, or null.
const crv_reqsel *crv_FindMissing(const crv_selection &selection);

// Sets both labels of an entry from the tables of its format: texts of five and of two characters,
// by type and by item. Outside the tables they are "?????" and "??".
void crv_LabelEntry(crv_reqsel *entry, std::span<const char *const> types,
                    std::span<const char *const> items);

// Sorts the indices of the entries by block into `order`; entries of one block stay in selection
// order. A reader then reaches them in the order of the lines of a step.
void crv_SortByBlock(crv_selection *selection);

// Returns the block of the entry at position `next` of this order, or `last_block` + 1 after the
// last entry: no entry needs the lines before it.
inline int64_t crv_NextNeededBlock(const crv_selection &selection, size_t next, int last_block) {
    return next < selection.count ? selection.table[selection.order[next]].block
                                  : int64_t{last_block} + 1;
}
