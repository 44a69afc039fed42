// postscript/balance.h - looks at user text before it goes into a PostScript string.
#pragma once

// Routine 47. Reports on standard error when the parentheses or the braces of `text` do not
// balance. Only the totals count, not the order, and no character is an escape.
//
// Deliberate: the messages name crv.ps and routine 47 whatever the file is called and whoever asks.
void crv_ChkBal(const char *text);
