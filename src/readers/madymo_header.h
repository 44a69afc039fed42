// readers/madymo_header.h - header of a Madymo file: title, counts, names of the requests and
// column descriptions. The layout of the file is in readers/madymo_file.h.
//
// Names and descriptions are read one at a time: the header can announce more of them than the file
// has lines.
#pragma once

#include "text/line_reader.h"

#include <cstddef>
#include <string_view>

// Maximum length of a line after the title: 509 characters and the line end.
constexpr size_t crv_madymo_line_limit = 510;
// Characters of a request line that are the name of the request.
constexpr size_t crv_madymo_name_length = 10;
// Numbers of a line that can be selected.
constexpr int crv_madymo_max_numbers = 31;

struct crv_madymo_header {
    char title[128];
    utl_line_status title_status; // whether the title has its line end
    bool has_counts;              // line 3 begins with two numbers; a missing one is 0
    int num_requests;
    int num_descriptions;
    int num_names;     // names read so far
    int num_described; // descriptions read so far
};

// Reads lines 1 to 3. The number of requests can be below 0; the file is then not usable.
crv_madymo_header crv_ReadMadymoHeader(utl_line_reader *lines);

// Reads the line of the next request. Its name is the first characters of the text, which is valid
// until the next read. Returns false after the last request, or if the file ends before it.
bool crv_ReadMadymoName(utl_line_reader *lines, crv_madymo_header *header, std::string_view *text);

// Reads the next column description, after the names, in the same way.
bool crv_ReadMadymoDescription(utl_line_reader *lines, crv_madymo_header *header,
                               std::string_view *text);
