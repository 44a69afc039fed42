#!/usr/bin/env bash
# Builds the release program and compares its speed with the tools that a user would take instead.
#
#   scripts/bench.sh [--write]    with --write it also writes the tables of bench/README.md
set -euo pipefail
# shellcheck source=scripts/lib.sh
. "$(dirname "$0")/lib.sh"
require_tier bench

cmake --preset release -DCRV_BENCH=ON >/dev/null
cmake --build --preset release --parallel "$jobs" \
    --target crv crv-csv crv-html crv-info crv_make_files crv_bench_pieces | tail -n 1
python3 bench/run.py build/release "$@"
