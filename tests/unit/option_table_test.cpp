// unit/option_table_test.cpp - each row of the option table has its effect in the scan, and nothing
// else has one.
#include "app/option_table.h"

#include "app/options.h"

#include "support.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>

namespace {

constexpr std::string_view option_letters = "abBdefhH?imnprstuvwxy";

// The form as the documents show it.
std::string shown(const crv_option_form &form) {
    return std::string(form.spelling) + (form.rest == crv_option_rest::number ? "N" : "");
}

std::set<std::string> listed_forms() {
    std::set<std::string> forms;
    for (const crv_option_form &form : crv_option_forms)
        if (!form.summary.empty()) forms.insert(shown(form));
    return forms;
}

TEST(option_table, FindsEachFormBySpelling) {
    for (const crv_option_form &form : crv_option_forms) {
        const std::string spelling(form.spelling);
        switch (form.rest) {
        case crv_option_rest::nothing:
            EXPECT_EQ(crv_FindOption(spelling), &form) << spelling;
            EXPECT_NE(crv_FindOption(spelling + "~"), &form) << spelling;
            break;
        case crv_option_rest::ignored:
            EXPECT_EQ(crv_FindOption(spelling + "~~"), &form) << spelling;
            break;
        case crv_option_rest::number:
            EXPECT_EQ(crv_FindOption(spelling + "7"), &form) << spelling;
            break;
        }
    }
}

TEST(option_table, ListsEachFormOnce) {
    size_t listed = 0;
    for (const crv_option_form &form : crv_option_forms) listed += !form.summary.empty();
    EXPECT_EQ(listed, 48U);
    EXPECT_EQ(listed_forms().size(), listed);
}

// The generator goes through both tables in step.
TEST(option_table, DescribesOptionsInOrderOfTheForms) {
    std::vector<crv_option> in_forms;
    std::set<crv_option> seen;
    for (const crv_option_form &form : crv_option_forms)
        if (!form.summary.empty() && seen.insert(form.option).second)
            in_forms.push_back(form.option);
    std::vector<crv_option> in_texts;
    for (const crv_option_text &text : crv_option_texts) in_texts.push_back(text.option);
    EXPECT_EQ(in_texts, in_forms);
}

// The generator and the shells take the texts as they are.
TEST(option_table, NeedsNoQuoting) {
    const auto is_clean = [](std::string_view text) {
        return text.find_first_of("\t\n'\\\"") == text.npos;
    };
    for (const crv_option_form &form : crv_option_forms)
        EXPECT_TRUE(is_clean(form.value_name) && is_clean(form.summary)) << form.spelling;
    for (const crv_option_text &text : crv_option_texts)
        EXPECT_TRUE(is_clean(text.effect) && is_clean(text.details)) << text.effect;
}

class option_scan : public fresh_run {
  protected:
    // A run with these arguments and chart 0.
    void set_up_run(const std::vector<std::string> &arguments) {
        run = {};
        crv_charts[0] = nullptr;
        run.chart = crv_AllocCht(0);
        words = arguments;
        words.insert(words.begin(), "crv");
        argv.clear();
        for (std::string &word : words) argv.push_back(word.data());
        run.argc = static_cast<int>(argv.size());
        run.argv = argv.data();
        run.request = -1;
    }

    // Scans these arguments; `out` and `err` are what is printed.
    void scan(const std::vector<std::string> &arguments) {
        set_up_run(arguments);
        err = stderr_of([&] { out = stdout_of([&] { crv_ScanOptions(&run); }); });
    }

    // The same for arguments that end the run with status 0.
    void scan_to_end(const std::vector<std::string> &arguments) {
        set_up_run(arguments);
        EXPECT_EXIT(crv_ScanOptions(&run), testing::ExitedWithCode(0), "");
    }

    // The request after an option of this spelling, without a value.
    int request_of(const std::string &option) {
        scan({option});
        EXPECT_EQ(out + err, "") << option;
        return run.request;
    }

    // Not static: a run that ends would remove them.
    const text_file request_file{
        "a run\ntitle\n1\n38 1 0 0 0\n0.0\n1 2 3 4 5 6\n1.0\n2 3 4 5 6 7\n"};
    const text_file madymo_file{"title\n\n1 0\nSLED 1 2\n0.0\n1 2 3\n1.0\n4 5 6\n", ".mad"};
    const text_file column_file{"junk\nA B\n1 2\n3 4\n", ".pos"};
    const text_file frame_file{"%N\n3\n%D\n1 2\n3 4\n5 6\n", ".vdr"};

