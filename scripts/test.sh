#!/usr/bin/env bash
# The tests of every change: scripts/check.sh, then the program as released with faults, bounds,
# pipes, terminal, drawn pages, and the commands of the documents. Installs what it needs.
set -euo pipefail
# shellcheck source=scripts/lib.sh
. "$(dirname "$0")/lib.sh"
strict=${CI:-}
scripts/setup.sh test
start_counting
# shellcheck source=scripts/check.sh
. scripts/check.sh
build release
run_tests "tests of the release" release
echo "Left out: analysis, valgrind, coverage, pictures, tables, shells, packages, printer," \
    "Windows, fuzzing; scripts/ci.sh runs them"
print_count
