// records/dump.cpp - the dump formats, a field per line and eight values per line.
#include "records/dump.h"

#include "records/chart.h"
#include "records/column.h"
#include "text/number_writer.h"

#include <cstdint>
#include <cstdio>

static constexpr int values_per_line = 8;

// As "%f".
static utl_number_text fixed(double value) { return utl_FormatFixed(value, 0, 6); }

void crv_DumpChts(int index) {
    const crv_chart *chart = crv_charts[index];
    const auto address = static_cast<unsigned>(reinterpret_cast<uintptr_t>(chart));

    printf("%ccrv_82-i-val, Dumping chart structure.  \n", '%');
    printf(" \n");
    printf("    _82-i-val, ********************************* \n");
    printf("    _82-i-val, charts[%u]  = %u \n", static_cast<unsigned>(index), address);
    printf("    _82-i-val, major_t[0]  = %s\n", chart->major_t[0]);
    printf("    _82-i-val, major_t[1]  = %s\n", chart->major_t[1]);
    printf("    _82-i-val, minor_t[0]  = %s\n", chart->minor_t[0]);
    printf("    _82-i-val, minor_t[1]  = %s\n", chart->minor_t[1]);
    printf("    _82-i-val, xaxis_t     = %s\n", chart->xaxis_t);
    printf("    _82-i-val, yaxis_ts[0] = %s\n", chart->yaxis_ts[0]);
    printf("    _82-i-val, yaxis_ts[1] = %s\n", chart->yaxis_ts[1]);
    printf("    _82-i-val, yaxis_ts[2] = %s\n", chart->yaxis_ts[2]);
    printf("    _82-i-val, ylegends[0] = %s\n", chart->ylegends[0]);
    printf("    _82-i-val, fig         = %s\n", chart->fig);
    printf("    _82-i-val, xminmax     = %s   ::: %s \n", fixed(chart->xminmax[0]).text,
           fixed(chart->xminmax[1]).text);
    printf("    _82-i-val, yminmax     = %s   ::: %s \n", fixed(chart->yminmax[0]).text,
           fixed(chart->yminmax[1]).text);
    printf("    _82-i-val, zoomxminmax = %f   ::: %f \n", chart->zoomxminmax[0],
           chart->zoomxminmax[1]);
    printf("    _82-i-val, zoomyminmax = %f   ::: %f \n", chart->zoomyminmax[0],
           chart->zoomyminmax[1]);
    printf("    _82-i-val, style       = %u   \n", static_cast<unsigned>(chart->style));
    printf("    _82-i-val, num_curves  = %u   \n", static_cast<unsigned>(chart->num_curves));
}

static void print_header(const crv_column *column) {
    printf("    _86-i-val, ------------------------------------ \n");
    printf("    _86-i-val, coltitle = \"%s\" \n", column->coltitle);
    printf("    _86-i-val, colname  = \"%s\" \n", column->colname);
    // The 16-bit count is widened with its sign: 32,768 points print as 4294934528.
    printf("    _86-i-val, numpts   = \"%u\" \n", static_cast<unsigned>(int{column->numpts}));
    printf("    _86-i-val, min      = \"%s\" \n", fixed(column->min).text);
    printf("    _86-i-val, max      = \"%s\" \n", fixed(column->max).text);
    printf("    _86-i-val, mean     = \"%s\" \n", fixed(column->mean).text);
    printf("    _86-i-val, stddev   = \"%f\" \n", column->stddev);
}

static void print_values(crv_column *column) {
    int on_line = 0;
    for (column->val_cur = column->val_list; column->val_cur;
         column->val_cur = column->val_cur->next) {
        char number[utl_max_number_chars];
        *utl_WriteE11_4(number, column->val_cur->val) = '\0';
        printf("%s ", number);
        if (++on_line == values_per_line) {
            printf("\n");
            on_line = 0;
        }
    }
}

void crv_DumpCols(int /*first*/, int /*last*/, int mode) {
    printf("%%crv_86-i-dmp, Dumping column data ...\n\n");
    for (crv_column *column : crv_columns) {
        if (!column) return;
        if (mode == crv_dump_headers || mode == crv_dump_both) print_header(column);
        if (mode == crv_dump_values || mode == crv_dump_both) print_values(column);
        printf(" \n");
    }
}
