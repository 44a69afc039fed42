// readers/column_builder.cpp - titles, means and trace lines of columns.
#include "readers/column_builder.h"

#include "stats/column_stats.h"
#include "system/status_line.h"
#include "text/fixed_text.h"

#include <cstdio>
#include <cstring>

static constexpr size_t title_length = 79;

void crv_CopyLine(char *to, utl_line line, size_t max_length) {
    utl_CopyText(to, max_length + 1, line.text);
    if (line.status != utl_line_status::newline || line.text.size() >= max_length) return;
    to[line.text.size()] = '\n';
    to[line.text.size() + 1] = '\0';
}

void crv_SetTitle(crv_column *column, utl_line line) {
    static_assert(sizeof column->coltitle > title_length);
    crv_CopyLine(column->coltitle, line, title_length);
    column->coltitle[utl_TrimEnd(column->coltitle).size()] = '\0';
}

void crv_SetMeans(std::span<crv_column *const> columns) {
    for (crv_column *column : columns) column->mean = crv_MeanOf(column->sum, crv_CountOf(column));
}

void crv_TraceRecord(utl_line line, int routine) {
    utl_EraseStatusLine();
    printf("    _%d-i-val, rec = %.*s%s \n", routine, static_cast<int>(line.text.size()),
           line.text.data(), line.status == utl_line_status::newline ? "\n" : "");
}

void crv_ListColumns(std::span<crv_column *const> columns, int routine) {
    for (crv_column *column : columns) {
        printf("    _%d-i-val, ---------------------------- \n", routine);
        printf("    _%d-i-val, name = %s, max = %f, min = %f \n", routine, column->colname,
               column->max, column->min);
        printf("    _%d-i-val, var1 = %f, var2 = %f \n", routine, column->var1, column->var2);
        crv_ListValues(column, routine);
    }
}

void crv_ListValues(crv_column *column, int routine) {
    unsigned number = 0;
    for (column->val_cur = column->val_list; column->val_cur;
         column->val_cur = column->val_cur->next)
        printf("    _%d-i-val, %3.0u: value = %10.3f \n", routine, ++number, column->val_cur->val);
}
