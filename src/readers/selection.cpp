// readers/selection.cpp - see selection.h.
#include "readers/selection.h"

#include "util/text.h"

#include <string_view>

static crv_reqsel entry_of(std::string_view token) {
    crv_reqsel entry = {};
    const size_t colon = token.find(':');
    entry.req = static_cast<uint32_t>(utl_ToInt(token.substr(0, colon)));
    entry.item = colon == token.npos ? 1 : static_cast<uint32_t>(utl_ToInt(token.substr(colon + 1)));
    entry.block = -1;
    if (entry.req == 0) { // time is always found, on the step's time line
        entry.item = 0;
        entry.block = 0;
    }
    return entry;
}

int crv_ParseSel(const char *text, std::span<crv_reqsel> entries) {
    std::string_view rest = text ? text : "";
    std::string_view token;
    size_t count = 0;
    while (utl_NextField(&rest, &token)) {
        if (count < entries.size()) entries[count] = entry_of(token);
        ++count;
    }
    return static_cast<int>(count);
}

void crv_SortByBlock(std::span<const crv_reqsel> entries, uint8_t *order) {
    for (size_t k = 0; k < entries.size(); ++k) {
        size_t place = k;
        for (; place > 0 && entries[order[place - 1]].block > entries[k].block; --place)
            order[place] = order[place - 1];
        order[place] = static_cast<uint8_t>(k);
    }
}
