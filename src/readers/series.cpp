// readers/series.cpp - see series.h.
#include "readers/series.h"

#include "util/text.h"

#include <cstdio>

bool crv_AppendValue(crv_column *column, double value) {
    crv_value *node = crv_AllocValue();
    if (!node) return false;
    node->val = value;
    if (column->val_list) {
        column->val_cur->next = node;
    } else {
        column->val_list = node;
    }
    column->val_cur = node;
    return true;
}

void crv_ListValues(crv_column *column, int routine) {
    unsigned number = 0;
    for (column->val_cur = column->val_list; column->val_cur; column->val_cur = column->val_cur->next)
        printf("    _%d-i-val, %3.0u: value = %10.3f \n", routine, ++number, column->val_cur->val);
}

void crv_SetTitle(crv_column *column, utl_line line) {
    static_assert(sizeof column->coltitle > crv_title_length);
    if (line.end == utl_end::newline && line.text.size() < crv_title_length) {
        utl_CopyText(column->coltitle, line.text);
        column->coltitle[line.text.size()] = '\n';
        column->coltitle[line.text.size() + 1] = '\0';
    } else {
        utl_CopyText(column->coltitle, utl_TrimEnd(line.text.substr(0, crv_title_length)));
    }
}
