#!/usr/bin/env bash
# Builds for other processors, C++ libraries and versions of C++, with warnings as errors, and runs
# the unit tests and all cases; those of other processors under QEMU.
#
#   scripts/test_targets.sh [TARGET...]    by default all of them
#
# Targets are presets of CMake: libcxx, aarch64, s390x, armhf, i386, riscv64, cxx23, cxx23-clang.
set -euo pipefail
# shellcheck source=scripts/lib.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
ci_targets=(libcxx aarch64 s390x)

# test_target TARGET: the last line counts cases and unit tests, for docs/portability.md.
test_target() {
    local target=$1 begin=$SECONDS
    build "$target" -DCRV_WERROR=ON
    run_tests "tests of $target" "$target" 'unit|cases|targets' --test-output-truncation head
    awk -v target="$target" -v seconds=$((SECONDS - begin)) '
        / cases passed/ { cases += substr($0, match($0, /[0-9]+ cases passed/)) }
        /  PASSED  / { units += substr($0, match($0, /[0-9]+ tests?\./)) }
        END { printf "== %s: %d cases and %d unit tests passed, %d s\n",
                     target, cases, units, seconds }' \
        "build/logs/tests_of_${target//[^a-zA-Z0-9]/_}.xml"
}

[ $# -gt 0 ] || set -- "${ci_targets[@]}" armhf i386 riscv64 cxx23 cxx23-clang
for target; do
    case " ${ci_targets[*]} " in
        *" $target "*) require_tier targets ;;
        *) require_tier all-targets ;;
    esac
done
for target; do test_target "$target"; done