    crv_driver run;
    std::vector<std::string> words;
    std::vector<char *> argv;
    std::string out, err;
};

std::string dat_path_of(const text_file &file) {
    const std::string path = file.path();
    return path.substr(0, path.rfind('.')) + ".dat";
}

// For each listed form, its effect as the documents have it.
TEST_F(option_scan, HandlesEachForm) {
    std::map<std::string, std::function<void(const std::string &)>> effects;
    const auto reads = [&](const text_file &file, const char *selection, int columns) {
        return [&file, selection, columns, this](const std::string &option) {
            TearDown();
            scan({"-r", selection, option, file.path()});
            EXPECT_EQ(run.columns_read, columns) << option << out << err;
        };
    };
    effects["-r"] = [&](const std::string &option) {
        scan({option, "0,38:3=MAX"});
        EXPECT_EQ(run.request, crv_request_requests);
        EXPECT_STREQ(run.selection, "0,38:3");
        EXPECT_EQ(run.value, "max");
    };
    effects["-f"] = effects["-fr"] = reads(request_file, "0,38:3", 2);
    effects["-fm"] = reads(madymo_file, "0,1:2", 2);
    effects["-fp"] = [&](const std::string &option) {
        scan({"-r", "1,2", option, column_file.path()});
        EXPECT_STREQ(crv_columns[0]->colname, "junk");
    };
    effects["-fpN"] = [&](const std::string &) {
        scan({"-r", "1,2", "-fp2", column_file.path()});
        EXPECT_EQ(values_of(crv_columns[1]), (std::vector<double>{2, 4}));
    };
    effects["-fg"] = reads(frame_file, "0", 2);
    effects["-tm"] = [&](const std::string &option) {
        scan({option, "1:2"});
        EXPECT_EQ(crv_settings.time_window[0], 1.0);
        EXPECT_EQ(crv_settings.time_window[1], 2.0);
    };
    // The letters give different tables.
    std::set<std::string> tables;
    const auto makes_table = [&](const text_file &file, const char *selection) {
        return [&file, selection, &tables, this](const std::string &option) {
            scan_to_end({"-r", selection, option, file.path()});
            const std::string path = dat_path_of(file);
            EXPECT_NE(bytes_of(path), "") << option;
            EXPECT_TRUE(tables.insert(bytes_of(path)).second) << option;
            remove(path.c_str());
        };
    };
    for (const char *letter : {"a", "c", "d", "s"}) {
        effects[std::string("-f") + letter] = makes_table(request_file, "0,38:3");
        effects[std::string("-fm") + letter] = makes_table(madymo_file, "0,1:2");
    }
    effects["-abs"] = [&](const std::string &option) {
        scan({option});
        EXPECT_EQ(crv_settings.columnize_flags, AbsoluteDat);
    };
    effects["-all"] = [&](const std::string &option) {
        crv_settings.columnize_flags = 0;
        scan({option});
        EXPECT_EQ(crv_settings.columnize_flags, StatisticsAll);
    };
    const auto draws = [&](int plots_per_page) {
        return [plots_per_page, this](const std::string &option) {
            scan({option, "-a.ps"});
            EXPECT_EQ(run.request, crv_request_chart);
            EXPECT_STREQ(run.ps_path, "-a.ps");
            EXPECT_EQ(run.plots_per_page, plots_per_page);
        };
    };
    effects["-p"] = draws(0);
    effects["-p1"] = draws(1);
    effects["-p2"] = draws(2);
    effects["-x"] = [&](const std::string &option) {
        scan({option, "1:2"});
        EXPECT_EQ(run.x_range[1], 2.0);
        EXPECT_EQ(crv_settings.x_filter[1], 2.0);
        EXPECT_EQ(run.y_range[1], -100.0);
    };
    effects["-y"] = [&](const std::string &option) {
        scan({option, "1:2"});
        EXPECT_EQ(run.y_range[1], 2.0);
        EXPECT_EQ(run.x_range[1], -100.0);
    };
    const auto labels = [&](const char *spelled, int column) {
        return [spelled, column, this](const std::string &) {
            TearDown();
            for (int slot = 0; slot < 3; ++slot) add_column(slot, {1.0});
            scan({spelled, "-label"});
            for (int slot = 0; slot < 3; ++slot)
                EXPECT_STREQ(crv_columns[slot]->colname, slot == column ? "-label" : "") << spelled;
        };
    };
    effects["-xl"] = labels("-xl", 0);
    effects["-yl"] = labels("-yl", 1);
    effects["-yla"] = labels("-yla", 1);
    effects["-ylN"] = labels("-yl2", 2);
    const auto titles = [&](int number) {
        return [number, this](const std::string &option) {
            scan({option, "text"});
            EXPECT_STREQ(run.chart->major_t[number], "text") << option;
            EXPECT_STREQ(run.chart->major_t[1 - number], "") << option;
        };
    };
    effects["-t"] = effects["-t1"] = titles(0);
    effects["-t2"] = titles(1);
    for (int number = 0; number < 4; ++number)
        effects["-s" + std::to_string(number)] = [number, this](const std::string &option) {
            scan({option, "text"});
            EXPECT_STREQ(run.chart->story_ts[number], "text") << option;
            EXPECT_EQ(run.request, -1) << option;
        };
    effects["-h"] = [&](const std::string &option) { EXPECT_EQ(request_of(option), 10); };
    effects["-s"] = [&](const std::string &option) { EXPECT_EQ(request_of(option), 11); };
    effects["-H"] =
        effects["-?"] = [&](const std::string &option) { EXPECT_EQ(request_of(option), 12); };
    effects["-e"] = [&](const std::string &option) { EXPECT_EQ(request_of(option), 13); };
    effects["-B"] =
        effects["-b"] = [&](const std::string &option) { EXPECT_EQ(request_of(option), 14); };
    effects["-d"] = [&](const std::string &option) {
        scan({option, "1000"});
        EXPECT_EQ(crv_DBG, 1);
        scan({option, "7"});
        EXPECT_EQ(crv_DBG, 7);
        EXPECT_EQ(run.request, -1);
        scan({option});
        EXPECT_EQ(run.request, crv_request_debug_help);
    };
    effects["-v"] = [&](const std::string &option) {
        scan({option, "1000"});
        EXPECT_EQ(crv_DBG, 1000);
    };
    effects["-m"] = [&](const std::string &option) {
        scan({option});
        EXPECT_EQ(crv_DBG, 24);
    };
    effects["-w"] = [&](const std::string &option) {
        scan({option, "name"});
        EXPECT_EQ(run.request, crv_request_write);
        EXPECT_EQ(out, "%crv_05-i-fil, File to write = \"name\" \n");
    };
    effects["-u"] = [&](const std::string &option) {
        scan({option});
        EXPECT_NE(run.request, -1);
        remove("crv.use");
    };
    effects["-i"] = [&](const std::string &option) {
        scan({option, "-name"});
        EXPECT_STREQ(run.init_path, "-name");
    };
    effects["-n"] = [&](const std::string &option) {
        scan({option, "15"});
        EXPECT_EQ(crv_settings.menu_panes, 15);
    };

    std::set<std::string> tested;
    for (const auto &[option, has_effect] : effects) {
        TearDown();
        has_effect(option);
        tested.insert(option);
    }
    EXPECT_EQ(tested, listed_forms());
}

// A letter that no option has, and -a or -t with another rest, change and print nothing.
TEST_F(option_scan, IgnoresOtherArguments) {
    std::vector<std::string> others = {"-",   "",      "f",   "abs", "-A", "-ab",
                                       "-al", "-aabs", "-tx", "-t0", "-t3"};
    for (char letter = ' '; letter <= '~'; ++letter)
        if (option_letters.find(letter) == option_letters.npos) others.push_back({'-', letter});
    for (const std::string &other : others) {
        EXPECT_EQ(crv_FindOption(other), nullptr) << other;
        scan({other, "5:7"});
        EXPECT_EQ(out + err, "") << other;
        EXPECT_EQ(run.request, -1) << other;
        EXPECT_EQ(run.file_option_count, 0) << other;
        EXPECT_EQ(crv_DBG, 0) << other;
        EXPECT_EQ(crv_settings.columnize_flags, 0U) << other;
        EXPECT_EQ(crv_settings.menu_panes, 0) << other;
        EXPECT_EQ(run.x_range[0], 100.0) << other;
        EXPECT_EQ(run.y_range[0], 100.0) << other;
    }
}

TEST_F(option_scan, HasAFormForEachLetter) {
    for (const char letter : option_letters) {
        const bool found =
            std::any_of(crv_option_forms.begin(), crv_option_forms.end(),
                        [&](const auto &form) { return form.spelling[1] == letter; });
        EXPECT_TRUE(found) << letter;
    }
    for (const crv_option_form &form : crv_option_forms)
        EXPECT_NE(option_letters.find(form.spelling[1]), option_letters.npos) << form.spelling;
}

TEST_F(option_scan, CountsFileOptionsWithoutAReader) {
    for (const char *option : {"-fx", "-fmx", "-f1", "-fM"}) {
        scan({"-r", "0,38:3", option, request_file.path()});
        EXPECT_EQ(run.file_option_count, 1) << option;
        EXPECT_EQ(run.columns_read, 0) << option;
    }
}

} // namespace
