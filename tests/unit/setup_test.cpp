// unit/setup_test.cpp - whole runs in which memory runs out.
#include "app/setup.h"

#include "support.h"

namespace {

class setup : public fresh_run {
  protected:
    // A run with these arguments. Comes back at the plain end only.
    static void run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "crv");
        std::vector<char *> argv;
        for (std::string &argument : arguments) argv.push_back(argument.data());
        crv_SetUp(static_cast<int>(argv.size()), argv.data(), nullptr);
    }
};

const std::string no_chart = "    _50-e-calloc, data: Cannot allocate memory\n";

TEST_F(setup, AMissingChartEndsTheRunAtItsFirstUse) {
    const auto without_chart = [](const std::vector<std::string> &arguments) {
        const failing_memory memory(0);
        run(arguments);
        exit(77);
    };
    // The scan goes on until something needs the chart.
    for (const std::vector<std::string> &arguments :
         {std::vector<std::string>{"-w", "x"}, {"-h"}, {"-t", "title"}, {"-s1", "story", "-t", "title"}})
        EXPECT_EXIT(without_chart(arguments), testing::ExitedWithCode(0), "^" + no_chart + "$");
    EXPECT_EXIT(without_chart({"-yl", "label"}), testing::ExitedWithCode(0), no_chart + "%crv_05-e-lbl");
    EXPECT_EXIT(without_chart({"-p"}), testing::ExitedWithCode(0), no_chart + "%crv_05-f-dat");
}

// The allocation that fails, in the order of the main job: the chart and its curves, the columns, the first value.
TEST_F(setup, EachAllocationOfARunThatFailsIsReported) {
    const text_file file("\nt\n1\n7 1 0 0 0\n0\n1\n1\n2\n");
    const std::pair<std::string, int> ends[] = {
        {"    _50-e-calloc, data", 0},  {"    _50-e-calloc, curve", 0}, {"    _50-e-calloc, curve", 0},
        {"    _50-e-calloc, curve", 0}, {"    _50-e-calloc, curve", 0}, {"    _50-e-calloc, curve", 0},
        {"    _50-e-calloc, curve", 0}, {"    _50-e-calloc, curve", 0}, {"    _83-e-calloc, data", 1},
        {"    _83-e-calloc, data", 1},  {"    _83-f-calloc", 1}};
    int good = 0;
    for (const auto &[report, status] : ends) {
        EXPECT_EXIT(
            {
                use_up_values();
                const failing_memory memory(good, 1);
                run({"-r", "0,7", "-f", file.path(), "-w", "x"});
                exit(77);
            },
            testing::ExitedWithCode(status), "^" + report + ": Cannot allocate memory\n$")
            << good << " good allocations";
        ++good;
    }
    EXPECT_EXIT(
        {
            use_up_values();
            const failing_memory memory(good, 1);
            run({"-r", "0,7", "-f", file.path(), "-w", "x"});
            exit(77);
        },
        testing::ExitedWithCode(77), "^$")
        << "these are all";
}

} // namespace
