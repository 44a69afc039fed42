// readers/request_header.cpp - reads title, count and entries of a request file, line by line.
#include "readers/request_header.h"

#include "text/fields.h"
#include "text/fixed_text.h"
#include "text/number_reader.h"

static constexpr size_t long_title_length = 78; // of a title line that is too long

static utl_line next_line(utl_line_reader *lines) {
    return utl_ReadLine(lines, crv_request_line_limit);
}

static void read_title(utl_line_reader *lines, crv_request_header *header) {
    const utl_line line = next_line(lines);
    utl_CopyText(header->title, line.text);
    header->title_status = line.status;
    if (line.status != utl_line_status::newline && line.text.size() >= long_title_length) {
        header->title[long_title_length] = '\0';
        header->title_status = utl_line_status::newline;
    }
}

crv_request_header crv_ReadRequestHeader(utl_line_reader *lines) {
    crv_request_header header = {};
    next_line(lines);
    read_title(lines, &header);
    header.num_requests = utl_ToInt(next_line(lines).text);
    return header;
}

bool crv_ReadRequestEntry(utl_line_reader *lines, crv_request_header *header,
                          crv_request_entry *entry) {
    if (header->num_entries >= header->num_requests) return false;
    const utl_line line = next_line(lines);
    if (line.status == utl_line_status::eof) return false;
    int fields[5]; // missing ones are 0
    utl_ReadIntegers(line.text, fields);
    *entry = {.identifier = static_cast<uint32_t>(fields[0]),
              .type = static_cast<uint32_t>(fields[1]),
              .block = ++header->num_entries,
              .name = {}};
    if (fields[4] != 0) entry->name = next_line(lines).text;
    return true;
}
