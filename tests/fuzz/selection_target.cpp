// fuzz/selection_target.cpp - a selection is parsed like by strtok and atoi, and its entries are
// ordered by their lines.
//
// Input: the selection on a line; then a line with the blocks of its entries.
#include "harness.h"

#include "readers/selection.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

static crv_reqsel entry_by_rule(const char *token) {
    crv_reqsel entry = {};
    const char *colon = strchr(token, ':');
    entry.req = static_cast<uint32_t>(atoi(token));
    entry.item = colon ? static_cast<uint32_t>(atoi(colon + 1)) : 1;
    entry.block = -1;
    if (entry.req == 0) entry.item = 0, entry.block = 0;
    return entry;
}

static void check_parsed(const std::string &text, const crv_selection &selection, size_t room) {
    const std::span<const crv_reqsel> entries = crv_Entries(selection);
    std::string copy = text;
    size_t count = 0;
    for (char *token = strtok(copy.data(), " ,"); token; token = strtok(nullptr, " ,"), ++count) {
        if (count >= room) continue;
        require(count < entries.size(), "no pair is left out");
        const crv_reqsel wanted = entry_by_rule(token);
        const crv_reqsel &entry = entries[count];
        require(entry.req == wanted.req && entry.item == wanted.item && entry.block == wanted.block,
                "a pair is read as by atoi");
    }
    require(entries.size() == std::min(count, room), "there are as many entries as pairs");
    require(selection.num_pairs == static_cast<int>(count), "all pairs are counted");
}

static void check_order(crv_selection selection, std::string_view blocks) {
    const std::span<crv_reqsel> entries = crv_Entries(&selection);
    for (crv_reqsel &entry : entries) entry.block = take_integer(&blocks, ' ');
    crv_SortByBlock(&selection);
    std::vector<uint8_t> wanted(entries.size());
    for (size_t k = 0; k < wanted.size(); ++k) wanted[k] = static_cast<uint8_t>(k);
    std::stable_sort(wanted.begin(), wanted.end(),
                     [&](uint8_t a, uint8_t b) { return entries[a].block < entries[b].block; });
    require(std::equal(wanted.begin(), wanted.end(), selection.order),
            "entries are sorted by block, equal ones stay");
    for (size_t k = 0; k < wanted.size(); ++k)
        require(crv_NextNeededBlock(selection, k, 5) == entries[wanted[k]].block,
                "and met in that order");
    require(crv_NextNeededBlock(selection, wanted.size(), 5) == 6, "and no other after them");
}

static void check_labels(crv_reqsel entry) {
    const char *const types[] = {"Time ", "Displ"};
    const char *const items[] = {"T ", "1 ", "2 "};
    entry.type = entry.item;
    crv_LabelEntry(&entry, types, items);
    const char *type = entry.type < 2 ? types[entry.type] : "?????";
    const char *item = entry.item < 3 ? items[entry.item] : "??";
    require(memcmp(entry.type_label, type, 5) == 0 && memcmp(entry.comp_label, item, 2) == 0,
            "labels are those of the tables or question marks");
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string_view rest(reinterpret_cast<const char *>(data), size);
    const std::string text = take_text(&rest, '\n');
    const size_t room = rest.size() % (CRV_MAXCOLS + 1);
    const crv_selection selection =
        crv_ParseSel(text.c_str(), CRV_MAXCOLS - static_cast<int>(room));
    const std::span<const crv_reqsel> entries = crv_Entries(selection);
    check_parsed(text, selection, room);
    for (const crv_reqsel &entry : entries) check_labels(entry);
    for (int k = 0; k <= CRV_MAXCOLS; ++k)
        require(crv_IsTime(selection, k) == (static_cast<size_t>(k) < entries.size() &&
                                             entries[static_cast<size_t>(k)].req == 0),
                "request 0 is time");
    check_order(selection, rest);
    return 0;
}
