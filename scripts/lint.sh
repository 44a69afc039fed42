#!/usr/bin/env bash
# Checks the sources without a build.
#
#   scripts/lint.sh [CHECK...]    includes, shell, spelling, words, columns, format; by default all
set -euo pipefail
# shellcheck source=scripts/lib.sh
. "$(dirname "$0")/lib.sh"
require_tier check
[ $# -gt 0 ] || set -- includes shell spelling words columns format
failed=0
for check; do
    status=0
    python3 "tests/lint/check_$check.py" . || status=$?
    if [ "$status" -ne 0 ] && [ "$status" -ne 77 ]; then failed=1; fi
done
exit "$failed"
