// app/main_csv.cpp - program entry of crv-csv: series as comma-separated values.
#include "app/viewer.h"
#include "csv/csv_file.h"

static constexpr crv_viewer viewer = {
    .name = "crv-csv",
    .purpose = "Print the series of result files as comma-separated values, with all digits.",
    .example = "crv-csv -r 0,38:3,52:3 -f run1.req > run1.csv",
    .chart_summary = "write to the file instead of standard output",
    .default_path = nullptr,
    .output_needs_name = true,
    .min_series = 1,
    .draws_pairs = false,
    .write = crv_WriteCsv,
};

int main(int argc, char **argv) { return crv_RunViewer(argc, argv, viewer); }
