// unit/setup_test.cpp - runs without memory for the chart, and with very long arguments.
#include "app/setup.h"

#include "support.h"

namespace {

class setup : public fresh_run {
  protected:
    // Runs the program with `arguments`. Returns only if the run does not exit.
    static void run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "crv");
        std::vector<char *> argv;
        for (std::string &argument : arguments) argv.push_back(argument.data());
        crv_SetUp(static_cast<int>(argv.size()), argv.data(), nullptr);
    }
};

const std::string no_chart = "    _50-e-calloc, data: Cannot allocate memory\n";

TEST_F(setup, MissingChartEndsRunAtUse) {
    const auto without_chart = [](const std::vector<std::string> &arguments) {
        const failing_memory memory(0);
        run(arguments);
        exit(77);
    };
    // The scan continues until an option needs the chart.
    for (const std::vector<std::string> &arguments : {std::vector<std::string>{"-w", "x"},
                                                      {"-h"},
                                                      {"-t", "title"},
                                                      {"-s1", "story", "-t", "title"}})
        EXPECT_EXIT(without_chart(arguments), testing::ExitedWithCode(0), "^" + no_chart + "$");
    EXPECT_EXIT(without_chart({"-yl", "label"}), testing::ExitedWithCode(0),
                no_chart + "%crv_05-e-lbl");
    EXPECT_EXIT(without_chart({"-p"}), testing::ExitedWithCode(0), no_chart + "%crv_05-f-dat");
}

TEST_F(setup, StoresMenuPanesFrom0To15) {
    const auto panes_after = [](const char *number) {
        crv_settings.menu_panes = 7;
        stdout_of([&] { run({"-n", number, "-w", "x"}); });
        return crv_settings.menu_panes;
    };
    EXPECT_EQ(panes_after("0"), 0);
    EXPECT_EQ(panes_after("15"), 15);
    EXPECT_EQ(panes_after("16"), 7);
    EXPECT_EQ(panes_after("-1"), 7);
}

// A selection longer than a shell can pass.
TEST_F(setup, AHundredThousandPairsAreRefused) {
    std::string selection = "7";
    while (selection.size() < 2 * 100'000 - 1) selection += ",7";
    for (const char *option : {"-f", "-fm", "-fp", "-fa", "-fma"})
        EXPECT_EXIT(run({"-r", selection, option, "a.req"}), testing::ExitedWithCode(0),
                    "^%crv_05-f-col, \"a.req\" would need 100000 columns, 31 of 31 are free\n$");
}

} // namespace
