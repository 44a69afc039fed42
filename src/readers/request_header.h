// readers/request_header.h - header of a request file: title, number of requests and one entry for
// each request. The layout of the file is in readers/request_file.h.
//
// Entries are read one at a time: the header can announce more requests than the file has lines.
#pragma once

#include "text/line_reader.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

// Maximum length of a line: 125 characters and the line end.
constexpr size_t crv_request_line_limit = 126;

struct crv_request_header {
    char title[128];
    utl_line_status title_status; // whether the title has its line end
    int num_requests;             // as line 3 gives it
    int num_entries;              // entries read so far
};

// One request of the header. `block` is the position of its entry, counted from 1, which is the
// position of its line in each step.
struct crv_request_entry {
    uint32_t identifier; // 0 is never selected
    uint32_t type;
    int block;
    std::string_view name; // of the line after the entry, until the next read; empty without one
};

// Labels of types and items: five and two characters each, as in crv_reqsel.
inline constexpr const char *crv_request_types[] = {"Time ", "Displ", "Veloc",
                                                    "Accel", "Force", "User "};
inline constexpr const char *crv_request_items[] = {"T ", "X ", "Y ", "Z ", "A1",
                                                    "A2", "A3", "M ", "AM"};

// Reads lines 1 to 3. The number of requests can be below 0; the file is then not usable.
crv_request_header crv_ReadRequestHeader(utl_line_reader *lines);

// Reads the next entry. Returns false after the last one, or if the file ends before it.
bool crv_ReadRequestEntry(utl_line_reader *lines, crv_request_header *header,
                          crv_request_entry *entry);
