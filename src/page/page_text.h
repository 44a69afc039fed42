// page/page_text.h - the text of a page around its title and its data, with style and script. The
// build makes it of page.html, page.css and page.js; see cmake/page_text.cmake.
#pragma once

#include <string_view>

extern const std::string_view crv_page_head; // up to the title
extern const std::string_view crv_page_body; // from the title to the data
extern const std::string_view crv_page_end;  // after the data
