// app/info.h - crv-info: prints the contents of result files, and a command line that charts them.
#pragma once

#include "readers/column_file.h"
#include "readers/frame_file.h"
#include "readers/madymo_file.h"
#include "readers/request_file.h"

#include <cstdint>
#include <string>
#include <vector>

enum class crv_format : uint8_t { unknown, request, madymo, column, frame };

// A file of the command line.
struct crv_info_file {
    std::string path; // "-" is standard input
    crv_format format = crv_format::unknown;
    int label_line = 1; // of a column file; 0 without labels
};

// The contents of a file. Of the surveys, that of its format is filled.
struct crv_info {
    crv_info_file file;
    uint64_t size = 0; // in bytes
    crv_request_survey request;
    crv_madymo_survey madymo;
    crv_column_survey column;
    crv_frame_survey frame;
    std::vector<std::string> notes; // sentences about what is unusual
    std::string command;            // charts the first series; empty if crv cannot
};

// How much of a file is read.
struct crv_info_depth {
    uint64_t max_steps; // of request and Madymo files
    bool whole_file;    // also column and frame files, and the size
};

constexpr crv_info_depth crv_info_all = {UINT64_MAX, true};
constexpr crv_info_depth crv_info_header = {1, false}; // what --pairs shows

// Returns the format that the suffix of `path` names, in small or capital letters.
crv_format crv_FormatOfPath(const std::string &path);

// Reads info->file into the surveys and the size. Returns an empty text, or the reason why the file
// cannot be read.
std::string crv_ReadInfo(crv_info *info, const crv_info_depth &depth);

// Fills notes and command from the surveys.
void crv_AddNotes(crv_info *info);
void crv_AddCommand(crv_info *info);

// Returns the survey of the steps or rows; null for a frame file.
const crv_survey *crv_StepsOf(const crv_info &info);

// Returns the title of the file without blanks and line ends at both ends; empty without one.
std::string crv_TitleOf(const crv_info &info);

// Returns the fields of the label line of a column file, at most crv_max_listed.
std::vector<std::string> crv_LabelsOf(const crv_info &info);

// Return the contents as text, as a JSON object without a newline at its end, and as one line for
// each pair of a selection. Such a line has three texts between tabs: the pair, the name of the
// request or column, and what the item is; the last two can be empty. All are UTF-8 without control
// characters except the tabs and the newlines of the layout.
std::string crv_InfoText(const crv_info &info);
std::string crv_InfoJson(const crv_info &info);
std::string crv_InfoPairs(const crv_info &info);

// Returns a JSON object for a file that cannot be read.
std::string crv_InfoErrorJson(const crv_info_file &file, const std::string &error);

// Routine 08. Does one run and returns its exit status: 0 done, 1 a file that cannot be read or
// lost output (also if standard output is closed), 2 a mistake on the command line. The contents of the files go to standard output in
// the order of the arguments, messages to standard error. Never prompts or runs a command.
int crv_RunInfo(int argc, char **argv);
