// fuzz/options_target.cpp - whole runs: command line, files, standard input and environment from
// the fuzzer.
//
// Input, each part up to the character 1: the arguments, a line each; standard input; the printer
// command, "-" for none; what the host's listing command finds; the allocation that fails, 0 for
// none; then the request, Madymo, column and frame file a.req, a.mad, a.pos and a.vdr.
#include "harness.h"

#include "app/setup.h"

#include <algorithm>
#include <cstdlib>

namespace {

struct run_input {
    std::vector<std::string> arguments;
    sandbox box;
    std::string printer;
    std::map<std::string, std::string> files;
};

} // namespace

static std::string take_bytes(std::string_view *rest, char separator) {
    const size_t length = rest->find(separator);
    const std::string bytes(rest->substr(0, length));
    rest->remove_prefix(length == rest->npos ? rest->size() : length + 1);
    return bytes;
}

static run_input take_input(std::string_view rest) {
    run_input input;
    const std::string arguments = take_text(&rest, '\1');
    std::string_view lines = arguments;
    while (!lines.empty()) input.arguments.push_back(take_text(&lines, '\n'));
    input.box.input = take_bytes(&rest, '\1');
    input.printer = take_text(&rest, '\1');
    input.box.listing = take_bytes(&rest, '\1');
    input.box.bad_allocation = take_integer(&rest, '\1');
    for (const char *name : {"a.req", "a.mad", "a.pos", "a.vdr"})
        input.files[name] = take_bytes(&rest, '\1');
    return input;
}

static void run(const run_input &input) {
    std::vector<std::string> words = input.arguments;
    words.insert(words.begin(), "./crv");
    std::vector<char *> argv;
    for (std::string &word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    if (input.printer == "-") {
        unsetenv("CRV_PRINTCHAIN");
    } else {
        setenv("CRV_PRINTCHAIN", input.printer.c_str(), 1);
    }
    crv_SetUp(static_cast<int>(words.size()), argv.data(), nullptr);
}

static bool mentions(const run_input &input, const char *text) {
    return std::any_of(
               input.arguments.begin(), input.arguments.end(),
               [&](const std::string &argument) { return argument.find(text) != argument.npos; }) ||
           input.box.listing.find(text) != std::string::npos ||
           input.box.input.find(text) != std::string::npos ||
           input.printer.find(text) != std::string::npos;
}

// A file that was read is as it was; the tables that the run writes say so.
static void check_files_read(const run_input &input, const outcome &result) {
    for (const std::string &name : result.files_read) {
        if (!input.files.contains(name)) continue;
        const auto file = result.files.find(name);
        require(file != result.files.end() && file->second == input.files.at(name),
                "a file that was read is as it was");
    }
}

// What was there and not read can only have been replaced by the chart, which was asked for by
// name.
static void check_other_files(const run_input &input, const outcome &result) {
    for (const auto &[name, bytes] : input.files) {
        const auto file = result.files.find(name);
        require(file != result.files.end(), "no file is removed");
        require(file->second == bytes || file->second.starts_with("%!   "),
                "only a chart takes another file's place");
    }
}

static void check_chart(const run_input &input, const outcome &result) {
    for (const std::string &command : result.commands) {
        const std::string prefix = (input.printer == "-" ? "lpr " : input.printer) + " ";
        require(command.starts_with(prefix), "the one command that is run is the printer's");
        const auto chart = result.files.find(command.substr(prefix.size()));
        if (chart != result.files.end())
            require(chart->second.starts_with("%!   ") && chart->second.ends_with("showpage \n"),
                    "what is printed is a whole chart");
    }
    require(result.commands.size() <= 1, "a chart is printed once");
    require(result.commands.empty() || (result.quit && result.status == 1),
            "a finished chart ends with 1");
}

// The dump of a chart shows where the record lies.
static outcome without_address(outcome result) {
    const std::string before = "charts[0]  = ";
    for (size_t at = 0; (at = result.out.find(before, at)) != result.out.npos;) {
        at += before.size();
        result.out.erase(at, result.out.find(' ', at) - at);
    }
    return result;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const run_input input = take_input({reinterpret_cast<const char *>(data), size});
    if (mentions(input, "_temp.tmp")) return 0; // the program's own files
    const outcome result = run_sandboxed(input.box, input.files, [&] { run(input); });
    require(!result.quit || result.status == 0 || result.status == 1, "a run ends with 0 or 1");
    check_files_read(input, result);
    check_other_files(input, result);
    check_chart(input, result);
    if (input.box.bad_allocation == 0)
        for (const char *name : {"crv_temp.tmp", "utl_temp.tmp"})
            require(!result.files.contains(name), "no listing is left behind");
    const outcome again = run_sandboxed(input.box, input.files, [&] { run(input); });
    require(without_address(again) == without_address(result), "a second run does the same");
    return 0;
}
