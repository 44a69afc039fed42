#!/usr/bin/env bash
# Tests that take hours: fuzzing, lines of 4 GiB, the image, the tests of the source archive, the
# script of a release, a cluster of one node, the targets that scripts/ci.sh leaves out, benchmarks,
# and the mutation score if its script is present.
#
#   scripts/nightly.sh [SECONDS]    fuzzes each target for that time, by default an hour
set -euo pipefail
# shellcheck source=scripts/lib.sh
. "$(dirname "$0")/lib.sh"
strict=yes
scripts/setup.sh nightly
start_counting
build release
run_tests "lines of 4 GiB, image, source archive, release, cluster" release 'nightly'
# shellcheck source=scripts/test_targets.sh
. scripts/test_targets.sh armhf i386 riscv64 cxx23 cxx23-clang
stage "fuzzing" scripts/fuzz.sh "${1:-3600}"
if [ -x scripts/mutate.sh ]; then stage "mutation score" scripts/mutate.sh; fi
stage "benchmarks" scripts/bench.sh
print_count
