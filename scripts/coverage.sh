#!/usr/bin/env bash
# Measures which lines and branches of src/ the tests reach. Fails below 95 % of the lines or 85 % of the branches.
#
# Left out are the tests that do not run the program, two in whose folders the counters cannot be written, and the line of
# 4 GiB, which takes too long when it is counted. The report, line by line, is left in build/coverage/report.html.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
# shellcheck source=scripts/packages.sh
. "$here/scripts/packages.sh"
need_packages "${build_packages[@]}" "${chart_packages[@]}" "${test_packages[@]}" "${coverage_packages[@]}"

cd "$here"
echo "=== coverage"
cmake --preset coverage >/dev/null
cmake --build --preset coverage --parallel "$(nproc)" >/dev/null
find build/coverage -name '*.gcda' -delete
ctest --preset coverage --parallel "$(nproc)" | sed -n '/^[0-9]*% tests passed/,$p;/\*\*\*/p'
gcovr --root . --filter src/ --object-directory build/coverage --exclude-throw-branches --exclude-unreachable-branches \
    --print-summary --html-details build/coverage/report.html \
    --fail-under-line 95 --fail-under-branch 85 2>/dev/null | tail -n 4
