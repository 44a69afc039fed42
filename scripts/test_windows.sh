#!/usr/bin/env bash
# Builds the program for Windows and runs its tests under Wine.
set -euo pipefail
# shellcheck source=scripts/lib.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
require_tier windows
build windows
# Once in some 5,000 times Wine fails to start a process (error 1359), which is not a fault of the
# program: two tries each.
run_tests "tests under Wine" windows '' --repeat until-pass:2
