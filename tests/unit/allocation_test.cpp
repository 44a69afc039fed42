// unit/allocation_test.cpp - makes each allocation of each kind of run fail, one after the other.
#include "app/setup.h"

#include "support.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace {

constexpr int plain_end = 77; // of a run that returns
constexpr int no_fault = 1'000'000;

// Error message and exit status of a run in which one of `times` consecutive allocations fails.
struct fault {
    int times;
    std::string report;
    int status;
};
using faults = std::vector<fault>;

struct ending {
    int status;
    std::string errors;
    int allocations;
};

// Counts the allocations of a child process, and makes the one after `good` successful ones fail.
struct counter {
    int made;
    int good;
};
counter *shared;

void *counted_calloc(size_t count, size_t size) {
    if (shared->made++ != shared->good) return calloc(count, size);
    errno = ENOMEM;
    return nullptr;
}

class allocation : public fresh_run {
  protected:
    void SetUp() override {
        fresh_run::SetUp();
        void *page = mmap(nullptr, sizeof(counter), PROT_READ | PROT_WRITE,
                          MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        ASSERT_NE(page, MAP_FAILED);
        shared = static_cast<counter *>(page);
        folder = testing::TempDir() + "crv_unit_allocation_" + std::to_string(getpid());
        mkdir(folder.c_str(), 0700);
        ASSERT_EQ(chdir(folder.c_str()), 0);
        for (const char *name : {"a.req", "b.req"}) make(name, "\nt\n1\n7 1 0 0 0\n0\n1\n1\n2\n");
        for (const char *name : {"a.mad", "b.mad"}) make(name, "t\n\n1 0\nname\n0\n1\n1\n2\n");
        make("a.pos", "time force\n0 1\n1 2\n");
        make("a.vdr", "%N\n3\n%D\n0 1\n1 2\n2 3\n");
        make("user.ps", "% logo\n");
        setenv("CRV_PRINTCHAIN", ":", 1);
    }
    void TearDown() override {
        for (const char *name :
             {"a.req", "b.req", "a.mad", "b.mad", "a.pos", "a.vdr", "user.ps", "a.dat", "b.dat",
              "c.ps", "crv.use", "errors", "typed", "crv_temp.tmp", "utl_temp.tmp"})
            remove(name);
        ASSERT_EQ(chdir("/"), 0);
        rmdir(folder.c_str());
        unsetenv("CRV_PRINTCHAIN");
        munmap(shared, sizeof(counter));
        fresh_run::TearDown();
    }
    static void make(const char *name, const std::string &text) { std::ofstream(name) << text; }

    [[noreturn]] static void run_here(std::vector<std::string> arguments) {
        dup2(open("errors", O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
        dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
        dup2(open("typed", O_RDONLY), STDIN_FILENO);
        use_up_values();
        crv_Calloc = counted_calloc;
        arguments.insert(arguments.begin(), "crv");
        std::vector<char *> argv;
        for (std::string &argument : arguments) argv.push_back(argument.data());
        crv_SetUp(static_cast<int>(argv.size()), argv.data(), nullptr);
        exit(plain_end);
    }
    static ending run(const std::vector<std::string> &arguments, int good) {
        *shared = {0, good};
        const pid_t child = fork();
        if (child == 0) run_here(arguments);
        int status = 0;
        waitpid(child, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, bytes_of("errors"), shared->made};
    }

    // Repeats a run, with the next allocation failing each time, and checks message and status. An
    // existing table is unchanged or replaced by a complete one.
    static void check(const std::vector<std::string> &arguments, const std::string &typed,
                      const faults &table, int good_status) {
        make("typed", typed);
        const ending good = run(arguments, no_fault);
        EXPECT_EQ(good.status, good_status);
        EXPECT_EQ(good.errors, "");
        const std::string whole_table = bytes_of("a.dat");

        int k = 0;
        for (const fault &row : table) {
            for (const int last = k + row.times; k < last; ++k) {
                make("a.dat", "old");
                const ending bad = run(arguments, k);
                EXPECT_EQ(bad.errors, row.report + ": Cannot allocate memory\n")
                    << "allocation " << k;
                EXPECT_EQ(bad.status, row.status) << "allocation " << k;
                EXPECT_THAT(bytes_of("a.dat"), testing::AnyOf("old", whole_table))
                    << "allocation " << k;
            }
        }
        EXPECT_EQ(good.allocations, k) << "these are all";
    }

    std::string folder;
};

// Each run first allocates the chart and its seven curves. A run without a chart continues until it
// needs the chart.
faults with_chart(const faults &others) {
    faults all = {{1, "    _50-e-calloc, data", 0}, {7, "    _50-e-calloc, curve", 0}};
    all.insert(all.end(), others.begin(), others.end());
    return all;
}

// Allocations for the file, for two columns, and for the block of the first value.
const faults request_file = {{reader_allocations, "    _83-f-fopen", 1},
                             {2, "    _83-e-calloc, data", 1},
                             {1, "    _83-f-calloc", 1}};
const faults madymo_file = {{reader_allocations, "    _88-f-fopen", 0},
                            {2, "    _88-e-calloc, data", 0},
                            {1, "    _88-f-calloc", 0}};

TEST_F(allocation, ReportsEachFailureOfRequestRun) {
    check({"-r", "0,7", "-f", "a.req", "-w", "x"}, "", with_chart(request_file), plain_end);
}

TEST_F(allocation, ReportsEachFailureOfMadymoRun) {
    check({"-r", "0,1", "-fm", "a.mad", "-w", "x"}, "", with_chart(madymo_file), plain_end);
}

TEST_F(allocation, ReportsEachFailureOfColumnRun) {
    check({"-r", "1,2", "-fp", "a.pos", "-w", "x"}, "",
          with_chart({{reader_allocations, "    _94-f-fopen", 0},
                      {2, "    _94-e-calloc, data", 0},
                      {1, "    _94-f-calloc", 0}}),
          plain_end);
}

TEST_F(allocation, ReportsEachFailureOfFrameRun) {
    check({"-r", "0", "-fg", "a.vdr", "-w", "x"}, "",
          with_chart({{reader_allocations, "    _85-f-fopen", 0},
                      {2, "    _85-e-calloc, data", 0},
                      {1, "    _85-e-calloc", 0}}),
          plain_end);
}

TEST_F(allocation, ReportsEachFailureOfChart) {
    faults table = with_chart(request_file);
    table.push_back({reader_allocations, "    _46-f-fopen read, ", 0});
    check({"-s0", "user.ps", "-r", "0,7", "-f", "a.req", "-p", "c.ps"}, "", table, 1);
}

TEST_F(allocation, ReportsEachFailureOfConditionalReport) {
    check({"-r", "0,7=1", "-f", "a.req"}, "", with_chart(request_file), 0);
}

TEST_F(allocation, ReportsEachFailureOfColumnizingRun) {
    faults requests = with_chart({{1, "    _35-e-malloc", 0}, {1, "    _35-e-calloc", 0}});
    faults madymo = requests;
    requests.insert(requests.end(), request_file.begin(), request_file.end());
    madymo.insert(madymo.end(), madymo_file.begin(), madymo_file.end());
    for (const char *option : {"-fa", "-fc", "-fd", "-fs"})
        check({"-r", "0,7", option, "a.req"}, "", requests, 0);
    for (const char *option : {"-fma", "-fmc", "-fmd", "-fms"})
        check({"-r", "0,1", option, "a.mad"}, "", madymo, 0);
}

TEST_F(allocation, ReportsEachFailureOfPickingFile) {
    faults table = with_chart({{reader_allocations, "    _33-e-fopen, utl_lstfile()", 1},
                               {1, "    _33-e-first, malloc", 1},
                               {1, "    _33-e-calloc", 1},
                               {1, "    _33-e-malloc", 1},
                               {1, "    _33-e-calloc", 1}});
    table.insert(table.end(), request_file.begin(), request_file.end());
    check({"-r", "0,7", "-f"}, "1\n", table, plain_end);
    check({"-r", "0,7"}, "1\n", table, plain_end);
}

// A listing that cannot be opened selects no files; the run then has status 0.
TEST_F(allocation, ReportsEachFailureOfPickingFiles) {
    faults table = with_chart({{reader_allocations, "    _34-e-fopen", 0},
                               {1, "    _34-e-first, malloc", 0},
                               {1, "    _34-e-calloc", 0},
                               {1, "    _34-e-malloc", 0},
                               {1, "    _34-e-calloc", 0}});
    table.insert(table.end(), request_file.begin(), request_file.end());
    table.push_back(
        {reader_allocations, "    _83-f-fopen", 1}); // the values of the second file need no block
    table.push_back({2, "    _83-e-calloc, data", 1});
    check({"-r", "0,7", "-fa"}, "a\n", table, 0);
}

TEST_F(allocation, ReportsEachFailureOfOtherRuns) {
    check({"-h"}, "", with_chart({}), 1);
    check({"-u", "-w", "x"}, "", with_chart({}), plain_end);
}

} // namespace
