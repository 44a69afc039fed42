// app/option_table.h - table of the command-line options: spelling, value, files to complete,
// description.
//
// The scan dispatches on this table. scripts/generate_options.py generates from it the option lists
// of the shell completions and of the manual page, and the tables of docs/options.md.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

// What an option does; options.cpp has one case for each.
enum class crv_option : uint8_t {
    selection,
    request_file,
    madymo_file,
    column_file,
    frame_file,
    unknown_file,
    time_window,
    request_table,
    madymo_table,
    absolute_extremes,
    all_statistics,
    chart,
    x_range,
    y_range,
    x_label,
    y_label,
    title,
    subtitle,
    pasted_file,
    story,
    help,
    examples,
    status,
    debug_help,
    bugs,
    debug_level,
    verbose_level,
    full_screen,
    write_file,
    usage,
    init_file,
    menu_panes,
};

// What may follow the spelling in the same argument.
enum class crv_option_rest : uint8_t {
    nothing,
    ignored, // any characters, without effect
    number,  // a number, which is shown as N
};

// Which argument is the value.
enum class crv_option_value : uint8_t {
    none,
    any,   // the next argument
    plain, // the next argument unless it begins with '-'
    table, // as plain, but '-' is an error; the run ends with this option
};

// One form of an option.
struct crv_option_form {
    std::string_view spelling;
    crv_option_rest rest;
    crv_option option;
    crv_option_value value;
    std::string_view value_name; // in brackets when the value can be left out
    std::string_view completion; // of the value: a suffix of files, "selection", "chart", or empty
    std::string_view summary;    // for the completions; a form without a summary is in no list
};

inline constexpr auto crv_option_forms = [] {
    using enum crv_option;
    using enum crv_option_rest;
    using enum crv_option_value;
    return std::to_array<crv_option_form>({
        {"-r", ignored, selection, any, "selection", "selection", "the series to take, 0,38:3"},
        {"-f", nothing, request_file, plain, "[file]", ".req", "read a request file"},
        {"-f", ignored, unknown_file, none, "", "", ""},
        {"-fr", ignored, request_file, plain, "[file]", ".req", "read a request file"},
        {"-fm", nothing, madymo_file, plain, "[file]", ".mad", "read a Madymo file"},
        {"-fp", nothing, column_file, plain, "[file]", ".pos", "read a column file"},
        {"-fp", number, column_file, plain, "[file]", ".pos",
         "read a column file with labels on line N"},
        {"-fg", ignored, frame_file, plain, "[file]", ".vdr", "read a frame file"},
        {"-tm", ignored, time_window, any, "low:high", "", "time window, low:high"},
        {"-fa", ignored, request_table, table, "[file]", ".req",
         "table: title, statistics and data"},
        {"-fc", ignored, request_table, table, "[file]", ".req", "table: title and data"},
        {"-fd", ignored, request_table, table, "[file]", ".req", "table: data"},
        {"-fs", ignored, request_table, table, "[file]", ".req", "table: title and statistics"},
        {"-fma", ignored, madymo_table, table, "[file]", ".mad",
         "Madymo table: title, statistics and data"},
        {"-fmc", ignored, madymo_table, table, "[file]", ".mad", "Madymo table: title and data"},
        {"-fmd", ignored, madymo_table, table, "[file]", ".mad", "Madymo table: data"},
        {"-fms", ignored, madymo_table, table, "[file]", ".mad",
         "Madymo table: title and statistics"},
        {"-abs", ignored, absolute_extremes, none, "", "", "magnitudes in the table"},
        {"-all", ignored, all_statistics, none, "", "", "all statistics in the table"},
        {"-p", ignored, chart, any, "[chart]", "chart", "draw the chart, give it last"},
        {"-p1", ignored, chart, any, "[chart]", "chart", "draw the chart; the digit is echoed"},
        {"-p2", ignored, chart, any, "[chart]", "chart", "draw the chart; the digit is echoed"},
        {"-x", ignored, x_range, any, "low:high", "",
         "X range, low:high, or a for that of the data"},
        {"-y", ignored, y_range, any, "low:high", "",
         "Y range, low:high, or a for that of the data"},
        {"-xl", ignored, x_label, any, "label", "", "X label"},
        {"-yl", nothing, y_label, any, "label", "", "Y label"},
        {"-yla", ignored, y_label, any, "label", "", "Y label"},
        {"-yl", number, y_label, any, "label", "", "label of column N"},
        {"-t", nothing, title, plain, "[title]", "", "title"},
        {"-t1", ignored, title, plain, "title", "", "title"},
        {"-t2", ignored, subtitle, plain, "title", "", "subtitle"},
        {"-s0", ignored, pasted_file, plain, "file", ".ps", "PostScript file to paste"},
        {"-s1", ignored, story, plain, "text", "", "text 1 for the pasted file"},
        {"-s2", ignored, story, plain, "text", "", "text 2 for the pasted file"},
        {"-s3", ignored, story, plain, "text", "", "text 3 for the pasted file"},
        {"-h", ignored, help, none, "", "", "help"},
        {"-e", ignored, examples, none, "", "", "examples"},
        {"-s", ignored, status, none, "", "", "status"},
        {"-H", ignored, debug_help, none, "", "", "help for debug levels"},
        {"-?", ignored, debug_help, none, "", "", "help for debug levels"},
        {"-B", ignored, bugs, none, "", "", "bug list"},
        {"-b", ignored, bugs, none, "", "", "bug list"},
        {"-d", ignored, debug_level, any, "level", "", "debug level, to 999"},
        {"-v", ignored, verbose_level, any, "level", "", "debug level"},
        {"-m", ignored, full_screen, none, "", "", "debug level 24"},
        {"-w", ignored, write_file, plain, "[name]", "", "end without data; the name is echoed"},
        {"-u", ignored, usage, none, "", "", "add to the usage file"},
        {"-i", ignored, init_file, any, "name", "", "name, echoed"},
        {"-n", ignored, menu_panes, any, "number", "", "number, echoed"},
    });
}();

