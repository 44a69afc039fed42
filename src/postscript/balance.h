// postscript/balance.h - checks the parentheses and braces of text for a PostScript string.
#pragma once

// Routine 47. Prints an error message on standard error if the numbers of opening and closing
// parentheses in `text` differ, and one if those of braces differ. The order is not checked, and no
// character is an escape.
//
// Deliberate: the messages name crv.ps and routine 47 for every file and every caller.
void crv_ChkBal(const char *text);
