// app/viewer_run.h - the steps of a viewer's run: arguments, files, view.
#pragma once

#include "app/option_table.h"
#include "app/viewer.h"
#include "records/column.h"

#include <string>
#include <vector>

constexpr int crv_viewer_done = 0;
constexpr int crv_viewer_failed = 1;
constexpr int crv_viewer_mistake = 2;

// An option of the command line with its value, which is null if it has none.
struct crv_viewer_argument {
    crv_option option;
    const char *spelling;
    const char *value;
};

// What --help, -h and --version ask for, the first of them.
enum class crv_viewer_text : uint8_t { none, help, version };

// The command line. Nothing of it has been carried out.
struct crv_viewer_arguments {
    std::vector<crv_viewer_argument> options; // in their order
    crv_viewer_text text = crv_viewer_text::none;
    const char *output_path; // null for standard output
};

// Reads the command line. Returns false, after a message on standard error, if it contains a
// mistake; options after --help, -h or --version are not looked at.
bool crv_ParseViewerArguments(int argc, char **argv, const crv_viewer &viewer,
                              crv_viewer_arguments *arguments);

// Returns the number of series that the file option `argument` reads by `selection`: `keeps_time`
// is true if it is not the first file and its selection begins with time, which is then no series.
int crv_CountSeries(const crv_viewer_argument &argument, const char *selection, bool is_later);

// True if a later file with this selection is drawn over its own time.
bool crv_BeginsWithTime(const char *selection);

// Sets the settings, carries out the options in their order, and fills the view. A reader's
// messages go to standard output. Returns false, after a message, if a file cannot be read, lacks a
// request or has no points; some failures of a reader end the program.
bool crv_ReadView(const crv_viewer_arguments &arguments, crv_view *view);

// Warns of each file that is drawn over the X of the first file and has more points than that.
void crv_ReportPointsWithoutX(const crv_view &view);

// Prints the text of --help.
void crv_PrintViewerHelp(const crv_viewer &viewer, FILE *stream);
