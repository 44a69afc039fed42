// readers/frame_header.cpp - dispatches on the letters of a directive, and reads its lines.
#include "readers/frame_header.h"

#include "readers/column_builder.h"
#include "text/fixed_text.h"
#include "text/number_reader.h"

static utl_line next_line(utl_line_reader *lines) {
    return utl_ReadLine(lines, crv_frame_line_limit);
}

static int next_integer(utl_line_reader *lines) { return utl_ToInt(next_line(lines).text); }

template <size_t length>
static void read_text(utl_line_reader *lines, crv_frame_text<length> *text) {
    text->given = true;
    crv_CopyLine(text->text, next_line(lines), length);
}

static void read_range(utl_line_reader *lines, double (&range)[2]) {
    range[0] = utl_ToDouble(next_line(lines).text);
    range[1] = utl_ToDouble(next_line(lines).text);
}

static void read_count(utl_line_reader *lines, crv_frame_header *header) {
    header->num_points = next_integer(lines);
    header->has_points_of_style = false;
}

static void read_style(utl_line_reader *lines, crv_frame_header *header) {
    header->num_points = next_integer(lines);
    header->has_points_of_style = true;
    header->has_style = true;
    header->style = static_cast<uint16_t>(header->num_points);
}

static void read_y_label(utl_line_reader *lines, crv_frame_header *header, char number) {
    if (number >= '1' && number <= '6') {
        read_text(lines, &header->y_titles[number - '0']);
    } else {
        read_text(lines, &header->y_label);
    }
}

static crv_frame_event read_x_directive(utl_line_reader *lines, crv_frame_header *header,
                                        char letter) {
    switch (letter) {
    case 'A': read_text(lines, &header->x_label); return crv_frame_event::none;
    case 'R': read_range(lines, header->x_range); return crv_frame_event::x_range;
    case 'Y': return crv_frame_event::begin;
    default: return crv_frame_event::none;
    }
}

static crv_frame_event read_y_directive(utl_line_reader *lines, crv_frame_header *header,
                                        char letter, char number) {
    switch (letter) {
    case 'A': read_y_label(lines, header, number); return crv_frame_event::none;
    case 'R': read_range(lines, header->y_range); return crv_frame_event::y_range;
    default: return crv_frame_event::none;
    }
}

// Returns character `at` of the text, or NUL after its end.
static char character(std::string_view text, size_t at) {
    return at < text.size() ? text[at] : '\0';
}

crv_frame_event crv_ReadFrameDirective(utl_line_reader *lines, crv_frame_header *header) {
    const utl_line line = next_line(lines);
    if (line.status == utl_line_status::eof) return crv_frame_event::end;
    if (utl_TrimEnd(line.text).empty()) return crv_frame_event::empty;
    if (line.text[0] != '%') return crv_frame_event::text;
    const char letter = character(line.text, 2);
    const char number = character(line.text, 3);
    switch (character(line.text, 1)) {
    case 'N': read_count(lines, header); break;
    case 'S': read_style(lines, header); break;
    case 'T': read_text(lines, &header->title); break;
    case 'X': return read_x_directive(lines, header, letter);
    case 'Y': return read_y_directive(lines, header, letter, number);
    case 'D': return crv_frame_event::data;
    default: break;
    }
    return crv_frame_event::none;
}
