// readers/selection.h - the request selection: which series of a file become columns.
//
//   1052:3,1090:2    item 3 of request 1052 and item 2 of request 1090
//   0,38:3           time, and item 3 of request 38
//   1,3              columns 1 and 3 of a column file
//
// Pair k fills column slot first + k of the reader that it is handed to.
#pragma once

#include "records/column.h"

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

// Reads the selection `text` into `table`, as many pairs as it holds, and returns the part that was
// filled. It never fails: what is not a number reads as 0, and so as time. A null text has no
// pairs.
//
// Pairs are separated by blanks and commas. Without a ':' the item is 1.
std::span<crv_reqsel> crv_ParseSel(const char *text, std::span<crv_reqsel> table);

// The number of pairs of the selection, however many.
int crv_CountSel(const char *text);

// Whether entry `index` is time; false where the selection has no such entry.
bool crv_IsTime(std::span<const crv_reqsel> entries, int index);

// The first entry whose request the file does not have, or null.
const crv_reqsel *crv_FindMissing(std::span<const crv_reqsel> entries);

// Sets both labels of an entry from the tables of its format: texts of five and of two characters,
// by type and by item. What a table does not have is "?????" or "??".
void crv_LabelEntry(crv_reqsel *entry, std::span<const char *const> types,
                    std::span<const char *const> items);

// Puts the indices of `entries` into `order`, sorted by block; entries of one block stay in
// selection order. So a reader meets them in the order in which a step holds their lines.
void crv_SortByBlock(std::span<const crv_reqsel> entries, uint8_t *order);

// The block of the entry that stands at `next` in this order, or `last + 1` when there is none: all
// lines before it are nobody's.
inline int64_t crv_NextNeededBlock(std::span<const crv_reqsel> entries, const uint8_t *order,
                                   size_t next, int last) {
    return next < entries.size() ? entries[order[next]].block : int64_t{last} + 1;
}
