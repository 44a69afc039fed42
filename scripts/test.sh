#!/usr/bin/env bash
# Checks the layout, builds the program and runs all tests: under the sanitizers, as released, once more to see what they
# reach, and with the program for Windows. The demonstration comes last.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
# shellcheck source=scripts/packages.sh
. "$here/scripts/packages.sh"
need_packages "${build_packages[@]}" "${chart_packages[@]}" "${picture_packages[@]}" "${shell_packages[@]}" \
    "${test_packages[@]}"
# Without these the tests of the packages and of printing say that they are skipped, and the others run.
need_packages "${package_packages[@]}" || echo "The packages cannot be tested"
need_packages "${windows_packages[@]}" || echo "The package for Windows cannot be made"
need_packages "${printer_packages[@]}" || echo "Printing cannot be tested"

cd "$here"
scripts/check_layout.sh
for preset in debug release; do
    echo "=== $preset"
    cmake --preset "$preset" -DCRV_WERROR="${CI:-OFF}" -DCRV_TESTS=ON >/dev/null
    cmake --build --preset "$preset" --parallel "$(nproc)" | grep -E 'warning|error|FAILED' || true
    cmake --build --preset "$preset" >/dev/null
    ctest --preset "$preset" --parallel "$(nproc)" --output-on-failure | sed -n '/^[0-9]*% tests passed/,$p;/\*\*\*/p;/^FAIL/,/^$/p'
done

scripts/coverage.sh
scripts/test_windows.sh
scripts/demo.sh >build/demo.log
