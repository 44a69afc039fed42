// readers/selection.cpp - see selection.h.
#include "readers/selection.h"

#include "text/fields.h"
#include "text/number_reader.h"

#include <cstring>
#include <string_view>

static crv_reqsel entry_of(std::string_view token) {
    crv_reqsel entry = {};
    const size_t colon = token.find(':');
    entry.req = static_cast<uint32_t>(utl_ToInt(token.substr(0, colon)));
    entry.item =
        colon == token.npos ? 1 : static_cast<uint32_t>(utl_ToInt(token.substr(colon + 1)));
    entry.block = -1;
    if (entry.req == 0) { // time is always found, on the step's time line
        entry.item = 0;
        entry.block = 0;
    }
    return entry;
}

std::span<crv_reqsel> crv_ParseSel(const char *text, std::span<crv_reqsel> table) {
    std::string_view rest = text ? text : "";
    std::string_view token;
    size_t count = 0;
    while (count < table.size() && utl_NextField(&rest, &token)) table[count++] = entry_of(token);
    return table.first(count);
}

int crv_CountSel(const char *text) {
    std::string_view rest = text ? text : "";
    std::string_view token;
    int count = 0;
    while (utl_NextField(&rest, &token)) ++count;
    return count;
}

bool crv_IsTime(std::span<const crv_reqsel> entries, int index) {
    const auto at = static_cast<size_t>(index);
    return at < entries.size() && entries[at].req == 0;
}

const crv_reqsel *crv_FindMissing(std::span<const crv_reqsel> entries) {
    for (const crv_reqsel &entry : entries)
        if (entry.block == -1) return &entry;
    return nullptr;
}

void crv_LabelEntry(crv_reqsel *entry, std::span<const char *const> types,
                    std::span<const char *const> items) {
    const char *type = entry->type < types.size() ? types[entry->type] : "?????";
    const char *item = entry->item < items.size() ? items[entry->item] : "??";
    memcpy(entry->type_label, type, sizeof entry->type_label);
    memcpy(entry->comp_label, item, sizeof entry->comp_label);
}

void crv_SortByBlock(std::span<const crv_reqsel> entries, uint8_t *order) {
    for (size_t k = 0; k < entries.size(); ++k) {
        size_t place = k;
        for (; place > 0 && entries[order[place - 1]].block > entries[k].block; --place)
            order[place] = order[place - 1];
        order[place] = static_cast<uint8_t>(k);
    }
}
