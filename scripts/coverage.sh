#!/usr/bin/env bash
# Measures which lines and branches of src/ the tests reach. Fails below 95 % of the lines or 85 %
# of the branches.
#
# The tests are those that run the program. The report, line by line, is left in
# build/coverage/report.html.
set -euo pipefail
# shellcheck source=scripts/lib.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
require_tier coverage

report_coverage() {
    gcovr --root . --filter src/ --object-directory build/coverage --exclude-throw-branches \
        --exclude-unreachable-branches --print-summary --html-details build/coverage/report.html \
        --fail-under-line 95 --fail-under-branch 85
}

build coverage
find build/coverage -name '*.gcda' -delete
run_tests "tests that are counted" coverage
stage "coverage" report_coverage
grep -E '^(lines|branches):' build/logs/coverage.log
