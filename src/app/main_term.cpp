// app/main_term.cpp - program entry of crv-term: a chart as text for the terminal.
#include "app/viewer.h"
#include "system/console.h"
#include "terminal/format.h"
#include "text/utf8.h"

#include <cmath>

namespace {

struct point_counts {
    unsigned long long all = 0;
    unsigned long long finite = 0;
};

} // namespace

static point_counts count_points(const crv_view_curve &curve) {
    point_counts counts;
    const crv_value *x = curve.x->val_list;
    const crv_value *y = curve.y->val_list;
    for (; x && y; x = x->next, y = y->next) {
        ++counts.all;
        counts.finite += std::isfinite(x->val) && std::isfinite(y->val);
    }
    return counts;
}

// The picture has no marks for points that are not finite.
static void report_points_left_out(const crv_view &view) {
    unsigned long long drawn = 0;
    for (const crv_view_curve &curve : view.curves) {
        const point_counts counts = count_points(curve);
        drawn += counts.finite;
        if (counts.finite == counts.all) continue;
        fprintf(utl_ErrorStream(),
                "%%crv_07-w-fin, %llu of %llu points of \"%s\" of \"%s\" are not finite and left"
                " out\n",
                counts.all - counts.finite, counts.all, utl_CleanText(curve.y->colname).c_str(),
                utl_CleanText(view.files[static_cast<size_t>(curve.file)].path).c_str());
    }
    if (drawn == 0)
        fprintf(utl_ErrorStream(), "%%crv_07-w-emp, No point is finite, the chart is empty\n");
}

static bool write_picture(const crv_view &view, FILE *stream) {
    const crv_terminal_format format = crv_ChooseFormat(stream);
    const std::string picture = crv_DrawPicture(view, format);
    if (picture.empty()) {
        fprintf(utl_ErrorStream(),
                "%%crv_07-e-siz, %d columns and %d rows are too few for a chart, which needs %d"
                " and %d\n",
                format.columns, format.rows, crv_min_picture_columns, crv_min_picture_rows);
        return false;
    }
    report_points_left_out(view);
    fwrite(picture.data(), 1, picture.size(), stream);
    return true;
}

static constexpr crv_viewer viewer = {
    .name = "crv-term",
    .purpose = "Draw the series of result files as a chart in the terminal.",
    .example = "crv-term -r 0,38:3,52:3 -f run1.req",
    .chart_summary = "write to the file, without colours, instead of standard output",
    .default_path = nullptr,
    .output_needs_name = false,
    .min_series = 2,
    .draws_pairs = true,
    .write = write_picture,
};

int main(int argc, char **argv) { return crv_RunViewer(argc, argv, viewer); }
