#!/usr/bin/env bash
# Builds for other processors, C++ libraries and versions of C++, with warnings as errors, and runs
# the unit tests and all cases; those of other processors under QEMU.
#
#   scripts/test_targets.sh [TARGET...]    by default all of them
#
# Targets are presets of CMake: aarch64, s390x, armhf, i386, riscv64, libcxx, cxx23, cxx23-clang.
set -euo pipefail
# shellcheck source=scripts/lib.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
ci_targets=(libcxx aarch64 s390x)
[ $# -gt 0 ] || set -- "${ci_targets[@]}" armhf i386 riscv64 cxx23 cxx23-clang
for target; do
    case " ${ci_targets[*]} " in
        *" $target "*) require_tier targets ;;
        *) require_tier all-targets ;;
    esac
done
for target; do
    build "$target" -DCRV_WERROR=ON
    run_tests "tests of $target" "$target" 'unit|cases|targets'
done
