// readers/selection.cpp - parses the selection text, and puts its entries in the order of a step.
#include "readers/selection.h"

#include "text/fields.h"
#include "text/number_reader.h"

#include <cstring>
#include <string_view>

static crv_reqsel parse_pair(std::string_view token) {
    crv_reqsel entry = {};
    const size_t colon = token.find(':');
    entry.req = static_cast<uint32_t>(utl_ToInt(token.substr(0, colon)));
    entry.item =
        colon == token.npos ? 1 : static_cast<uint32_t>(utl_ToInt(token.substr(colon + 1)));
    entry.block = -1;
    if (entry.req == 0) { // time is always found, on the time line of a step
        entry.item = 0;
        entry.block = 0;
    }
    return entry;
}

crv_selection crv_ParseSel(const char *text, int first_slot) {
    crv_selection selection = {};
    selection.first_slot = first_slot;
    const auto free_slots = static_cast<size_t>(CRV_MAXCOLS - first_slot);
    std::string_view rest = text ? text : "";
    std::string_view token;
    for (; utl_NextField(&rest, &token); ++selection.num_pairs)
        if (selection.count < free_slots) selection.table[selection.count++] = parse_pair(token);
    return selection;
}

bool crv_IsTime(const crv_selection &selection, int index) {
    const auto at = static_cast<size_t>(index);
    return at < selection.count && selection.table[at].req == 0;
}

const crv_reqsel *crv_FindMissing(const crv_selection &selection) {
    for (const crv_reqsel &entry : crv_Entries(selection))
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

void crv_SortByBlock(crv_selection *selection) {
    uint8_t *order = selection->order;
    for (size_t k = 0; k < selection->count; ++k) {
        size_t at = k;
        for (; at > 0 && selection->table[order[at - 1]].block > selection->table[k].block; --at)
            order[at] = order[at - 1];
        order[at] = static_cast<uint8_t>(k);
    }
}
