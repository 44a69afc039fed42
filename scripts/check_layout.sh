#!/usr/bin/env bash
# The layout checks: formatting, shell scripts, and clang-tidy over the sources.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
# shellcheck source=scripts/packages.sh
. "$here/scripts/packages.sh"
need_packages "${build_packages[@]}" "${test_packages[@]}" "${layout_packages[@]}"

cd "$here"
echo "=== layout"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
git ls-files '*.sh' '*.bash' .ci/run companions/crv2picture | xargs shellcheck -x
cmake --preset release -DCRV_TESTS=ON >/dev/null
git ls-files 'src/*.cpp' | xargs -P "$(nproc)" -n 4 clang-tidy --quiet -p build/release 2>/dev/null
