// util/file_pickers.h - lets the user pick files of the current folder from a numbered list on the
// console.
//
// Both pickers have a listing written to a temporary file, print the names with their numbers,
// remove the temporary file and read the answer: at most 15 characters, the end of standard input
// is an empty one. Names have at most 78 characters; a longer one shows as several. A temporary
// file is never written through a link.
#pragma once

#include <cstdint>
#include <string>

// One file of a list. The list's owner frees it, entry by entry.
struct crv_file {
    crv_file *next; // null at the end
    char *name;
};

// Routine 34. Offers the files that match `pattern`; the user takes one (n), all (a), a range (n:n)
// or none (e, q or nothing). Returns the files taken, in listing order, or null. A wrong answer
// takes none. Without memory the program ends with status 0.
//
// Deliberate: leaving without a choice also complains that no number was chosen; and a wrong answer
// takes nothing here, where it ends the program in routine 33. The two list differently too: this
// one as the host's command does, in the order of the locale and with what matching folders hold.
crv_file *crv_ListFiles(const char *pattern);

// Routine 35. Gives a list of one entry with a copy of `name`. Without memory the program ends with
// status 0.
crv_file *crv_AllocFile(const char *name);

// Frees an entry and returns the next.
crv_file *crv_FreeFile(crv_file *file);

// Routine 33. Offers the files that match `pattern`; the user takes one, the first when the answer
// is empty. Returns 1 with the name in `name`, or 0 with an empty name when the answer is e. With
// `allow_typing` an empty answer asks for a name instead. A wrong answer, a listing that cannot be
// read and memory that runs out end the program with status 1.
int utl_lstfile(const char *pattern, std::string *name, uint32_t allow_typing, int debug_level);
