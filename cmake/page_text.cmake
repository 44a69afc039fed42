# Writes a C++ source with the text of the page, in which style and script stand with their hashes.
#
#   cmake -D SOURCE=src/page -D OUTPUT=page_text.cpp -P page_text.cmake

# Sets `result` to the SHA-256 of a text in base64, as a Content-Security-Policy writes it.
function(hash_in_base64 text result)
  set(digits "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  string(SHA256 hex "${text}")
  # 32 bytes and one of zero are eleven groups of three bytes, each of which makes four digits. The
  # last digit is only of the added byte, and "=" is written in its place.
  set(base64)
  foreach(at RANGE 0 60 6)
    string(SUBSTRING "${hex}00" ${at} 6 group)
    foreach(shift 18 12 6 0)
      math(EXPR digit "(0x${group} >> ${shift}) & 63")
      string(SUBSTRING ${digits} ${digit} 1 character)
      string(APPEND base64 ${character})
    endforeach()
  endforeach()
  string(SUBSTRING ${base64} 0 43 base64)
  set(${result} "${base64}=" PARENT_SCOPE)
endfunction()

# The browser reads CR LF as LF before it computes a hash.
foreach(kind html css js)
  file(READ ${SOURCE}/page.${kind} ${kind})
  string(REPLACE "\r\n" "\n" ${kind} "${${kind}}")
endforeach()
hash_in_base64("${css}" css_hash)
hash_in_base64("${js}" js_hash)
string(REPLACE "@STYLE_HASH@" "${css_hash}" html "${html}")
string(REPLACE "@SCRIPT_HASH@" "${js_hash}" html "${html}")
string(REPLACE "@STYLE@" "${css}" html "${html}")
string(REPLACE "@SCRIPT@" "${js}" html "${html}")

set(begin "\nconst std::string_view")
set(open "R\"page(")
set(close ")page\";")
string(REPLACE "@TITLE@" "${close}${begin} crv_page_body = ${open}" html "${html}")
string(REPLACE "@DATA@" "${close}${begin} crv_page_end = ${open}" html "${html}")
file(WRITE ${OUTPUT} "// Written by cmake/page_text.cmake.\n#include \"page/page_text.h\"\n"
  "${begin} crv_page_head = ${open}${html}${close}\n")
