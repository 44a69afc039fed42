// app/main_term.cpp - program entry of crv-term: a chart as text for the terminal.
#include "app/viewer.h"
#include "system/console.h"
#include "terminal/format.h"

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
