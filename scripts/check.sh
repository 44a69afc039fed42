#!/usr/bin/env bash
# The check to run while editing: builds with sanitizers, then runs unit tests, cases, replays of
# the fuzz targets, and lint that needs no compiler. Installs nothing.
set -euo pipefail
# shellcheck source=scripts/lib.sh
. "$(dirname "$0")/lib.sh"
require_tier check
build dev
run_tests "tests with sanitizers" dev
