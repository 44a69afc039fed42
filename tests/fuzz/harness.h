// fuzz/harness.h - a closed room in which a fuzz target runs a piece of the program.
//
// In the room the end of the run is an exception, commands to the shell are recorded instead of run, what is printed goes
// to memory, standard input comes from memory, the day stands still, and files lie in a scratch folder: a name that leads
// out of it does not open. What the piece leaves behind, memory and open files, is taken back afterwards. The program's
// sources are compiled with exceptions here, so that the end of a run unwinds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

// What the piece meets.
struct room {
    std::string input;          // standard input
    std::string listing;        // what the host's listing command finds
    size_t read_piece = 0;      // characters that one read gives at the most; 0 as many as there are
    int64_t bad_allocation = 0; // this allocation fails, counted from 1; 0 none
    int64_t bad_read = 0;       // and this read of a file, and all after it
};

// What came of it.
struct outcome {
    bool quit = false; // it ended the program
    int status = 0;    // with this status
    std::string out, err;
    std::vector<std::string> commands;   // that were no listings
    std::vector<std::string> files_read; // names, in order of opening
    std::map<std::string, std::string> files;
    bool operator==(const outcome &) const = default;
};

// Runs `piece` with the given files in the folder, with settings and tables as at the start of a run.
outcome run_in_room(const room &room, const std::map<std::string, std::string> &files,
                    const std::function<void()> &piece);

// Takes input apart: the text up to the next `separator`, which is consumed, or what is left.
std::string take_text(std::string_view *rest, char separator);
int take_integer(std::string_view *rest, char separator);
double take_number(std::string_view *rest, char separator);

// Stops the fuzzer with a finding unless `holds`.
void require(bool holds, const char *property);

// The target: one call for each input.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
