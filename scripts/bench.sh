#!/usr/bin/env bash
# Builds the program as released and measures it beside the tools that a user would take instead.
#
#   scripts/bench.sh [--write]    with --write the tables of bench/README.md are renewed
set -euo pipefail
# shellcheck source=scripts/lib.sh
. "$(dirname "$0")/lib.sh"
require_tier bench

cmake --preset release -DCRV_BENCH=ON >/dev/null
cmake --build --preset release --parallel "$jobs" \
    --target crv crv_make_files crv_bench_pieces | tail -n 1
python3 bench/run.py build/release "$@"
