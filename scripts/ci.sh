#!/usr/bin/env bash
# Runs the checks that scripts/test.sh leaves out: analysis, faults and bounds with sanitizers,
# valgrind, pictures, the page, tables, shells, packages, printer, libc++, two other processors,
# Windows, coverage, the demonstration, and 20 seconds of each fuzz target. Installs missing
# packages. A skipped test counts as failed unless it is in scripts/allowed_skips.txt.
set -euo pipefail
# shellcheck source=scripts/lib.sh
. "$(dirname "$0")/lib.sh"
strict=yes

find_sources() {
    find src -name '*.cpp' "$@" | LC_ALL=C sort
}

run_clang_tidy() {
    find_sources ! -name '*_win32.cpp' ! -name '*_vms.cpp' |
        xargs -P "$jobs" -n 4 clang-tidy --quiet -p build/release
}

# The compiler's own analyzer. It does not follow a string_view through a record that a routine
# returns, and takes it for a value that was never set; valgrind and the sanitizers look for those.
# Without exceptions it takes the memory by which a vector grows for null, where the program ends;
# clang-tidy looks for null pointers.
run_analyzer() {
    find_sources ! -name '*_win32.cpp' ! -name '*_vms.cpp' |
        xargs -P "$jobs" -I '{}' g++ -std=c++20 -Isrc -O1 -fno-exceptions -fanalyzer -Werror \
            -Wno-analyzer-use-of-uninitialized-value -Wno-analyzer-null-dereference \
            -Wno-analyzer-possible-null-dereference -DCRV_BUILD_DATE='""' -DCRV_BUILD_TIME='""' \
            -DCRV_VERSION='""' -c -o /dev/null '{}'
}

scripts/setup.sh ci
start_counting
stage "formatting" scripts/lint.sh format
build dev
build release
stage "clang-tidy" run_clang_tidy
stage "analyzer of the compiler" run_analyzer
run_tests "faults and bounds with sanitizers" dev 'faults|bounds|pipes|terminal|render'
run_tests "valgrind" release 'valgrind'
run_tests "pictures, page, tables, shells, packages, printer" release \
    'pictures|page|tables|shells|packages|printer'
# shellcheck source=scripts/test_targets.sh
. scripts/test_targets.sh libcxx aarch64 s390x
# shellcheck source=scripts/test_windows.sh
. scripts/test_windows.sh
# shellcheck source=scripts/coverage.sh
. scripts/coverage.sh
stage "demonstration" scripts/demo.sh
stage "fuzzing" scripts/fuzz.sh 20
print_count
