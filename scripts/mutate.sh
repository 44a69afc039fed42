#!/usr/bin/env bash
# Mutation testing: changes src/ in one place at a time, runs the unit tests and cases, and lists
# the changes that none of them detects. Fails if less than 99 % are detected.
#
#   scripts/mutate.sh [--fresh] [COUNT [SEED]]
#       tries COUNT mutants (default 100) drawn from SEED (default 1)
#   scripts/mutate.sh --list [COUNT [SEED]]
#       lists them
#   scripts/mutate.sh --change FILE:LINE OLD NEW [N]
#       tries one change: occurrence N (default 1) of OLD in the line becomes NEW
#
# An interrupted run continues where it was; --fresh starts again. CRV_MUTATE_JOBS is the number of
# workers, one per processor by default. See scripts/mutate.py; scripts/mutate_equivalents.txt lists
# the mutants that cannot be detected.
set -euo pipefail
# shellcheck source=scripts/lib.sh
. "$(dirname "$0")/lib.sh"
scripts/setup.sh mutate
exec python3 scripts/mutate.py "$@"
