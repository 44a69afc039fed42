// records/chart.cpp - the chart table, and initialisation of chart records.
#include "records/chart.h"

#include "records/range.h"
#include "system/memory.h"

#include <cstdio>

crv_chart *crv_charts[crv_chart_slots];

static constexpr uint16_t preset_curves = 5; // curves 0 to 4 get their own column pair

static bool make_curves(crv_chart *chart) {
    for (crv_curve *&curve : chart->curves) {
        curve = static_cast<crv_curve *>(crv_Calloc(1, sizeof(crv_curve)));
        if (!curve) return false;
    }
    for (uint16_t k = 0; k < preset_curves; ++k)
        *chart->curves[k] = {0, static_cast<uint16_t>(k + 1)};
    return true;
}

crv_chart *crv_AllocCht(int index) {
    crv_chart *chart = crv_charts[index];
    if (chart) {
        printf("%%crv_50-w-ini, Chart struct already allocated, Reinitalizing\n");
    } else {
        chart = static_cast<crv_chart *>(crv_Calloc(1, sizeof(crv_chart)));
        if (!chart) {
            perror("    _50-e-calloc, data");
            return nullptr;
        }
        crv_charts[index] = chart;
    }

    for (auto &title : chart->major_t) title[0] = '\0';
    for (auto &title : chart->minor_t) title[0] = '\0';
    for (auto &story : chart->story_ts) story[0] = '\0';
    chart->style = 1;
    chart->num_curves = 0;
    if (!make_curves(chart)) {
        perror("    _50-e-calloc, curve");
        return nullptr;
    }
    crv_SetRange(chart->xminmax, 10.0, -10.0);
    crv_SetRange(chart->yminmax, 20.0, -20.0);
    crv_SetRange(chart->zoomxminmax, 11.0, -11.0);
    crv_SetRange(chart->zoomyminmax, 22.0, -22.0);
    return chart;
}
