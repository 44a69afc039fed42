// util/file_pickers.h - file selection from a numbered list of the current directory on the
// console.
//
// Both pickers let the host write a listing to a temporary file, print the names with numbers,
// remove the temporary file and read an answer of at most 15 characters; the end of standard input
// is an empty answer. Names have at most 78 characters; a longer one is listed as several. A
// temporary file is never written through a link.
#pragma once

#include <cstdint>
#include <string>

// One entry of a list. The caller frees the list by crv_FreeFile, entry by entry.
struct crv_file {
    crv_file *next; // null at the end
    char *name;
};

// Routine 34. Lists the files that match `pattern`; the user selects one (n), all (a), a range
// (n:n) or none (e, q or an empty answer). Returns the selected files in listing order, or null. An
// invalid answer selects none. A listing that cannot be opened prints an error message and returns
// null. Ends the program with status 0 if memory runs out.
//
// Deliberate: leaving without a selection also prints the message that no number was chosen; and an
// invalid answer selects nothing, whereas it ends the program in routine 33. The listings differ as
// well: this one is that of the host's command, in the order of the locale, with the contents of
// matching directories.
crv_file *crv_ListFiles(const char *pattern);

// Routine 35. Returns a list of one entry with a copy of `name`. Ends the program with status 0 if
// memory runs out.
crv_file *crv_AllocFile(const char *name);

// Frees an entry and returns the next one.
crv_file *crv_FreeFile(crv_file *file);

// Routine 33. Lists the files that match `pattern`; the user selects one. An empty answer selects
// the first file or, if `allow_typing` is not 0, prompts for a name. Returns 1 with the name in
// `name`, or 0 with an empty name if the answer begins with e. Ends the program with status 1 if
// the answer is invalid, the listing cannot be opened or memory runs out. Debug level 33 prints the
// pattern.
int utl_lstfile(const char *pattern, std::string *name, uint32_t allow_typing, int debug_level);
