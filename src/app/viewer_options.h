// app/viewer_options.h - table of the options that the viewers have in common with crv.
//
// Forms, values and completions are those of option_table.h; an option that is not here is a
// mistake in a viewer. scripts/generate_options.py generates the completions of the viewers and
// their manual pages from both tables.
#pragma once

#include "app/option_table.h"

struct crv_viewer_option {
    crv_option option;
    std::string_view effect; // marked as in crv_option_texts; empty for an option without effect
};

// In the order of crv_option_texts.
inline constexpr auto crv_viewer_options = [] {
    using enum crv_option;
    return std::to_array<crv_viewer_option>({
        {selection,
         "Select the series to read from the files that follow, such as `0,38:3,52:3`. The first "
         "series of the first file is X. A later file whose selection begins with `0,` is drawn "
         "over its own time, which has no number among the series; a file without is drawn over "
         "the X of the first file, step by step."},
        {request_file, "Read a request file."},
        {madymo_file, "Read a Madymo file."},
        {column_file,
         "Read a column file. Line *N* contains the labels, and the data begins on the next line; "
         "*N* is 1 by default, and 0 means that there are no labels. Column 0 is the row count."},
        {frame_file,
         "Read a frame file. It uses no selection, but one must have been given: `-r 0` is enough. "
         "In a later file, a selection that begins with `0,` makes its X the abscissa of its "
         "curve; otherwise both columns are curves."},
        {time_window,
         "Use only the points in the time window, for the files that follow; for column files it "
         "is a window of row numbers. The window includes its bounds. Frame files have no time: "
         "all of their points are used, as are those of all files without this option."},
        {absolute_extremes, ""},
        {all_statistics, ""},
        {chart, "Write the output to the file *chart*."},
        {x_range,
         "Set the range of X that is shown first; a value that begins with `a` means that of the "
         "data. No points are dropped, and `crv-csv` writes all rows."},
        {y_range, "Set the range of Y in the same way."},
        {x_label, "Set the label of series 0, which is X. It must have been read."},
        {y_label,
         "Set the label of series 1, or of series *N*, which is one digit. It must have been "
         "read."},
        {title, "Set the title. By default it is that of the first file."},
        {subtitle, "Set the subtitle."},
        {help, "Print the help, as `--help` does."},
        {debug_level, ""},
        {verbose_level, ""},
        {full_screen, ""},
        {init_file, ""},
        {menu_panes, ""},
    });
}();

// Returns the entry of an option, or null if it is none of the viewers.
constexpr const crv_viewer_option *crv_FindViewerOption(crv_option option) {
    for (const crv_viewer_option &entry : crv_viewer_options)
        if (entry.option == option) return &entry;
    return nullptr;
}
