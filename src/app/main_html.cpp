// app/main_html.cpp - program entry of crv-html: series as a page for a browser.
#include "app/viewer.h"
#include "page/page_file.h"

static constexpr crv_viewer viewer = {
    .name = "crv-html",
    .purpose = "Write the series of result files as a page to examine in a browser.",
    .example = "crv-html -t Suspension -r 0,38:3,52:3 -f run1.req -p page.html",
    .chart_summary = "write to the file instead of crv.html",
    .default_path = "crv.html",
    .output_needs_name = false,
    .min_series = 2,
    .draws_pairs = true,
    .write = crv_WritePage,
};

int main(int argc, char **argv) { return crv_RunViewer(argc, argv, viewer); }