// Returns the form with the longest spelling that `argument` begins with, or null when there is
// none. The first of two forms with the same spelling wins.
constexpr const crv_option_form *crv_FindOption(std::string_view argument) {
    const crv_option_form *found = nullptr;
    for (const crv_option_form &form : crv_option_forms) {
        if (!argument.starts_with(form.spelling)) continue;
        if (form.rest == crv_option_rest::nothing && argument.size() > form.spelling.size())
            continue;
        if (!found || form.spelling.size() > found->spelling.size()) found = &form;
    }
    return found;
}

// Where the documents describe an option, in their order.
enum class crv_option_section : uint8_t { series, tables, chart, texts, other };

// The description of an option and all of its forms. `code` and *argument* are marked as in
// Markdown.
struct crv_option_text {
    crv_option option;
    crv_option_section section;
    std::string_view effect;  // for the manual page and docs/options.md
    std::string_view details; // further sentences, for the manual page
};

// In the order of crv_option_forms.
inline constexpr auto crv_option_texts = [] {
    using enum crv_option;
    using section = crv_option_section;
    return std::to_array<crv_option_text>({
        {selection, section::series,
         "Select the series to read from the files that follow, such as `0,38:3,52:3`. With `=` "
         "and a condition at the end, the next request file ends the run with the conditional "
         "value.",
         "A later `-r` applies to the files after it; columns that have been read do not change."},
        {request_file, section::series,
         "Read a request file. Without *file*, pick one from a list of the `*.req` files.", ""},
        {madymo_file, section::series,
         "Read a Madymo file. Without *file*, pick one from a list of the `*.mad` files.", ""},
        {column_file, section::series,
         "Read a column file. Line *N* contains the labels, and the data begins on the next line; "
         "*N* is 1 by default, and 0 means that there are no labels. Without *file*, pick one from "
         "a list of the `*.pos` files.",
         ""},
        {frame_file, section::series,
         "Read a frame file. It uses no selection, but one must have been given: `-r 0` is enough. "
         "Without *file*, pick one from a list of the `*.vdr` files.",
         "If another option follows, the list contains the `*.req` files."},
        {time_window, section::series,
         "Set the time window for the files that follow, -100 to 10000 by default. For column "
         "files it is a window of row numbers: without this option, rows after number 10000 are "
         "skipped.",
         "The window includes its bounds. Frame files have no time. If *low* is above *high*, a "
         "warning says that the default is used; it is not, and no value passes."},
        {request_table, section::tables,
         "Write a table for each request file, then end the run: `-fa` title, statistics and "
         "values, `-fc` title and values, `-fd` values, `-fs` title and statistics. As the last "
         "argument, pick one or more of the `*.req` files from a list.",
         "The table has the name of the file with the extension `.dat`. Another option in place of "
         "*file* is an error. Arguments after *file* are not scanned."},
        {madymo_table, section::tables,
         "Write the same tables for Madymo files, then end the run. As the last argument, pick one "
         "or more of the `*.mad` files from a list.",
         ""},
        {absolute_extremes, section::tables,
         "Add the smallest and the largest magnitude to the statistics. Give it before the option "
         "of the table.",
         ""},
        {all_statistics, section::tables,
         "Add all statistics: also the magnitudes, the points of the extremes, and the first and "
         "last values. Give it before the option of the table.",
         ""},
        {chart, section::chart,
         "End the run with a chart, in `crv.ps` or in *chart*, and pass it to the printer command. "
         "Give it last: an option after it would be taken as the name. The digit is echoed and "
         "has no other effect.",
         ""},
        {x_range, section::chart,
         "Set the range of the X axis; a value that begins with `a` restores the range of the "
         "data. The range also drops points from the request files that follow.",
         "Without a colon, *high* is 0. If *low* is above *high*, there is a warning and the range "
         "of the data is used. Points are dropped if their first series is outside the range."},
        {y_range, section::chart,
         "Set the range of the Y axis in the same way. No points are dropped.", ""},
        {x_label, section::chart, "Set the label of column 0, which must have been read.",
         "A label has at most 31 characters."},
        {y_label, section::chart,
         "Set the label of column 1, or of column *N*, which is one digit. The column must have "
         "been read.",
         ""},
        {title, section::chart, "Set the title. `-t` as the last argument prompts for it.", ""},
        {subtitle, section::chart, "Set the subtitle.", ""},
        {pasted_file, section::chart, "Paste a PostScript file into the chart, before its data.",
         "The chart then has no legend, no X label, and no subtitle except that of `-t2`."},
        {story, section::chart,
         "Set the strings `crv_story_1` to `crv_story_3` of the chart file, which the pasted file "
         "can show.",
         ""},
        {help, section::texts, "Print the help.",
         "It describes keys and windows of an earlier display."},
        {examples, section::texts, "Print examples.", ""},
        {status, section::texts,
         "Print the status: version, dates and limits. A character other than 0 to 3 after `-s` is "
         "ignored. On Linux the system numbers are zeros.",
         ""},
        {debug_help, section::texts,
         "Print the help for debug levels, which lists the numbers of the routines.", ""},
        {bugs, section::texts, "Print the bug list.", ""},
        {debug_level, section::other,
         "Set the debug level, from 2 to 999; any other value sets 1. As the last argument, print "
         "the help for debug levels.",
         "A routine prints traces if the level is its number."},
        {verbose_level, section::other,
         "Set the debug level in the same way, without an upper limit.", ""},
        {full_screen, section::other, "Set the debug level to 24.", ""},
        {write_file, section::other,
         "End the run without data and without a prompt for a file. The name is echoed; nothing is "
         "written.",
         ""},
        {usage, section::other,
         "Add a line with the date and the arguments to the usage file. It is in the directory of "
         "the program as called, so in the current directory if it was called by its bare name.",
         ""},
        {init_file, section::other, "Echo the name; it has no other effect.", ""},
        {menu_panes, section::other, "Echo the number; it has no other effect.", ""},
    });
}();
