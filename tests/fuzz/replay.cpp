// fuzz/replay.cpp - runs a fuzz target on stored inputs, for compilers without a fuzzer. Arguments
// are files, or directories whose files are the inputs.
#include "harness.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

static std::vector<std::filesystem::path> inputs_of(const std::filesystem::path &path) {
    std::vector<std::filesystem::path> inputs;
    if (std::filesystem::is_regular_file(path)) return {std::filesystem::absolute(path)};
    std::error_code missing; // a directory that is missing has no inputs
    for (const auto &entry : std::filesystem::directory_iterator(path, missing))
        inputs.push_back(std::filesystem::absolute(entry.path()));
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

int main(int argc, char **argv) {
    std::vector<std::filesystem::path> inputs;
    for (int k = 1; k < argc; ++k) {
        const auto found = inputs_of(argv[k]);
        if (found.empty()) {
            fprintf(stderr, "%s has no inputs\n", argv[k]);
            return 1;
        }
        inputs.insert(inputs.end(), found.begin(), found.end());
    }
    for (const auto &input : inputs) {
        std::ifstream in(input, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(in), {}};
        fprintf(stderr, "%s\n", input.filename().c_str());
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
    }
    printf("%zu inputs\n", inputs.size());
    return inputs.empty() ? 1 : 0;
}
