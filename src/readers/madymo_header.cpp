// readers/madymo_header.cpp - reads title, counts, names and descriptions of a Madymo file.
#include "readers/madymo_header.h"

#include "text/fixed_text.h"

#include <cstdio>

static constexpr size_t title_limit = 126; // 125 characters and the line end

static void read_title(utl_line_reader *lines, crv_madymo_header *header) {
    const utl_line line = utl_ReadLine(lines, title_limit);
    utl_CopyText(header->title, line.text);
    header->title_status = line.status;
}

static void read_counts(utl_line_reader *lines, crv_madymo_header *header) {
    char text[crv_madymo_line_limit + 1];
    utl_CopyText(text, utl_ReadLine(lines, crv_madymo_line_limit).text);
    header->has_counts =
        sscanf(text, "%d %d", &header->num_requests, &header->num_descriptions) == 2;
}

crv_madymo_header crv_ReadMadymoHeader(utl_line_reader *lines) {
    crv_madymo_header header = {};
    read_title(lines, &header);
    utl_ReadLine(lines, crv_madymo_line_limit);
    read_counts(lines, &header);
    return header;
}

// Reads a line if `*done` is below `count`, and counts it.
static bool read_listed_line(utl_line_reader *lines, int count, int *done, std::string_view *text) {
    if (*done >= count) return false;
    const utl_line line = utl_ReadLine(lines, crv_madymo_line_limit);
    if (line.status == utl_line_status::eof) return false;
    *text = line.text;
    ++*done;
    return true;
}

bool crv_ReadMadymoName(utl_line_reader *lines, crv_madymo_header *header, std::string_view *text) {
    return read_listed_line(lines, header->num_requests, &header->num_names, text);
}

bool crv_ReadMadymoDescription(utl_line_reader *lines, crv_madymo_header *header,
                               std::string_view *text) {
    return read_listed_line(lines, header->num_descriptions, &header->num_described, text);
}
