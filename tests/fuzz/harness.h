// fuzz/harness.h - a sandbox in which a fuzz target runs a part of the program.
//
// In the sandbox the end of the run is an exception, shell commands are recorded instead of run,
// output goes to memory, standard input comes from memory, the date is fixed, and files are in a
// temporary directory: a path that leads out of it does not open. Memory and files that are left
// open are released afterwards. The sources of the program are compiled with exceptions here, so
// that the end of a run unwinds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

// The surroundings of a run.
struct sandbox {
    std::string input;          // standard input
    std::string listing;        // output of the host's listing command
    size_t read_piece = 0;      // maximum of characters that one read returns; 0 for no limit
    int64_t bad_allocation = 0; // this allocation fails, counted from 1; 0 none
    int64_t bad_read = 0;       // and this read of a file, and all after it
};

// The results of a run.
struct outcome {
    bool quit = false; // the part ended the program
    int status = 0;    // with this status
    std::string out, err;
    std::vector<std::string> commands;   // except listings
    std::vector<std::string> files_read; // names, in order of opening
    std::map<std::string, std::string> files;
    bool operator==(const outcome &) const = default;
};

// Runs `part` with the given files in the directory, with settings and tables as at the start of a
// run.
outcome run_sandboxed(const sandbox &box, const std::map<std::string, std::string> &files,
                      const std::function<void()> &part);

// Takes input apart: the text up to the next `separator`, which is consumed, or what is left.
std::string take_text(std::string_view *rest, char separator);
int take_integer(std::string_view *rest, char separator);
double take_number(std::string_view *rest, char separator);

// Stops the fuzzer with a finding unless `holds`.
void require(bool holds, const char *property);

// The target: one call for each input.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
