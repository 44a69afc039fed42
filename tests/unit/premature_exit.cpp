// unit/premature_exit.cpp - fails the test program if a test ends it.
//
// The routines under test end the process with status 0 in many failures. Without this check such
// an exit in the middle of the tests would count as success.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace {

pid_t test_program = 0; // tests also run code in children, which may exit
bool tests_finished = false;

void reject_premature_exit() {
    const bool is_child = getpid() != test_program || testing::internal::InDeathTestChild();
    if (tests_finished || is_child) return;
    fprintf(stderr, "A test has ended the test program\n");
    _exit(1);
}

class program_run : public testing::Environment {
  public:
    void SetUp() override {
        test_program = getpid();
        atexit(reject_premature_exit);
    }
    void TearDown() override { tests_finished = true; }
};

[[maybe_unused]] const testing::Environment *const run =
    testing::AddGlobalTestEnvironment(new program_run);

} // namespace
