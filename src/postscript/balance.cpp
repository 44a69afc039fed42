// postscript/balance.cpp - counts opening against closing characters, without regard to their
// order.
#include "postscript/balance.h"

#include "system/console.h"

#include <cstdint>
#include <cstdio>

void crv_ChkBal(const char *text) {
    int64_t parens = 0;
    int64_t braces = 0;
    for (const char *c = text; *c; ++c) {
        if (*c == '(') ++parens;
        if (*c == ')') --parens;
        if (*c == '{') ++braces;
        if (*c == '}') --braces;
    }
    if (parens != 0) {
        fprintf(utl_ErrorStream(),
                "%%crv_47-e-bal, Unbalanced parens found in string while writing \"crv.ps\"\n");
        fprintf(utl_ErrorStream(), "    _47-e-bal,  \"%s\"\n", text);
    }
    if (braces != 0) {
        fprintf(utl_ErrorStream(),
                "%%crv_47-e-bal, Unbalanced braces found in string while writing \"crv.ps\"\n");
        fprintf(utl_ErrorStream(), "    _47-e-bal,  \"%s\"\n", text);
    }
}
